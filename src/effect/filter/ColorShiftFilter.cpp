#include "effect/filter/ColorShiftFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> kindList() {
  static const auto list = SelectList::make({L"赤緑A", L"赤青A", L"緑青A", L"赤緑B", L"赤青B", L"緑青B"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"ずれ幅", 5, 0, 2000, 0.1),
    number(L"角度", 90, -3600, 3600, 0.01),
    number(L"強さ", 100, 0, 100, 1),
    select(L"色ずれの種類", kindList),
};

}  // namespace

const EffectInfo ColorShiftFilter::kInfo{L"色ずれ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                         L"光効果", kItems};

}  // namespace Effect
