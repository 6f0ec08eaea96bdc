// 拡大率: scales the object, as a whole and per axis; all in percent.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BasicScale final : public EffectInstance<BasicScale> {
 public:
  static const EffectInfo kInfo;
  BasicScale() : EffectInstance(kInfo) {}

  // Changes the object's view, not its pixels: the image passes unchanged.
  std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override;
};

}  // namespace Effect
