// 基本出力: puts the object's image on the frame by whole pixels, without 3D. Where it
// is neither scaled nor turned nor off the pixel grid the image is copied as it is;
// otherwise it is drawn as a flat quad, past any camera or group.
#pragma once

#include "effect/EffectBase.h"
#include "effect/output/OutputShaderEffect.h"

namespace Effect {

class EffectItemNumber;
class EffectItemSelect;

class SimpleOutput final : public EffectInstance<SimpleOutput>, public OutputShaderEffect {
 public:
  static const EffectInfo kInfo;
  SimpleOutput();

  // The position rounded to whole pixels, then the zoom unless pieces are placed, the
  // transparency and the blend mode.
  void getOutputView(Render::ObjectContext& context, Render::ObjectView& view) override;
  void outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image) override;
  void createCommonResource() override;
  void shareCommonResource(const EffectBase& prototype) override;

 private:
  EffectItemNumber& x_;
  EffectItemNumber& y_;
  EffectItemNumber& scale_;
  EffectItemNumber& transparency_;
  EffectItemSelect& blend_;
};

}  // namespace Effect
