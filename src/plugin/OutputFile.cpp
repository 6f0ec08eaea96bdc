#include "plugin/OutputFile.h"

#include <algorithm>
#include <cmath>

#include "media/audio/AudioBuffer.h"
#include "media/audio/RawAudioBuffer.h"
#include "media/image/ImageBuffer.h"

namespace Plugin {

OutputRange outputRange(const OutputScene& scene) {
  OutputRange range;
  range.frameCount = scene.lastFrame + 1;
  if (scene.rangeStart >= 0 && scene.rangeEnd >= 0) {
    range.startFrame = std::min(scene.rangeStart, scene.lastFrame);
    range.frameCount = std::max(0, std::min(scene.rangeEnd, scene.lastFrame) - range.startFrame + 1);
  }
  const double samplesPerFrame = static_cast<double>(scene.audioRate) * scene.scale / scene.rate;
  range.firstSample = std::llround(samplesPerFrame * range.startFrame);
  range.sampleCount = std::llround(samplesPerFrame * range.frameCount);
  return range;
}

OutputFile::OutputFile(const OutputScene& scene, std::wstring path, std::shared_ptr<OutputSource> source)
    : scene_(scene), range_(outputRange(scene)), path_(std::move(path)), source_(std::move(source)) {}

OutputFile::~OutputFile() = default;

std::shared_ptr<Media::ImageBuffer> OutputFile::getVideo(std::int32_t frame, Media::Format format,
                                                         bool straightAlpha) {
  return source_->video(std::clamp(frame, 0, scene_.lastFrame), format, straightAlpha);
}

std::shared_ptr<Media::RawAudioBuffer> OutputFile::getAudio(std::int32_t frame, std::uint16_t tag) {
  const std::shared_ptr<Media::AudioBuffer> sound = source_->audio(std::clamp(frame, 0, scene_.lastFrame));
  if (!sound || sound->empty()) return nullptr;
  auto raw = std::make_shared<Media::RawAudioBuffer>();
  raw->channels = 2;
  if (tag == 1) {
    raw->sampleFormat = Media::SampleFormat::Pcm;
    raw->sampleBits = 16;
  } else {
    raw->sampleFormat = Media::SampleFormat::Float;
    raw->sampleBits = 32;
  }
  // A mono mix counts as stereo: both sides take the one channel.
  if (sound->channels() == 2) {
    sound->convertTo(*raw);
  } else {
    Media::AudioBuffer stereo(sound->sampleCount(), 2);
    stereo.copyFrom(0, *sound, 0, sound->sampleCount());
    stereo.convertTo(*raw);
  }
  return raw;
}

}  // namespace Plugin
