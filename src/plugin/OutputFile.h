// One export under way: the frames and samples of a range of the scene, pulled from a
// source (the render workers in the program) by a writer that saves them in its own
// form. The writer runs on one thread; the progress counters and the cancel flag may be
// read and set from any other.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "media/Format.h"

namespace Media {
class AudioBuffer;
class ImageBuffer;
struct RawAudioBuffer;
}  // namespace Media

namespace Plugin {

// What an export renders from.
class OutputSource {
 public:
  virtual ~OutputSource() = default;
  // Frame `frame` of the scene as a CPU image of `format`, with straight alpha where
  // `straightAlpha` is set; empty when it could not be made.
  virtual std::shared_ptr<Media::ImageBuffer> video(std::int32_t frame, Media::Format format, bool straightAlpha) = 0;
  // The stereo mix of frame `frame`, or empty.
  virtual std::shared_ptr<Media::AudioBuffer> audio(std::int32_t frame) = 0;
};

// The scene as an export sees it.
struct OutputScene {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t rate = 30;
  std::int32_t scale = 1;
  std::int32_t audioRate = 48000;
  std::int32_t lastFrame = 0;
  std::int32_t cursorFrame = 0;  // what a single picture shows
  // The scene's selected range; negative ends mean none.
  std::int32_t rangeStart = -1;
  std::int32_t rangeEnd = -1;
};

struct OutputRange {
  std::int32_t startFrame = 0;
  std::int32_t frameCount = 0;
  std::int64_t firstSample = 0;
  std::int64_t sampleCount = 0;
};

// The whole scene, or its selected range cut to its last frame.
OutputRange outputRange(const OutputScene& scene);

class OutputFile {
 public:
  OutputFile(const OutputScene& scene, std::wstring path, std::shared_ptr<OutputSource> source);
  virtual ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Writes the file; exceptions are the caller's to show.
  virtual void save() = 0;

  const OutputScene& scene() const noexcept { return scene_; }
  const OutputRange& range() const noexcept { return range_; }
  const std::wstring& path() const noexcept { return path_; }
  // Whether the end of the export is announced (a notice, a sound); single pictures
  // are not.
  virtual bool announcesEnd() const { return true; }

  void cancel() noexcept { cancelled_ = true; }
  bool cancelled() const noexcept { return cancelled_; }
  void setProgress(std::int32_t current, std::int32_t total) noexcept {
    current_ = current;
    total_ = total;
  }
  std::int32_t current() const noexcept { return current_; }
  std::int32_t total() const noexcept { return total_; }

  // Frame `frame` of the scene (clamped to its frames).
  std::shared_ptr<Media::ImageBuffer> getVideo(std::int32_t frame, Media::Format format, bool straightAlpha);
  // The samples of frame `frame`, interleaved stereo: 16-bit PCM for tag 1, else float.
  // Empty when the frame has no sound.
  std::shared_ptr<Media::RawAudioBuffer> getAudio(std::int32_t frame, std::uint16_t tag);

 private:
  OutputScene scene_;
  OutputRange range_;
  std::wstring path_;
  std::shared_ptr<OutputSource> source_;
  std::atomic<bool> cancelled_{false};
  std::atomic<std::int32_t> current_{0};
  std::atomic<std::int32_t> total_{0};
};

}  // namespace Plugin
