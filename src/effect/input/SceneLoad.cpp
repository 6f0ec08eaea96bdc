#include "effect/input/SceneLoad.h"

#include "effect/item/EffectItemInteger.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/image/ConvertParameters.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    scene(L"シーン").notifying(),
    check(L"ループ再生", false),
};

}  // namespace

const EffectInfo SceneLoad::kInfo{L"シーン", EffectType::Input, EffectMedia::Both, EffectMedia::Both, L"", kItems};

SceneLoad::SceneLoad() : EffectInstance(kInfo), InputMovieEffect(*this, SourceKind::Scene) {}

void SceneLoad::prepareVideo(Render::ObjectContext& context) {
  if (sceneItem_->value() > 0) preloadVideo(context);
}

std::unique_ptr<Media::ResourceBuffer> SceneLoad::inputVideo(Render::ObjectContext& context) {
  if (sceneItem_->value() <= 0) return nullptr;
  return readVideo(context, Media::ConvertParameters{});
}

void SceneLoad::prepareAudio(Render::ObjectContext& context) {
  if (sceneItem_->value() > 0) preloadAudio(context);
}

std::shared_ptr<Media::AudioBuffer> SceneLoad::inputAudio(Render::ObjectContext& context) {
  if (sceneItem_->value() <= 0) return nullptr;
  return readAudio(context);
}

bool SceneLoad::itemEvent(ItemEvent& event) {
  // A scene is chosen, never dropped.
  if (event.type == ItemEvent::FileHanded) return false;
  return movieItemEvent(event);
}

}  // namespace Effect
