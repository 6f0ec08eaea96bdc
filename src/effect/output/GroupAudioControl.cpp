#include "effect/output/GroupAudioControl.h"

#include "effect/item/EffectItemInteger.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"音量", 100, 0, 1000, 0.01),
    number(L"左右", 0, -100, 100, 0.01),
    layerRange(L"対象レイヤー数"),
};

}  // namespace

const EffectInfo GroupAudioControl::kInfo{L"グループ制御(音声)", EffectType::Control, EffectMedia::Audio,
                                          EffectMedia::Audio, L"オブジェクト制御", kItems};

GroupAudioControl::GroupAudioControl()
    : EffectInstance(kInfo), layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t GroupAudioControl::getLayerRange() const { return layerRange_.value(); }

}  // namespace Effect
