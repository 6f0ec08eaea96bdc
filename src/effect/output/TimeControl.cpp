#include "effect/output/TimeControl.h"

#include <algorithm>
#include <cmath>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/ItemContext.h"
#include "render/ObjectContext.h"

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
      repeat_(item<EffectItemInteger>(L"繰り返し")),
      frameStep_(item<EffectItemInteger>(L"コマ落ち")),
      layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t TimeControl::getLayerRange() const { return layerRange_.value(); }

void TimeControl::prepareVideo(Render::ObjectContext& context) {
  context.exactFrame = curveFrame(context, std::max(frameStep_.value(), 1));
  context.frame = static_cast<std::int32_t>(context.exactFrame);
}

void TimeControl::prepareAudio(Render::ObjectContext& context) {
  // Sound is never held in steps: held frames would repeat one span of samples.
  context.exactFrame = curveFrame(context, 1);
  context.frame = static_cast<std::int32_t>(context.exactFrame);
  if (!context.scene || context.scene->videoRate <= 0) return;
  context.frameSample = std::llround(static_cast<double>(context.sampleRate) * context.exactFrame *
                                     context.scene->videoScale / context.scene->videoRate);
}

double TimeControl::curveFrame(const Render::ObjectContext& context, std::int64_t step) const {
  const Edit::Object& object = *context.object;
  const std::int64_t length = std::int64_t{object.end} - object.start + 1;
  std::int64_t relative = std::int64_t{context.frame} - object.start;
  // コマ落ち holds each moment for that many frames; 繰り返し runs the curve that many
  // times over the object's length.
  relative -= relative % step;
  const auto frame = static_cast<std::int32_t>(object.start + relative * repeat_.value() % length);
  const double position = position_.getValueAt(ItemContext::at(object, frame));
  return position * 0.01 * (object.end - object.start) + object.start;
}

void TimeControl::initialize() {
  // A fresh object has no section points: its start and its end.
  position_.setMovement(findMovement(L"直線移動"), 2);
  position_.setValue(0, 0);
  position_.setValue(1, 100);
}

}  // namespace Effect
