#include "effect/modify/BasicAlpha.h"

#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"透明度", 0, 0, 100, 0.01),
};

}  // namespace

const EffectInfo BasicAlpha::kInfo{L"透明度", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

std::unique_ptr<Media::ResourceBuffer> BasicAlpha::filterVideo(Render::ObjectContext& context,
                                                               std::unique_ptr<Media::ResourceBuffer> image) {
  const ItemContext items = Render::itemsAt(context);
  context.view.alpha *= static_cast<float>(1.0 - item<EffectItemNumber>(L"透明度").getValueAt(items) * 0.01);
  return image;
}

}  // namespace Effect
