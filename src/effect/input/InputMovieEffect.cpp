#include "effect/input/InputMovieEffect.h"

#include <algorithm>
#include <cmath>

#include "dialog/MessageBox.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/UndoRecorder.h"
#include "effect/EffectBase.h"
#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"

namespace Effect {

namespace {

// Below this a speed plays nothing worth fitting an object to.
constexpr double kSlowestFittedSpeed = 0.0999999;

bool hasMovement(const EffectItemNumber& item, const std::shared_ptr<const MovementBase>& movement) {
  return item.movementPointer() == movement;
}

}  // namespace

InputMovieEffect::InputMovieEffect(EffectBase& self, SourceKind kind) : kind_(kind) {
  positionItem_ = &self.item<EffectItemNumber>(L"再生位置");
  speedItem_ = &self.item<EffectItemNumber>(L"再生速度");
  fileItem_ = dynamic_cast<EffectItemFile*>(self.findItem(L"ファイル"));
  sceneItem_ = dynamic_cast<EffectItemScene*>(self.findItem(L"シーン"));
  loopItem_ = dynamic_cast<EffectItemCheck*>(self.findItem(L"ループ再生"));
  trackItem_ = dynamic_cast<EffectItemInteger*>(self.findItem(L"トラック"));
}

namespace {

InputMovieEffect::SourceState stateOfScene(const MediaSceneInfo& scene) {
  InputMovieEffect::SourceState state;
  state.duration = (scene.lastFrame + 1.0) * scene.videoScale / scene.videoRate;
  state.frameRate = static_cast<double>(scene.videoRate) / scene.videoScale;
  state.hasVideo = state.hasAudio = state.duration != 0.0;
  return state;
}

InputMovieEffect::SourceState stateOfFile(const MediaSourceInfo& info, InputMovieEffect::SourceKind kind) {
  using Kind = InputMovieEffect::SourceKind;
  InputMovieEffect::SourceState state;
  state.hasVideo = (info.flags & MediaSourceInfo::Video) != 0;
  state.hasAudio = (info.flags & MediaSourceInfo::Audio) != 0;
  state.yuv = state.hasVideo && (info.pixelFormat == 107 || info.pixelFormat == 13);
  if (info.flags & MediaSourceInfo::MultiTrack) {
    state.trackCount = static_cast<std::int32_t>(
        kind == Kind::Audio ? info.audioTrackCount : std::max(info.videoTrackCount, info.audioTrackCount));
  }
  if (kind == Kind::Audio) {
    state.duration = info.sampleRate ? static_cast<double>(info.sampleCount) / info.sampleRate : 0.0;
  } else {
    state.duration = info.rate ? static_cast<double>(info.frameCount) * info.scale / info.rate : 0.0;
    if (kind == Kind::Video && info.scale) state.frameRate = static_cast<double>(info.rate) / info.scale;
  }
  return state;
}

}  // namespace

InputMovieEffect::SourceState InputMovieEffect::state() const {
  std::lock_guard lock(mutex_);
  return state_;
}

void InputMovieEffect::forgetSource() {
  std::lock_guard lock(mutex_);
  generation_ = kNever;
}

bool InputMovieEffect::isPlayable() {
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (sceneItem_) {
    std::optional<MediaSceneInfo> scene;
    if (media && sceneItem_->value() > 0) scene = media->scene(sceneItem_->value());
    std::lock_guard lock(mutex_);
    state_ = scene && scene->videoRate > 0 && scene->videoScale > 0 ? stateOfScene(*scene) : SourceState{};
    if (media) generation_ = media->fileGeneration();
    return state_.duration != 0.0;
  }
  if (!media || !fileItem_) return false;
  const std::uint32_t generation = media->fileGeneration();
  {
    std::lock_guard lock(mutex_);
    if (generation == generation_) return kind_ == SourceKind::Audio ? state_.hasAudio : state_.hasVideo;
  }
  const std::wstring path = *fileItem_->getFilePath();
  std::optional<MediaSourceInfo> info;
  if (!path.empty()) {
    info = media->probe(path, kind_ == SourceKind::Audio ? MediaAccess::Kind::Audio : MediaAccess::Kind::Video);
    if (!info) warnUnreadableOnce("Effect::InputMovieEffect::isPlayable", path);
  }
  std::lock_guard lock(mutex_);
  generation_ = generation;
  state_ = info ? stateOfFile(*info, kind_) : SourceState{};
  return kind_ == SourceKind::Audio ? state_.hasAudio : state_.hasVideo;
}

InputMovieEffect::Range InputMovieEffect::range() const {
  const double duration = state().duration;
  if (!hasMovement(*positionItem_, BuiltinMovements::movieRange())) return {0.0, duration};
  const double a = std::clamp(positionItem_->getValue(0), 0.0, duration);
  const double key1 = positionItem_->getValue(1);
  const double b = key1 >= 0.0 && key1 <= duration ? key1 : duration;
  return {a, std::max(a, b)};
}

bool InputMovieEffect::positionFollowsSpeed() const {
  return hasMovement(*positionItem_, BuiltinMovements::noMove()) || hasMovement(*positionItem_, BuiltinMovements::movieRange());
}

bool InputMovieEffect::speedIsConstant() const { return hasMovement(*speedItem_, BuiltinMovements::noMove()); }

bool InputMovieEffect::loops() const { return loopItem_ && loopItem_->value(); }

InputMovieEffect::Unlimited InputMovieEffect::unlimitedPosition(const Edit::Object& object, double frame,
                                                                TimeBase time) const {
  const Range r = range();
  const bool reverse = speedItem_->getValue(0) < 0.0;
  Unlimited result;
  if (!positionFollowsSpeed()) {
    ItemContext items = ItemContext::at(object, static_cast<std::int32_t>(std::floor(frame)));
    items.exactFrame = frame;
    result.position = positionItem_->getValueAt(items);
  } else {
    result.computed = true;
    double p = positionItem_->getValue(0);
    if (speedIsConstant()) {
      p += (frame - object.start) * time.secondsPerFrame() * speedItem_->getValue(0) * 0.01;
    } else {
      // Each section plays at its own key's speed, whatever the movement would make of it.
      const std::int32_t holding = object.sectionIndex(static_cast<std::int32_t>(std::floor(frame)));
      for (std::int32_t section = 0; section < holding; ++section) {
        const std::int32_t length = object.sectionBegin(section + 1) - object.sectionBegin(section);
        p += length * time.secondsPerFrame() * speedItem_->getValue(section) * 0.01;
      }
      p += (frame - object.sectionBegin(holding)) * time.secondsPerFrame() * speedItem_->getValue(holding) * 0.01;
    }
    result.position = p;
  }
  const double span = r.b - r.a;
  if (loops() && span > 0.0) {
    double rest = std::fmod(result.position - r.a, span);
    if (reverse && result.computed) {
      if (rest > 0.0) rest -= span;
    } else if (rest < 0.0) {
      rest += span;
    }
    result.position = rest + r.a;
  }
  // Reverse play starts at the end of the range.
  if (reverse && result.computed) result.position += span;
  return result;
}

double InputMovieEffect::playPosition(const Edit::Object& object, double frame, std::uint32_t frameOffset,
                                      TimeBase time) const {
  const Unlimited unlimited = unlimitedPosition(object, frame + frameOffset, time);
  const Range r = range();
  const double upper = frameOffset > 0 && unlimited.computed ? state().duration : r.b;
  return std::max(r.a, std::min(upper, unlimited.position));
}

double InputMovieEffect::playPositionOrEnd(const Edit::Object& object, double frame, TimeBase time) const {
  const double p = unlimitedPosition(object, frame, time).position;
  const Range r = range();
  return p < r.a || p > r.b ? state().duration + 1.0 : p;
}

std::int32_t InputMovieEffect::track() const {
  const std::int32_t t = trackItem_ ? trackItem_->value() : 1;
  return t > 1 ? std::min(t - 1, state().trackCount) : 0;
}

std::wstring InputMovieEffect::sourceName() const {
  if (sceneItem_) return L"*" + std::to_wstring(sceneItem_->value());
  return fileItem_ ? *fileItem_->getFilePath() : std::wstring();
}

double InputMovieEffect::sourceFrameTime(double seconds) const {
  const double frameRate = state().frameRate;
  if (frameRate <= 0.0) return seconds;
  // A hair of tolerance keeps an exact frame time, which doubles may put just below its
  // frame, on that frame.
  const double frame = std::floor(seconds * frameRate + 1e-6);
  return std::max(0.0, frame) / frameRate;
}

bool InputMovieEffect::movieItemEvent(ItemEvent& event) {
  switch (event.type) {
    case ItemEvent::ItemChanged:
      if (event.item == speedItem_) {
        fitLength(event, false);
      } else if (trackItem_ && event.item == trackItem_) {
        forgetSource();
        isPlayable();
      } else {
        event.redraw = true;
        forgetSource();
        if (isPlayable()) {
          fitLength(event, true);
        } else if (fileItem_ && event.item == fileItem_ && !fileItem_->getFilePath()->empty()) {
          fileItem_->setFilePath(L"");
          Dialog::showError(L"このファイルには対応していません");
        }
      }
      return true;
    case ItemEvent::FileHanded:
      if (!fileItem_) return false;
      fileItem_->setFilePath(event.path);
      forgetSource();
      fitLength(event, true);
      return true;
    case ItemEvent::Split:
    case ItemEvent::LeftEdgeDragged:
    case ItemEvent::RightEdgeDragged:
      followResize(event);
      return true;
    case ItemEvent::AudioTrackChosen:
      if (trackItem_) trackItem_->setValue(event.value + 1);
      return true;
    case ItemEvent::OpenFileMenu:
      return false;
  }
  return false;
}

void InputMovieEffect::fitLength(ItemEvent& event, bool wholeSource) {
  if (!event.object || !event.scene) return;
  Edit::Object& object = *event.object;
  if (!positionFollowsSpeed() || !speedIsConstant() || loops() || !object.sections.empty()) return;
  if (!isPlayable()) return;
  Range r = range();
  if (wholeSource) {
    r = {0.0, state().duration};
    positionItem_->setValue(0, r.a);
    if (hasMovement(*positionItem_, BuiltinMovements::movieRange())) positionItem_->setValue(1, r.b);
  }
  const double speed = speedItem_->getValue(0) * 0.01;
  if (std::fabs(speed) <= kSlowestFittedSpeed) return;
  const TimeBase time{event.scene->videoRate, event.scene->videoScale};
  const auto frames = std::max<std::int32_t>(
      1, static_cast<std::int32_t>(std::llround(std::fabs((r.b - r.a) / speed) / time.secondsPerFrame())));
  const std::int32_t length = object.end - object.start + 1;
  if (!wholeSource && frames < length) return;
  if (event.undo && event.type != ItemEvent::LeftEdgeDragged && event.type != ItemEvent::RightEdgeDragged) {
    event.undo->addObjectUpdate(event.object);
  }
  event.scene->setObjectLength(object, frames, false);
  event.redraw = true;
}

void InputMovieEffect::followResize(const ItemEvent& event) {
  if (!event.object || !event.scene) return;
  const Edit::Object& object = *event.object;
  if (!positionFollowsSpeed() || !speedIsConstant() || loops() || !object.sections.empty()) return;
  // How many frames of the source's old start the object's left end moved past.
  std::int32_t moved = 0;
  if (event.type == ItemEvent::Split) moved = event.value;
  if (event.type == ItemEvent::LeftEdgeDragged) moved = object.start - event.value;
  if (moved == 0) return;
  const TimeBase time{event.scene->videoRate, event.scene->videoScale};
  const double shift = moved * time.secondsPerFrame() * speedItem_->getValue(0) * 0.01;
  if (shift >= 0.0) {
    positionItem_->setValue(0, positionItem_->getValue(0) + shift);
  } else if (hasMovement(*positionItem_, BuiltinMovements::movieRange())) {
    // Reverse play runs down from the end of the range, so the end moves instead.
    positionItem_->setValue(1, positionItem_->getValue(1) + shift);
  }
}

}  // namespace Effect
