#include "effect/filter/BorderBlurFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 5, 0, 1000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    check(L"透明度の境界をぼかす", false),
};

}  // namespace

const EffectInfo BorderBlurFilter::kInfo{L"境界ぼかし", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                         L"ぼかし", kItems};

}  // namespace Effect
