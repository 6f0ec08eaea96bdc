#include "effect/filter/BevelFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"幅", 4, 0, 100, 1),
    number(L"高さ", 1, 0, 3, 0.01),
    number(L"角度", 45, -3600, 3600, 0.01),
};

}  // namespace

const EffectInfo BevelFilter::kInfo{L"凸エッジ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"装飾", kItems};

}  // namespace Effect
