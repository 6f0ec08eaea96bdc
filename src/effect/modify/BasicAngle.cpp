#include "effect/modify/BasicAngle.h"

#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -3600, 3600, 0.01),
    number(L"Y", 0, -3600, 3600, 0.01),
    number(L"Z", 0, -3600, 3600, 0.01),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicAngle::kInfo{L"回転", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

std::unique_ptr<Media::ResourceBuffer> BasicAngle::filterVideo(Render::ObjectContext& context,
                                                               std::unique_ptr<Media::ResourceBuffer> image) {
  const ItemContext items = Render::itemsAt(context);
  context.view.rotationX += static_cast<float>(item<EffectItemNumber>(L"X").getValueAt(items));
  context.view.rotationY += static_cast<float>(item<EffectItemNumber>(L"Y").getValueAt(items));
  context.view.rotationZ += static_cast<float>(item<EffectItemNumber>(L"Z").getValueAt(items));
  return image;
}

}  // namespace Effect
