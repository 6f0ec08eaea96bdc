// 直前オブジェクト: takes over the final image of the object drawn just before it.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class BeforeObjectLoad final : public EffectInstance<BeforeObjectLoad> {
 public:
  static const EffectInfo kInfo;
  BeforeObjectLoad() : EffectInstance(kInfo) {}

  // Takes the image away: the worker's slot is empty after, so a second 直前オブジェクト
  // in a row gets nothing.
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
};

}  // namespace Effect
