#include "effect/modify/BasicMove.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicMove::kInfo{L"座標", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                  L"基本効果", kItems};

}  // namespace Effect
