#include "cache/CacheMediaAccess.h"

#include "cache/CacheInstance.h"
#include "edit/Scene.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/audio/WaveformBuffer.h"
#include "media/image/ConvertParameters.h"
#include "media/image/ImageBuffer.h"
#include "plugin/InputFile.h"
#include "plugin/InputService.h"
#include "system/Exception.h"

namespace Cache {

namespace {

Plugin::MediaKind kindOf(Effect::MediaAccess::Kind kind) {
  return kind == Effect::MediaAccess::Kind::Audio ? Plugin::MediaKind::Audio : Plugin::MediaKind::Video;
}

}  // namespace

std::uint32_t CacheMediaAccess::fileGeneration() { return Plugin::InputService::fileGeneration(); }

std::optional<Effect::MediaSourceInfo> CacheMediaAccess::probe(const std::wstring& path, Kind kind) {
  if (!input_) return std::nullopt;
  const std::shared_ptr<Plugin::InputFile> file = input_->openCachedFile(path, kindOf(kind));
  if (!file) return std::nullopt;
  Effect::MediaSourceInfo info;
  info.flags = file->flags;
  info.pixelFormat = static_cast<std::int32_t>(file->pixelFormat);
  info.frameCount = file->frameCount;
  info.rate = file->rate;
  info.scale = file->scale;
  info.sampleCount = file->sampleCount;
  info.sampleRate = file->sampleRate;
  info.videoTrackCount = file->videoTrackCount;
  info.audioTrackCount = file->audioTrackCount;
  return info;
}

std::optional<Effect::MediaSceneInfo> CacheMediaAccess::scene(std::int32_t sceneId) {
  const std::shared_ptr<Edit::Scene> scene = cache_.scene(sceneId);
  if (!scene) return std::nullopt;
  return Effect::MediaSceneInfo{scene->videoRate, scene->videoScale, scene->lastUsedFrame(), scene->audioRate};
}

bool CacheMediaAccess::canRead(const std::wstring& path, Kind kind) {
  if (!input_) return false;
  try {
    // Still pictures are read through the same door as movies.
    return input_->openFile(path, kindOf(kind)) != nullptr;
  } catch (const System::Exception&) {
    return false;
  }
}

void CacheMediaAccess::preloadVideoImage(const std::wstring& name, std::int32_t track, double seconds) {
  cache_.preloadVideoImage(name, track, seconds);
}

std::shared_ptr<Media::ImageBuffer> CacheMediaAccess::getVideoImage(const std::wstring& name, std::int32_t track,
                                                                    double seconds) {
  return cache_.getVideoImage(name, track, seconds);
}

void CacheMediaAccess::preloadResourceImage(const std::wstring& path) { cache_.preloadResourceImage(path); }

std::unique_ptr<Media::ResourceBuffer> CacheMediaAccess::getResourceImageCopy(const std::wstring& path) {
  return cache_.getResourceImageCopy(path);
}

std::unique_ptr<Media::ResourceBuffer> CacheMediaAccess::toResource(const Media::ImageBuffer& image,
                                                                    const Media::ConvertParameters& parameters) {
  return cache_.toResource(image, parameters);
}

std::shared_ptr<Media::AudioBuffer> CacheMediaAccess::readAudioRange(const std::wstring& name, std::int32_t track,
                                                                     std::int64_t position, std::int32_t positionRate,
                                                                     std::int32_t count, double startSeconds,
                                                                     double speed) {
  return cache_.readAudioRange(name, track, position, positionRate, count, startSeconds, speed);
}

void CacheMediaAccess::preloadAudioRange(const std::wstring& name, std::int32_t track, std::int64_t position,
                                         std::int32_t positionRate, std::int32_t count, double startSeconds,
                                         double speed) {
  cache_.preloadAudioRange(name, track, position, positionRate, count, startSeconds, speed);
}

std::shared_ptr<Media::WaveformBuffer> CacheMediaAccess::getWaveform(const std::wstring& name, std::int32_t track) {
  return cache_.getWaveform(name, track);
}

Effect::MediaAccess::SoundWait CacheMediaAccess::startSceneSound(std::int32_t sceneId, std::int32_t frame) {
  return cache_.startSceneSound(sceneId, frame);
}

}  // namespace Cache
