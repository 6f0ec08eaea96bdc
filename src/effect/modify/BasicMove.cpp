#include "effect/modify/BasicMove.h"

#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicMove::kInfo{L"座標", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                  L"基本効果", kItems};

std::unique_ptr<Media::ResourceBuffer> BasicMove::filterVideo(Render::ObjectContext& context,
                                                              std::unique_ptr<Media::ResourceBuffer> image) {
  const ItemContext items = Render::itemsAt(context);
  context.view.x += static_cast<float>(item<EffectItemNumber>(L"X").getValueAt(items));
  context.view.y += static_cast<float>(item<EffectItemNumber>(L"Y").getValueAt(items));
  context.view.z += static_cast<float>(item<EffectItemNumber>(L"Z").getValueAt(items));
  return image;
}

}  // namespace Effect
