#include "effect/modify/QuakeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 10, -500, 500, 1), number(L"Y", 10, -500, 500, 1), group(L"Group", 2),
    number(L"Z", 0, -500, 500, 1),  number(L"周期", 1, 1, 100, 1),  check(L"ランダムに強さを変える", false),
    check(L"複雑に振動", false),
};

}  // namespace

const EffectInfo QuakeFilter::kInfo{L"振動", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"アニメーション効果", kItems};

}  // namespace Effect
