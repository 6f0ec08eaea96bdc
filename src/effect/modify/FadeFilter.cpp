#include "effect/modify/FadeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"イン", 0.5, 0, 10, 0.01),
    number(L"アウト", 0.5, 0, 10, 0.01),
};

}  // namespace

const EffectInfo FadeFilter::kInfo{L"フェード", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"切り替え効果", kItems};

}  // namespace Effect
