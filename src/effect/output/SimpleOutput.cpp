#include "effect/output/SimpleOutput.h"

#include <algorithm>
#include <cmath>

#include "effect/item/BlendModes.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/movement/ItemContext.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -10000, 10000, 1),
    number(L"Y", 0, -10000, 10000, 1),
    group(L"Group", 2),
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"透明度", 0, 0, 100, 0.01),
    select(L"合成モード", BlendModes::list),
};

bool whole(float value) noexcept { return std::trunc(value) == value; }

}  // namespace

const EffectInfo SimpleOutput::kInfo{L"基本出力", EffectType::Output, EffectMedia::Video,
                                     EffectMedia::Video, L"", kItems};

SimpleOutput::SimpleOutput()
    : EffectInstance(kInfo),
      OutputShaderEffect(static_cast<EffectBase&>(*this)),
      x_(item<EffectItemNumber>(L"X")),
      y_(item<EffectItemNumber>(L"Y")),
      scale_(item<EffectItemNumber>(L"拡大率")),
      transparency_(item<EffectItemNumber>(L"透明度")),
      blend_(item<EffectItemSelect>(L"合成モード")) {}

void SimpleOutput::getOutputView(Render::ObjectContext& context, Render::ObjectView& view) {
  const ItemContext items = Render::itemsAt(context);
  view = context.view;
  // Rounded before they are added, halves away from zero, so the image keeps to the grid.
  view.x += static_cast<float>(std::round(x_.getValueAt(items)));
  view.y += static_cast<float>(std::round(y_.getValueAt(items)));
  if (!context.piecesPlaced) {
    const auto scale = static_cast<float>(scale_.getValueAt(items) * 0.01);
    if (scale != 1.0f) {
      view.zoomX *= scale;
      view.zoomY *= scale;
      view.zoomZ *= scale;
    }
  }
  view.alpha *= 1.0f - static_cast<float>(transparency_.getValueAt(items) * 0.01);
  if (blend_.value() != 0) view.blend = std::clamp(blend_.value(), 0, 23);
}

void SimpleOutput::outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target,
                               Media::ResourceBuffer& image) {
  const Render::ObjectView& at = context.view;
  const bool onGrid = scale_.getValueAt(Render::itemsAt(context)) == 100.0 && at.zoomX == 1.0f && at.zoomY == 1.0f &&
                      at.zoomZ == 1.0f && at.rotationX == 0.0f && at.rotationY == 0.0f && at.rotationZ == 0.0f &&
                      whole(at.x) && whole(at.y) && whole(at.z) && whole(at.centreX) && whole(at.centreY) &&
                      whole(at.centreZ);
  // The copy's view is the context's plus the rounded position: whole pixels, no resampling.
  if (onGrid) {
    outputDirect(context, target, image);
    return;
  }
  // Drawn flat on the frame: no camera or group places it.
  Render::ObjectContext flat = context;
  flat.camera = nullptr;
  flat.group = nullptr;
  outputImage(flat, target, image);
}

void SimpleOutput::createCommonResource() { createOutputResource(); }

void SimpleOutput::shareCommonResource(const EffectBase& prototype) { shareOutputResource(prototype); }

}  // namespace Effect
