// 音声波形表示: the sound of a file, or of the scene itself, drawn as a wave or a spectrum.
#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "effect/EffectBase.h"
#include "effect/input/InputMovieEffect.h"
#include "effect/input/MediaAccess.h"

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
  // The sound of the context's frame: the file's, or the scene's mix asked for ahead.
  std::shared_ptr<Media::AudioBuffer> soundAt(const Render::ObjectContext& context);

  std::shared_ptr<Common> common_;
  // The scene's own mix asked for on the walker, by frame, until the object thread takes
  // it; the walker may run a few frames ahead.
  std::mutex pendingMutex_;
  std::map<std::int32_t, MediaAccess::SoundWait> pending_;
};

}  // namespace Effect
