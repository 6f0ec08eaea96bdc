#include "effect/modify/BasicAngle.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -3600, 3600, 0.01),
    number(L"Y", 0, -3600, 3600, 0.01),
    number(L"Z", 0, -3600, 3600, 0.01),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicAngle::kInfo{L"回転", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

}  // namespace Effect
