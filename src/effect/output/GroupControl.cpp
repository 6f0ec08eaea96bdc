#include "effect/output/GroupControl.h"

#include "effect/item/EffectItemInteger.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"X軸回転", 0, -3600, 3600, 0.01),
    number(L"Y軸回転", 0, -3600, 3600, 0.01),
    number(L"Z軸回転", 0, -3600, 3600, 0.01),
    number(L"拡大率", 100, 0, 10000, 0.001),
    layerRange(L"対象レイヤー数"),
};

}  // namespace

const EffectInfo GroupControl::kInfo{L"グループ制御", EffectType::Control, EffectMedia::Video,
                                     EffectMedia::Video, L"オブジェクト制御", kItems};

GroupControl::GroupControl() : EffectInstance(kInfo), layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t GroupControl::getLayerRange() const { return layerRange_.value(); }

}  // namespace Effect
