#include "effect/modify/BasicScale.h"

#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"X", 100, 0, 10000, 0.001),
    number(L"Y", 100, 0, 10000, 0.001),
    number(L"Z", 100, 0, 10000, 0.001),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo BasicScale::kInfo{L"拡大率", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"基本効果", kItems};

std::unique_ptr<Media::ResourceBuffer> BasicScale::filterVideo(Render::ObjectContext& context,
                                                               std::unique_ptr<Media::ResourceBuffer> image) {
  const ItemContext items = Render::itemsAt(context);
  const double all = item<EffectItemNumber>(L"拡大率").getValueAt(items) * 0.01;
  context.view.zoomX *= static_cast<float>(all * item<EffectItemNumber>(L"X").getValueAt(items) * 0.01);
  context.view.zoomY *= static_cast<float>(all * item<EffectItemNumber>(L"Y").getValueAt(items) * 0.01);
  context.view.zoomZ *= static_cast<float>(all * item<EffectItemNumber>(L"Z").getValueAt(items) * 0.01);
  return image;
}

}  // namespace Effect
