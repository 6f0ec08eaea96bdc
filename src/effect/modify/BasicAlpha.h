// 透明度: makes the object more transparent, in percent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicAlpha final : public EffectInstance<BasicAlpha> {
 public:
  static const EffectInfo kInfo;
  BasicAlpha() : EffectInstance(kInfo) {}

  // Changes the object's view, not its pixels: the image passes unchanged.
  std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override;
};

}  // namespace Effect
