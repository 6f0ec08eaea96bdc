// The reads of the movie family: what the play position arithmetic of InputMovieEffect
// turns into at a render context.
#include <cmath>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/InputMovieEffect.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/audio/WaveformBuffer.h"
#include "media/image/ImageBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

InputMovieEffect::TimeBase InputMovieEffect::timeOf(const Render::ObjectContext& context) {
  if (!context.scene || context.scene->videoRate <= 0 || context.scene->videoScale <= 0) return {};
  return {context.scene->videoRate, context.scene->videoScale};
}

double InputMovieEffect::playPositionAt(const Render::ObjectContext& context) const {
  return playPosition(*context.object, context.exactFrame, context.frameOffset, timeOf(context));
}

void InputMovieEffect::preloadVideo(const Render::ObjectContext& context) {
  if (!context.object || !isPlayable()) return;
  if (const std::shared_ptr<MediaAccess> media = MediaAccess::get()) {
    media->preloadVideoImage(sourceName(), track(), sourceFrameTime(playPositionAt(context)));
  }
}

std::unique_ptr<Media::ResourceBuffer> InputMovieEffect::readVideo(const Render::ObjectContext& context,
                                                                   const Media::ConvertParameters& parameters) {
  if (!context.object || !isPlayable()) return nullptr;
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!media) return nullptr;
  const std::shared_ptr<Media::ImageBuffer> image =
      media->getVideoImage(sourceName(), track(), sourceFrameTime(playPositionAt(context)));
  return image ? media->toResource(*image, parameters) : nullptr;
}

std::optional<InputMovieEffect::AudioRead> InputMovieEffect::audioRead(const Render::ObjectContext& context) const {
  if (!context.object || context.sampleRate == 0) return std::nullopt;
  const Edit::Object& object = *context.object;
  const double p = playPositionOrEnd(object, context.exactFrame, timeOf(context));
  if (p >= duration()) return std::nullopt;
  // The speed of the section in work: with sections each plays at its own key.
  const std::int32_t section =
      speedIsConstant() ? 0 : object.sectionIndex(static_cast<std::int32_t>(std::floor(context.exactFrame)));
  const double speed = speedItem_->getValue(section) * 0.01;
  const double rate = context.sampleRate;
  // The read takes the object's own sample position at the magnitude of the speed; the
  // start says where in the source that position lands, so the span begins at p. A
  // backward read covers the span that ends at p and is turned round.
  double start = p;
  if (speed < 0.0) start -= context.sampleCount / rate * -speed;
  // The start is kept to whole samples of the object's own position: the frame grid
  // rounds each frame's first sample, and the fraction it leaves would move a frame's
  // span by a sample against the one before, repeating or skipping one at the edge.
  const double magnitude = std::fabs(speed);
  double offset = (start * rate - context.objectSample * magnitude);
  if (magnitude > 0.0) offset = std::round(offset / magnitude) * magnitude;
  return AudioRead{offset / rate, speed};
}

std::shared_ptr<Media::AudioBuffer> InputMovieEffect::readAudio(const Render::ObjectContext& context) {
  if (!isPlayable()) return nullptr;
  const std::optional<AudioRead> read = audioRead(context);
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!read || !media) return nullptr;
  return media->readAudioRange(sourceName(), track(), context.objectSample, static_cast<std::int32_t>(context.sampleRate),
                               static_cast<std::int32_t>(context.sampleCount), read->startSeconds, read->speed);
}

void InputMovieEffect::preloadAudio(const Render::ObjectContext& context) {
  if (!isPlayable()) return;
  const std::optional<AudioRead> read = audioRead(context);
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!read || !media) return;
  media->preloadAudioRange(sourceName(), track(), context.objectSample, static_cast<std::int32_t>(context.sampleRate),
                           static_cast<std::int32_t>(context.sampleCount), read->startSeconds, read->speed);
}

std::shared_ptr<Media::WaveformBuffer> InputMovieEffect::sourceWaveform() const {
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!media || !fileItem_ || fileItem_->getFilePath()->empty()) return nullptr;
  return media->getWaveform(sourceName(), track());
}

}  // namespace Effect
