#include "effect/filter/EdgeFilter.h"

#include "effect/item/EffectItemCheck.h"

namespace Effect {

namespace {

constexpr const wchar_t* kLumaEdge = L"輝度エッジを抽出";
constexpr const wchar_t* kAlphaEdge = L"透明度エッジを抽出";

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 1000, 0.1),
    number(L"しきい値", 0, -100, 100, 0.01),
    color(L"色", kWhite),
    check(kLumaEdge, false).notifying(),
    check(kAlphaEdge, false).notifying(),
};

}  // namespace

const EffectInfo EdgeFilter::kInfo{L"エッジ抽出", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"抽出", kItems};

bool EdgeFilter::itemEvent(ItemEvent& event) {
  if (event.type != ItemEvent::ItemChanged) return false;
  auto& luma = item<EffectItemCheck>(kLumaEdge);
  auto& alpha = item<EffectItemCheck>(kAlphaEdge);
  EffectItemCheck* other = nullptr;
  if (event.item == &luma) {
    other = &alpha;
  } else if (event.item == &alpha) {
    other = &luma;
  } else {
    return false;
  }
  // The shader picks one channel, so the check just switched on wins; switching one
  // off, or switching one on alone, leaves nothing to resolve.
  if (!luma.value() || !alpha.value()) return false;
  other->setValue(false);
  event.redraw = true;
  return true;
}

}  // namespace Effect
