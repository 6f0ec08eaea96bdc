#include "effect/output/GroupControl.h"

#include "edit/Object.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/ItemContext.h"
#include "media/RenderBuffer.h"
#include "render/ObjectContext.h"
#include "render/ViewMatrix.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"X軸回転", 0, -3600, 3600, 0.01),
    number(L"Y軸回転", 0, -3600, 3600, 0.01),
    number(L"Z軸回転", 0, -3600, 3600, 0.01),
    number(L"拡大率", 100, 0, 10000, 0.001),
    layerRange(L"対象レイヤー数"),
};

}  // namespace

const EffectInfo GroupControl::kInfo{L"グループ制御", EffectType::Control, EffectMedia::Video,
                                     EffectMedia::Video, L"オブジェクト制御", kItems};

GroupControl::GroupControl()
    : EffectInstance(kInfo),
      x_(item<EffectItemNumber>(L"X")),
      y_(item<EffectItemNumber>(L"Y")),
      z_(item<EffectItemNumber>(L"Z")),
      rotationX_(item<EffectItemNumber>(L"X軸回転")),
      rotationY_(item<EffectItemNumber>(L"Y軸回転")),
      rotationZ_(item<EffectItemNumber>(L"Z軸回転")),
      scale_(item<EffectItemNumber>(L"拡大率")),
      layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t GroupControl::getLayerRange() const { return layerRange_.value(); }

void GroupControl::controlVideo(Render::ObjectContext& context) {
  const ItemContext items = Render::itemsAt(context);
  const auto x = static_cast<float>(x_.getValueAt(items));
  const auto y = static_cast<float>(y_.getValueAt(items));
  const auto z = static_cast<float>(z_.getValueAt(items));
  const auto turnX = static_cast<float>(rotationX_.getValueAt(items));
  const auto turnY = static_cast<float>(rotationY_.getValueAt(items));
  const auto turnZ = static_cast<float>(rotationZ_.getValueAt(items));
  const auto scale = static_cast<float>(scale_.getValueAt(items));
  Render::Matrix4 own = Render::rotationZ(turnZ);
  own = Render::multiply(own, Render::rotationY(turnY));
  own = Render::multiply(own, Render::rotationX(turnX));
  own = Render::multiply(own, Render::scaling(scale * 0.01f, scale * 0.01f, scale * 0.01f));
  own = Render::multiply(own, Render::translation(x, y, z));
  plainShift_ = scale == 100.0f && z == 0.0f && turnX == 0.0f && turnY == 0.0f && turnZ == 0.0f;

  // Inside another group the matrices multiply and the outermost projection stays, so
  // all objects of a group share the group's vanishing point, not each its own.
  const auto* outer = context.group ? dynamic_cast<const GroupControl*>(context.group->effects.front().get()) : nullptr;
  if (outer && outer->stored_) {
    world_ = Render::multiply(own, outer->world_);
    viewProjection_ = outer->viewProjection_;
    plainShift_ = plainShift_ && outer->plainShift_;
  } else {
    world_ = own;
    viewProjection_ = Render::defaultProjection(static_cast<float>(context.target->width()),
                                                static_cast<float>(context.target->height()), x, y);
  }
  stored_ = true;
}

void GroupControl::getOutputView(Render::ObjectContext& context, Render::ObjectView& view) {
  const ItemContext items = Render::itemsAt(context);
  view.x += static_cast<float>(x_.getValueAt(items));
  view.y += static_cast<float>(y_.getValueAt(items));
  view.z += static_cast<float>(z_.getValueAt(items));
}

}  // namespace Effect
