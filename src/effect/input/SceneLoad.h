// シーン: another scene of the project, played as a clip from a position at a speed.
#pragma once

#include "effect/EffectBase.h"
#include "effect/input/InputMovieEffect.h"

namespace Effect {

class SceneLoad final : public EffectInstance<SceneLoad>, public InputMovieEffect {
 public:
  static const EffectInfo kInfo;
  SceneLoad();

  // Renders the scene's frame here, on the walker, so that the object thread only
  // picks it up.
  void prepareVideo(Render::ObjectContext& context) override;
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
  void prepareAudio(Render::ObjectContext& context) override;
  std::shared_ptr<Media::AudioBuffer> inputAudio(Render::ObjectContext& context) override;

  std::int32_t getMediaFlag(std::int32_t query) const override { return query == 0 ? 1 : 0; }
  bool itemEvent(ItemEvent& event) override;
};

}  // namespace Effect
