#include "effect/output/GroupAudioControl.h"

#include "edit/Object.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "render/ObjectContext.h"

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
    : EffectInstance(kInfo),
      volume_(item<EffectItemNumber>(L"音量")),
      pan_(item<EffectItemNumber>(L"左右")),
      layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t GroupAudioControl::getLayerRange() const { return layerRange_.value(); }

void GroupAudioControl::controlAudio(Render::ObjectContext& context) {
  const ItemContext items = Render::itemsAt(context);
  const double volume = volume_.getValueAt(items) / 100.0;
  const double pan = pan_.getValueAt(items);
  double left = volume;
  double right = volume;
  if (pan > 0.0) left *= (100.0 - pan) / 100.0;
  if (pan < 0.0) right *= (100.0 + pan) / 100.0;
  if (context.group) {
    if (const auto* outer = dynamic_cast<const GroupAudioControl*>(context.group->effects.front().get())) {
      left *= outer->leftGain_;
      right *= outer->rightGain_;
    }
  }
  leftGain_ = static_cast<float>(left);
  rightGain_ = static_cast<float>(right);
}

}  // namespace Effect
