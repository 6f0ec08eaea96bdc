// The standard drawing of 標準描画 and 映像再生: the object's image as a quad, moved,
// turned about its centre, scaled and blended by the items of kBasicOutputItems. Items
// are read on the object thread from the render's copy of the object.
#pragma once

#include "effect/EffectBase.h"
#include "effect/output/OutputShaderEffect.h"

namespace Effect {

class EffectItemNumber;
class EffectItemSelect;

class BasicOutput : public EffectBase, public OutputShaderEffect {
 public:
  // The view of the context with this effect's part added; the position always, the
  // turn, centre, zoom and aspect only where no filter or input placed pieces itself.
  void getOutputView(Render::ObjectContext& context, Render::ObjectView& view) override;
  // A direct image is copied by whole pixels; anything else is drawn as a quad.
  void outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image) override;
  void createCommonResource() override;
  void shareCommonResource(const EffectBase& prototype) override;

 protected:
  // `info` must list kBasicOutputItems first.
  explicit BasicOutput(const EffectInfo& info);

 private:
  EffectItemNumber& x_;
  EffectItemNumber& y_;
  EffectItemNumber& z_;
  EffectItemNumber& centreX_;
  EffectItemNumber& centreY_;
  EffectItemNumber& centreZ_;
  EffectItemNumber& rotationX_;
  EffectItemNumber& rotationY_;
  EffectItemNumber& rotationZ_;
  EffectItemNumber& scale_;
  EffectItemNumber& aspect_;
  EffectItemNumber& transparency_;
  EffectItemSelect& blend_;
};

}  // namespace Effect
