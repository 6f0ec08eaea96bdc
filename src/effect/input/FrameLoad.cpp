#include "effect/input/FrameLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    check(L"アルファチャンネルを維持", false),
    check(L"フレームバッファをクリア", false),
};

}  // namespace

const EffectInfo FrameLoad::kInfo{L"フレームバッファ", EffectType::Input, EffectMedia::Video,
                                  EffectMedia::Video, L"", kItems};

}  // namespace Effect

#include "effect/item/EffectItemCheck.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePasses.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace Effect {

std::unique_ptr<Media::ResourceBuffer> FrameLoad::inputVideo(Render::ObjectContext& context) {
  if (!context.target) return nullptr;
  std::unique_ptr<Media::ResourceBuffer> copy;
  Media::FramePasses* passes = context.worker ? context.worker->framePasses() : nullptr;
  if (item<EffectItemCheck>(L"アルファチャンネルを維持").value() || !passes) {
    copy = context.target->toResourceBuffer();
  } else {
    copy = context.target->toResourceBuffer(passes->pixelShader(Media::FramePass::CopyOpaque));
  }
  if (item<EffectItemCheck>(L"フレームバッファをクリア").value()) context.target->clear({0.0f, 0.0f, 0.0f, 0.0f});
  return copy;
}

}  // namespace Effect
