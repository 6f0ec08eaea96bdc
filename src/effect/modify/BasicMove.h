// 座標: moves the object by X, Y, Z.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicMove final : public EffectInstance<BasicMove> {
 public:
  static const EffectInfo kInfo;
  BasicMove() : EffectInstance(kInfo) {}

  // Changes the object's view, not its pixels: the image passes unchanged.
  std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override;
};

}  // namespace Effect
