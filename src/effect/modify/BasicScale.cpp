#include "effect/modify/BasicScale.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"X", 100, 0, 10000, 0.001),
    number(L"Y", 100, 0, 10000, 0.001),
    number(L"Z", 100, 0, 10000, 0.001),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicScale::kInfo{L"拡大率", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

}  // namespace Effect
