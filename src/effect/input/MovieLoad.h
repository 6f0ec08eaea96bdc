// 動画ファイル: the picture and sound of a movie file, played from a position at a speed.
#pragma once

#include "effect/EffectBase.h"
#include "effect/input/InputMovieEffect.h"

namespace Effect {

class MovieLoad final : public EffectInstance<MovieLoad>, public InputMovieEffect {
 public:
  static const EffectInfo kInfo;
  MovieLoad();

  void prepareVideo(Render::ObjectContext& context) override;
  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
  void prepareAudio(Render::ObjectContext& context) override;
  std::shared_ptr<Media::AudioBuffer> inputAudio(Render::ObjectContext& context) override;
  std::shared_ptr<Media::WaveformBuffer> getWaveform() const override { return sourceWaveform(); }

  std::wstring getDisplayName() const override;
  std::int32_t getMediaFlag(std::int32_t query) const override;
  bool itemEvent(ItemEvent& event) override;
  bool acceptsFile(const std::wstring& path) const override;

 private:
  // Whether the source was current and held sound when the items last changed.
  bool soundKnown_ = false;
};

}  // namespace Effect
