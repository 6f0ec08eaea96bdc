#include "effect/filter/ColorFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"明るさ", 100, 0, 200, 0.01),
    number(L"コントラスト", 100, 0, 200, 0.01),
    number(L"色相", 0, -3600, 3600, 0.01),
    number(L"輝度", 100, 0, 200, 0.01),
    number(L"彩度", 100, 0, 200, 0.01),
    check(L"飽和する", true),
};

}  // namespace

const EffectInfo ColorFilter::kInfo{L"色調補正", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"色調整", kItems};

}  // namespace Effect
