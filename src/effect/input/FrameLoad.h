// フレームバッファ: a copy of what the frame holds so far, as the object's image.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class FrameLoad final : public EffectInstance<FrameLoad> {
 public:
  static const EffectInfo kInfo;
  FrameLoad() : EffectInstance(kInfo) {}

  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
};

}  // namespace Effect
