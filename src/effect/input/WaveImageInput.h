// 音声波形表示: the sound of a file drawn as a wave or a spectrum.
#pragma once

#include <memory>

#include "effect/EffectBase.h"
#include "effect/input/InputMovieEffect.h"

namespace Media {
class WaveImage;
}

namespace Effect {

class WaveImageInput final : public EffectInstance<WaveImageInput>, public InputMovieEffect {
 public:
  static const EffectInfo kInfo;
  WaveImageInput();
  ~WaveImageInput() override;

  void prepareVideo(Render::ObjectContext& context) override;
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
  bool itemEvent(ItemEvent& event) override;
  bool acceptsFile(const std::wstring& path) const override;
  void shareCommonResource(const EffectBase& prototype) override;

 private:
  struct Common;
  // The context with the frame's span of samples on the scene's sample grid.
  static Render::ObjectContext soundOfFrame(const Render::ObjectContext& context);

  std::shared_ptr<Common> common_;
};

}  // namespace Effect
