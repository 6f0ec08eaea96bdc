#include "effect/output/TimeControl.h"

#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"位置", 0, 0, 100, 0.001),
    integer(L"繰り返し", 1, 1, 100),
    integer(L"コマ落ち", 1, 1, 100),
    layerRange(L"対象レイヤー数"),
};

}  // namespace

// Offered on video and audio layers alike, though never as media.
const EffectInfo TimeControl::kInfo{L"時間制御(オブジェクト)", EffectType::Control, EffectMedia::Both,
                                    EffectMedia::TimelineOnly, L"オブジェクト制御", kItems};

TimeControl::TimeControl()
    : EffectInstance(kInfo),
      position_(item<EffectItemNumber>(L"位置")),
      layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t TimeControl::getLayerRange() const { return layerRange_.value(); }

void TimeControl::initialize() {
  // A fresh object has no section points: its start and its end.
  position_.setMovement(findMovement(L"直線移動"), 2);
  position_.setValue(0, 0);
  position_.setValue(1, 100);
}

}  // namespace Effect
