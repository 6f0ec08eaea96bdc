#include "effect/modify/PolarFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"中心幅", 0, 0, 2000, 1),
    number(L"拡大率", 100, 100, 800, 0.01),
    number(L"回転", 0, -3600, 3600, 0.01),
    number(L"渦巻", 0, -8, 8, 0.001),
};

}  // namespace

const EffectInfo PolarFilter::kInfo{L"極座標変換", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"変形", kItems};

}  // namespace Effect
