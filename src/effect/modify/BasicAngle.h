// 回転: turns the object about X, Y, Z, in degrees.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicAngle final : public EffectInstance<BasicAngle> {
 public:
  static const EffectInfo kInfo;
  BasicAngle() : EffectInstance(kInfo) {}

  // Changes the object's view, not its pixels: the image passes unchanged.
  std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override;
};

}  // namespace Effect
