// What 動画ファイル, 音声ファイル, シーン and 音声波形表示 share: the look at their
// source (a file or a scene), the play position at a frame from 再生位置, 再生速度 and
// ループ再生, and the fitting of the object's length to the source when the user changes
// them. The effect holds its items; this part holds what it learnt of the source, which
// each render copy learns again, since the generation of open files tells it when to.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "effect/ItemEvent.h"
#include "effect/input/MediaAccess.h"

namespace Edit {
class Object;
}
namespace Media {
class AudioBuffer;
class ResourceBuffer;
class WaveformBuffer;
struct ConvertParameters;
}  // namespace Media
namespace Render {
struct ObjectContext;
}

namespace Effect {

class EffectBase;
class EffectItemCheck;
class EffectItemFile;
class EffectItemInteger;
class EffectItemNumber;
class EffectItemScene;

class InputMovieEffect {
 public:
  // Which of the source's lengths counts.
  enum class SourceKind : std::int32_t { Scene = 0, Video = 1, Audio = 2 };

  // The frame rate of the timeline that the object stands on.
  struct TimeBase {
    std::int32_t rate = 30;
    std::int32_t scale = 1;
    double secondsPerFrame() const noexcept { return static_cast<double>(scale) / rate; }
  };

  // The part of the source that plays, in seconds.
  struct Range {
    double a = 0.0;
    double b = 0.0;
  };

  // Looks at the source when the generation of open files moved on, or always for a
  // scene, and reports whether there is something to play.
  bool isPlayable();
  // Takes the generation back, so that the next use looks again.
  void forgetSource();

  // What the last look found. The render threads look while the main thread may read.
  struct SourceState {
    double duration = 0.0;  // seconds; 0 until known
    double frameRate = 0.0;  // of a video or scene; 0 for sound
    std::int32_t trackCount = 0;
    bool hasVideo = false;
    bool hasAudio = false;
    // YUY2 or YC48 video, whose colour conversion the user may choose.
    bool yuv = false;
  };
  SourceState state() const;
  double duration() const { return state().duration; }
  std::int32_t trackCount() const { return state().trackCount; }
  bool hasAudio() const { return state().hasAudio; }

  Range range() const;
  // The play position in seconds at `frame` of `object` (an exact frame, the context's
  // frame offset added), within the range.
  double playPosition(const Edit::Object& object, double frame, std::uint32_t frameOffset, TimeBase time) const;
  // The same without the limits, or duration + 1 when the position lies outside the
  // range: then there is nothing to play.
  double playPositionOrEnd(const Edit::Object& object, double frame, TimeBase time) const;
  // At the context's moment: its exact frame and frame offset.
  double playPositionAt(const Render::ObjectContext& context) const;
  // The track the source is read at: トラック t above 1 selects t - 1, as far as the file
  // has tracks; 0 otherwise.
  std::int32_t track() const;
  // The name the media side knows the source by: the file's path, or "*" and the id.
  std::wstring sourceName() const;
  // The time of the source frame at or just before `seconds`. A source whose frame rate
  // differs from the timeline's is never rounded up into a frame still to come.
  double sourceFrameTime(double seconds) const;

 protected:
  // `self` is the effect that owns the items; a missing loop or file item is allowed.
  InputMovieEffect(EffectBase& self, SourceKind kind);
  ~InputMovieEffect() = default;

  // Asking ahead runs on the walker; the reads on the object thread.
  void preloadVideo(const Render::ObjectContext& context);
  // The frame as a GPU image, or empty when there is nothing to show.
  std::unique_ptr<Media::ResourceBuffer> readVideo(const Render::ObjectContext& context,
                                                   const Media::ConvertParameters& parameters);
  // The context's span of samples, or empty when the source has nothing there.
  std::shared_ptr<Media::AudioBuffer> readAudio(const Render::ObjectContext& context);
  void preloadAudio(const Render::ObjectContext& context);

  // The overview of the file's sound for the timeline, or nothing while it is made.
  std::shared_ptr<Media::WaveformBuffer> sourceWaveform() const;

  // The reaction of the movie family to an item event. Returns true when it handled one.
  bool movieItemEvent(ItemEvent& event);
  // Makes the object as long as the source plays at its speed, where nothing animates
  // the position or speed; with `wholeSource` the position is set to play all of it.
  void fitLength(ItemEvent& event, bool wholeSource);
  // After a split or an edge drag: moves the position keys so that the picture under the
  // object's left end stays where it was.
  void followResize(const ItemEvent& event);

  EffectItemNumber* positionItem_ = nullptr;
  EffectItemNumber* speedItem_ = nullptr;
  EffectItemFile* fileItem_ = nullptr;
  EffectItemScene* sceneItem_ = nullptr;
  EffectItemCheck* loopItem_ = nullptr;
  EffectItemInteger* trackItem_ = nullptr;

 private:
  static constexpr std::uint32_t kNever = 0xffffffffu;

  struct Unlimited {
    double position = 0.0;
    bool computed = false;  // from speed and time rather than read off the position item
  };
  Unlimited unlimitedPosition(const Edit::Object& object, double frame, TimeBase time) const;
  bool positionFollowsSpeed() const;
  bool speedIsConstant() const;
  bool loops() const;
  static TimeBase timeOf(const Render::ObjectContext& context);
  // Where a read of the context's span starts in the source, and at what speed, or
  // nothing when the span lies past the source.
  struct AudioRead {
    double startSeconds = 0.0;
    double speed = 1.0;
  };
  std::optional<AudioRead> audioRead(const Render::ObjectContext& context) const;

  SourceKind kind_;
  mutable std::mutex mutex_;
  SourceState state_;
  std::uint32_t generation_ = kNever;
};

}  // namespace Effect
