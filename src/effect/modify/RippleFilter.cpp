#include "effect/modify/RippleFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"中心X", 0, -5000, 5000, 0.1),
    number(L"中心Y", 0, -5000, 5000, 0.1),
    group(L"Group", 2),
    number(L"幅", 30, 1, 400, 0.1),
    number(L"高さ", 15, -400, 400, 0.1),
    number(L"速度", 150, -2000, 2000, 0.1),
    integer(L"波紋数", 0, 0, 100),
    integer(L"波紋間隔", 0, 0, 100),
    integer(L"増幅減衰回数", 0, -100, 100),
};

}  // namespace

const EffectInfo RippleFilter::kInfo{L"波紋", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"変形", kItems};

}  // namespace Effect
