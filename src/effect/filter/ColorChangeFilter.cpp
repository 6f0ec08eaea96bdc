#include "effect/filter/ColorChangeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"色相範囲", 16, 0, 256, 1),
    number(L"彩度範囲", 96, 0, 256, 1),
    number(L"境界補正", 1, 0, 8, 1),
    unsetColor(L"変換前の色"),
    unsetColor(L"変換後の色"),
    check(L"色彩補正", false),
};

}  // namespace

const EffectInfo ColorChangeFilter::kInfo{L"特定色域変換", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                          L"色調整", kItems};

}  // namespace Effect
