// 音声ファイル: the sound of a file, played from a position at a speed.
#pragma once

#include "effect/EffectBase.h"
#include "effect/input/InputMovieEffect.h"

namespace Effect {

class AudioLoad final : public EffectInstance<AudioLoad>, public InputMovieEffect {
 public:
  static const EffectInfo kInfo;
  AudioLoad();

  void prepareAudio(Render::ObjectContext& context) override;
  std::shared_ptr<Media::AudioBuffer> inputAudio(Render::ObjectContext& context) override;
  std::shared_ptr<Media::WaveformBuffer> getWaveform() const override { return sourceWaveform(); }

  std::wstring getDisplayName() const override;
  bool itemEvent(ItemEvent& event) override;
  bool acceptsFile(const std::wstring& path) const override;
};

}  // namespace Effect
