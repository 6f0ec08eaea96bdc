#include "effect/modify/ShapeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 50, 0, 800, 0.1),
    number(L"範囲", 5, 0, 100, 1),
};

}  // namespace

const EffectInfo ShapeFilter::kInfo{L"シャープ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"加工", kItems};

}  // namespace Effect
