#include "effect/filter/GradationFilter.h"

#include "effect/item/BlendModes.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> shapeList() {
  static const auto list = SelectList::make({L"線形", L"円形", L"矩形", L"凸形"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 100, 0.1),
    number(L"中心X", 0, -5000, 5000, 0.1),
    number(L"中心Y", 0, -5000, 5000, 0.1),
    group(L"Group", 2),
    number(L"角度", 0, -3600, 3600, 0.01),
    number(L"幅", 100, 0, 2000, 1),
    select(L"合成モード", BlendModes::list),
    select(L"形状", shapeList),
    unsetColor(L"開始色"),
    unsetColor(L"終了色"),
};

}  // namespace

const EffectInfo GradationFilter::kInfo{L"グラデーション", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                        L"色調整", kItems};

}  // namespace Effect
