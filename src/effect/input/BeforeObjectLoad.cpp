#include "effect/input/BeforeObjectLoad.h"

namespace Effect {

const EffectInfo BeforeObjectLoad::kInfo{L"直前オブジェクト", EffectType::Input, EffectMedia::Video,
                                         EffectMedia::Video, L"", std::span<const ItemRow>{}};

}  // namespace Effect

#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace Effect {

std::unique_ptr<Media::ResourceBuffer> BeforeObjectLoad::inputVideo(Render::ObjectContext& context) {
  if (!context.worker) return nullptr;
  return std::move(context.worker->lastImage());
}

}  // namespace Effect
