// 時間制御(オブジェクト): plays a range of layers below it at another time: a position
// curve over the object's length, repeated and with dropped frames.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class EffectItemInteger;
class EffectItemLayerRange;
class EffectItemNumber;

class TimeControl final : public EffectInstance<TimeControl> {
 public:
  static const EffectInfo kInfo;
  TimeControl();

  std::int32_t getLayerRange() const override;
  // On the walker: the frame and exact frame that the layers in its range show.
  void prepareVideo(Render::ObjectContext& context) override;
  // The same for sound, without held frames, and the span's first sample in the scene.
  void prepareAudio(Render::ObjectContext& context) override;
  // 位置 runs straight from 0 to 100 percent, so a new time control plays its range
  // forward once, as if it were not there.
  void initialize() override;

 private:
  // The exact frame that the curve gives at the context's frame, held `step` frames.
  double curveFrame(const Render::ObjectContext& context, std::int64_t step) const;

  EffectItemNumber& position_;
  const EffectItemInteger& repeat_;
  const EffectItemInteger& frameStep_;
  const EffectItemLayerRange& layerRange_;
};

}  // namespace Effect
