#include "effect/item/FigureList.h"

#include "system/File.h"
#include "system/FileName.h"

namespace Effect::FigureList {

namespace {

std::shared_ptr<const SelectList>& shared() {
  static std::shared_ptr<const SelectList> list;
  return list;
}

std::shared_ptr<const SelectList> build() {
  std::vector<std::wstring> labels{L"背景", L"円", L"四角形", L"三角形", L"五角形", L"六角形", L"星型", L"ハート"};
  for (const System::DirectoryEntry& file : System::listFiles(L"*.svg", System::FileName::expand(L"%Figure%"))) {
    labels.push_back(System::FileName::baseName(file.path));
  }
  return SelectList::make(labels);
}

}  // namespace

std::shared_ptr<const SelectList> get() {
  if (!shared()) shared() = build();
  return shared();
}

void reset() { shared().reset(); }

}  // namespace Effect::FigureList
