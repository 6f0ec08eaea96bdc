#include "effect/output/BasicOutput.h"

#include <algorithm>

#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/movement/ItemContext.h"
#include "render/ObjectContext.h"

namespace Effect {

BasicOutput::BasicOutput(const EffectInfo& info)
    : EffectBase(info),
      OutputShaderEffect(static_cast<EffectBase&>(*this)),
      x_(item<EffectItemNumber>(L"X")),
      y_(item<EffectItemNumber>(L"Y")),
      z_(item<EffectItemNumber>(L"Z")),
      centreX_(item<EffectItemNumber>(L"中心X")),
      centreY_(item<EffectItemNumber>(L"中心Y")),
      centreZ_(item<EffectItemNumber>(L"中心Z")),
      rotationX_(item<EffectItemNumber>(L"X軸回転")),
      rotationY_(item<EffectItemNumber>(L"Y軸回転")),
      rotationZ_(item<EffectItemNumber>(L"Z軸回転")),
      scale_(item<EffectItemNumber>(L"拡大率")),
      aspect_(item<EffectItemNumber>(L"縦横比")),
      transparency_(item<EffectItemNumber>(L"透明度")),
      blend_(item<EffectItemSelect>(L"合成モード")) {}

void BasicOutput::getOutputView(Render::ObjectContext& context, Render::ObjectView& view) {
  const ItemContext items = Render::itemsAt(context);
  auto at = [&items](const EffectItemNumber& number) { return static_cast<float>(number.getValueAt(items)); };
  view = context.view;
  view.x += at(x_);
  view.y += at(y_);
  view.z += at(z_);
  if (!context.piecesPlaced) {
    view.rotationX += at(rotationX_);
    view.rotationY += at(rotationY_);
    view.rotationZ += at(rotationZ_);
    view.centreX += at(centreX_);
    view.centreY += at(centreY_);
    view.centreZ += at(centreZ_);
    const float scale = at(scale_) * 0.01f;
    if (scale != 1.0f) {
      view.zoomX *= scale;
      view.zoomY *= scale;
      view.zoomZ *= scale;
    }
    // The aspect narrows one side only, after the zoom: 100 leaves no width, -100 no height.
    const float aspect = at(aspect_);
    if (aspect > 0.0f) view.zoomX *= (100.0f - aspect) * 0.01f;
    if (aspect < 0.0f) view.zoomY *= (aspect + 100.0f) * 0.01f;
  }
  view.alpha *= 1.0f - at(transparency_) * 0.01f;
  if (blend_.value() != 0) view.blend = std::clamp(blend_.value(), 0, 23);
}

void BasicOutput::outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target,
                              Media::ResourceBuffer& image) {
  if (context.direct) {
    outputDirect(context, target, image);
  } else {
    outputImage(context, target, image);
  }
}

void BasicOutput::createCommonResource() { createOutputResource(); }

void BasicOutput::shareCommonResource(const EffectBase& prototype) { shareOutputResource(prototype); }

}  // namespace Effect
