#include "effect/input/FileSequence.h"

#include <iterator>
#include <optional>
#include <regex>

#include "system/File.h"
#include "system/FileName.h"

namespace Effect {

namespace {

struct NumberedName {
  std::wstring prefix;
  std::int64_t number = 0;
  std::wstring suffix;
};

std::optional<NumberedName> splitNumbered(const std::wstring& name) {
  static const std::wregex pattern(L"^(.+?)([0-9]+)(\\.[^.]+)$");
  std::wsmatch match;
  if (!std::regex_match(name, match, pattern)) return std::nullopt;
  // Numbers too long to count are no frames of a sequence.
  if (match[2].length() > 18) return std::nullopt;
  return NumberedName{match[1].str(), std::stoll(match[2].str()), match[3].str()};
}

std::vector<std::wstring> listSiblings(const std::wstring& path) {
  std::vector<std::wstring> names;
  const std::wstring extension = System::FileName::extension(path);
  if (extension.empty()) return names;
  for (const System::DirectoryEntry& entry :
       System::listFiles(L"*." + extension, System::FileName::directoryPart(path))) {
    names.push_back(entry.path);
  }
  return names;
}

}  // namespace

FileSequence::FileSequence(const std::wstring& path) : FileSequence(path, listSiblings(path)) {}

FileSequence::FileSequence(const std::wstring& path, const std::vector<std::wstring>& siblings) : path_(path) {
  add(siblings);
}

void FileSequence::add(const std::vector<std::wstring>& siblings) {
  const std::optional<NumberedName> own = splitNumbered(System::FileName::fileName(path_));
  if (!own) return;
  for (const std::wstring& sibling : siblings) {
    const std::optional<NumberedName> name = splitNumbered(System::FileName::fileName(sibling));
    if (!name || name->prefix != own->prefix || name->suffix != own->suffix) continue;
    files_.emplace(name->number, sibling);
  }
}

const std::wstring& FileSequence::pick(std::int64_t number) const {
  if (files_.empty() || number > files_.rbegin()->first) return path_;
  if (number <= files_.begin()->first) return files_.begin()->second;
  return std::prev(files_.upper_bound(number))->second;
}

}  // namespace Effect
