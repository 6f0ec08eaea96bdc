#include "effect/modify/TransitionList.h"

#include <array>
#include <string>
#include <vector>

#include "system/File.h"
#include "system/FileName.h"

namespace Effect::TransitionList {

namespace {

struct Transition {
  const wchar_t* label;
  std::uint32_t flags;
};

constexpr std::array<Transition, kTransitionCount> kTransitions{{
    {L"クロスフェード", 0},
    {L"暗転", 0},
    {L"ホワイトアウト", 0},
    {L"スライス", kInvert | kDivide | kVertical},
    {L"ランダムライン", kDivide | kVertical},
    {L"スライド", kInvert | kAngle},
    {L"押し出し", kInvert | kVertical},
    {L"スワップ", kInvert | kVertical},
    {L"縮小回転", kInvert},
    {L"回転", kInvert | kVertical},
    {L"キューブ回転", kInvert | kVertical},
    {L"放射ブラー", 0},
    {L"ぼかし", 0},
}};

constexpr const wchar_t* kWipes[] = {
    L"ワイプ(円)", L"ワイプ(四角)", L"ワイプ(時計)", L"ワイプ(横)", L"ワイプ(縦)", L"ワイプ(星型)", L"ワイプ(ハート)",
};

struct Lists {
  std::shared_ptr<const SelectList> sceneChange;
  std::shared_ptr<const SelectList> wipe;
};

Lists& shared() {
  static Lists lists;
  return lists;
}

const Lists& ensure() {
  Lists& lists = shared();
  if (lists.sceneChange && lists.wipe) return lists;
  std::vector<std::wstring> wipes(std::begin(kWipes), std::end(kWipes));
  for (const System::DirectoryEntry& file : System::listFiles(L"*.png", System::FileName::expand(L"%Transition%"))) {
    wipes.push_back(System::FileName::baseName(file.path));
  }
  std::vector<std::wstring> all;
  all.reserve(kTransitions.size() + wipes.size());
  for (const Transition& transition : kTransitions) all.emplace_back(transition.label);
  all.insert(all.end(), wipes.begin(), wipes.end());
  lists.sceneChange = SelectList::make(all);
  lists.wipe = SelectList::make(wipes);
  return lists;
}

}  // namespace

std::uint32_t flags(std::int32_t index) {
  if (index >= kTransitionCount) return kWipeFlags;
  if (index < 0) return 0;
  return kTransitions[static_cast<std::size_t>(index)].flags;
}

std::shared_ptr<const SelectList> sceneChangeList() { return ensure().sceneChange; }

std::shared_ptr<const SelectList> wipeList() { return ensure().wipe; }

void reset() { shared() = Lists{}; }

}  // namespace Effect::TransitionList
