#include "effect/modify/SceneChange.h"

#include "effect/item/EffectItemSelect.h"
#include "effect/modify/TransitionList.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    select(L"種類", TransitionList::sceneChangeList).notifying(),
    number(L"角度", 0, 0, 360, 1),
    number(L"分割数", 5, 2, 1000, 1),
    number(L"ぼかし", 2, 0, 100, 1),
    check(L"縦方向", false),
    check(L"反転", false),
    check(L"縦横比固定", true),
};

// The items that depend on the transition, each with the flag that shows it.
struct Dependent {
  const wchar_t* name;
  std::uint32_t flag;
};

constexpr Dependent kDependents[] = {
    {L"角度", TransitionList::kAngle},  {L"分割数", TransitionList::kDivide},
    {L"ぼかし", TransitionList::kBlur}, {L"縦方向", TransitionList::kVertical},
    {L"反転", TransitionList::kInvert}, {L"縦横比固定", TransitionList::kKeepAspect},
};

}  // namespace

const EffectInfo SceneChange::kInfo{L"シーンチェンジ", EffectType::Control, EffectMedia::Video, EffectMedia::TimelineOnly,
                                    L"シーンチェンジ", kItems};

bool SceneChange::itemEvent(ItemEvent& event) {
  if (event.type != ItemEvent::ItemChanged || !event.item || event.item != findItem(L"種類")) return false;
  updateItems();
  event.redraw = true;
  return true;
}

void SceneChange::initialize() { updateItems(); }

void SceneChange::updateItems() {
  const std::uint32_t flags = TransitionList::flags(item<EffectItemSelect>(L"種類").value());
  for (const Dependent& dependent : kDependents) {
    item<EffectItem>(dependent.name).setVisible((flags & dependent.flag) != 0);
  }
}

}  // namespace Effect
