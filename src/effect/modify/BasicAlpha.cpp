#include "effect/modify/BasicAlpha.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"透明度", 0, 0, 100, 0.01),
};

}  // namespace

const EffectInfo BasicAlpha::kInfo{L"透明度", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

}  // namespace Effect
