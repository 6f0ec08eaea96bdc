// Where a clip plays at a frame: speed, reverse, loop, cut start, speeds per section and
// the play range; a source at another frame rate never shows a frame still to come; and
// what dropping a file, changing the speed, splitting and trimming do to the object and
// its position. The source is a description handed over by a fake media side.
#include <gtest/gtest.h>

#include <memory>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/input/MediaAccess.h"
#include "effect/input/MovieLoad.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "media/ResourceBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/image/ConvertParameters.h"
#include "media/image/ImageBuffer.h"

namespace {

using Effect::EffectItemNumber;
using Effect::InputMovieEffect;
using Effect::ItemEvent;

// One ten-second movie at `rate` frames a second.
class FakeMedia final : public Effect::MediaAccess {
 public:
  std::uint32_t fileGeneration() override { return generation; }
  std::optional<Effect::MediaSourceInfo> probe(const std::wstring& path, Kind) override {
    if (path != L"/clips/ten.avi") return std::nullopt;
    Effect::MediaSourceInfo info;
    info.flags = Effect::MediaSourceInfo::Video | Effect::MediaSourceInfo::Audio;
    info.rate = rate;
    info.scale = 1;
    info.frameCount = 10 * rate;
    info.sampleRate = 48000;
    info.sampleCount = 480000;
    return info;
  }
  std::optional<Effect::MediaSceneInfo> scene(std::int32_t) override { return std::nullopt; }
  bool canRead(const std::wstring& path, Kind) override { return path == L"/clips/ten.avi"; }
  void preloadVideoImage(const std::wstring&, std::int32_t, double) override {}
  std::shared_ptr<Media::ImageBuffer> getVideoImage(const std::wstring&, std::int32_t, double) override {
    return nullptr;
  }
  void preloadResourceImage(const std::wstring&) override {}
  std::unique_ptr<Media::ResourceBuffer> getResourceImageCopy(const std::wstring&) override { return nullptr; }
  std::unique_ptr<Media::ResourceBuffer> toResource(const Media::ImageBuffer&,
                                                    const Media::ConvertParameters&) override {
    return nullptr;
  }
  std::shared_ptr<Media::AudioBuffer> readAudioRange(const std::wstring&, std::int32_t, std::int64_t, std::int32_t,
                                                     std::int32_t, double, double) override {
    return nullptr;
  }
  void preloadAudioRange(const std::wstring&, std::int32_t, std::int64_t, std::int32_t, std::int32_t, double,
                         double) override {}
  std::shared_ptr<Media::WaveformBuffer> getWaveform(const std::wstring&, std::int32_t) override { return nullptr; }
  SoundWait startSceneSound(std::int32_t, std::int32_t) override { return {}; }

  std::uint32_t generation = 1;
  std::uint32_t rate = 30;
};

class PlayPosition : public ::testing::Test {
 protected:
  PlayPosition() {
    Effect::MediaAccess::install(media_);
    scene_ = edit_.getScene(0);
    scene_->videoRate = 30;
    scene_->videoScale = 1;
    object_ = scene_->createEmptyObject(0, 100, 399);  // 300 frames
    movie_.item<Effect::EffectItemFile>(L"ファイル").setFilePath(L"/clips/ten.avi");
    EXPECT_TRUE(movie_.isPlayable());
  }
  ~PlayPosition() override { Effect::MediaAccess::uninstall(media_.get()); }

  EffectItemNumber& speed() { return movie_.item<EffectItemNumber>(L"再生速度"); }
  EffectItemNumber& position() { return movie_.item<EffectItemNumber>(L"再生位置"); }
  void loop(bool on) { movie_.item<Effect::EffectItemCheck>(L"ループ再生").setValue(on); }
  double at(std::int32_t frame) { return movie_.playPosition(*object_, frame, 0, {30, 1}); }
  ItemEvent event(ItemEvent::Type type, std::int32_t value = 0) {
    ItemEvent e;
    e.type = type;
    e.object = object_;
    e.scene = scene_.get();
    e.value = value;
    return e;
  }

  std::shared_ptr<FakeMedia> media_ = std::make_shared<FakeMedia>();
  Edit::EditService edit_;
  std::shared_ptr<Edit::Scene> scene_;
  std::shared_ptr<Edit::Object> object_;
  Effect::MovieLoad movie_;
};

TEST_F(PlayPosition, SpeedReverseLoopAndCutStart) {
  EXPECT_DOUBLE_EQ(at(130), 1.0);
  EXPECT_DOUBLE_EQ(at(450), 10.0);  // past the end without a loop: the last frame holds
  loop(true);
  EXPECT_NEAR(at(100 + 330), 1.0, 1e-9);

  loop(false);
  speed().setValue(0, 200);  // twice as fast: 150 frames play the whole file
  EXPECT_NEAR(at(100 + 149), 149.0 / 15.0, 1e-9);
  speed().setValue(0, 50);
  EXPECT_DOUBLE_EQ(at(130), 0.5);

  speed().setValue(0, -100);  // backwards from the end to the start
  EXPECT_DOUBLE_EQ(at(100), 10.0);
  EXPECT_DOUBLE_EQ(at(130), 9.0);
  EXPECT_DOUBLE_EQ(at(450), 0.0);
  loop(true);
  EXPECT_NEAR(at(100 + 330), 9.0, 1e-9);

  loop(false);
  speed().setValue(0, 100);
  position().setValue(0, 2.0);  // the object's start cut two seconds into the file
  EXPECT_DOUBLE_EQ(at(100), 2.0);
  EXPECT_DOUBLE_EQ(at(130), 3.0);
  speed().setValue(0, 0);  // a still
  EXPECT_DOUBLE_EQ(at(300), 2.0);
}

TEST_F(PlayPosition, SectionsPlayAtTheirOwnConstantSpeedAndTheRangeBounds) {
  object_->sections = {30};
  speed().setMovement(Effect::BuiltinMovements::linearSpeed(), 3);
  speed().setValue(0, 100);
  speed().setValue(1, 200);
  speed().setValue(2, 200);
  // One second at 100 %, then half a second at 200 %, though the movement would ramp.
  EXPECT_NEAR(at(100 + 45), 2.0, 1e-9);

  object_->sections.clear();
  speed().setMovement(Effect::BuiltinMovements::noMove(), 2);
  position().setMovement(Effect::BuiltinMovements::movieRange(), 2);
  position().setValue(0, 2.0);
  position().setValue(1, 4.0);
  EXPECT_DOUBLE_EQ(at(100), 2.0);
  EXPECT_DOUBLE_EQ(at(100 + 90), 4.0);  // held at the end of the range
  EXPECT_DOUBLE_EQ(movie_.playPositionOrEnd(*object_, 100 + 90, {30, 1}), 11.0);  // nothing to hear
  position().setValue(1, 12.0);  // beyond the file: the range ends with it
  EXPECT_DOUBLE_EQ(movie_.range().b, 10.0);
}

TEST_F(PlayPosition, ASourceOfAnotherRateShowsTheFrameAtOrBeforeTheTime) {
  media_->rate = 24;
  ++media_->generation;
  ASSERT_TRUE(movie_.isPlayable());
  // Frame 31 of the timeline is 1.0333 s: frame 24.8 of the source, which shows frame 24.
  EXPECT_DOUBLE_EQ(movie_.sourceFrameTime(at(131)), 1.0);
  // An exact frame time stays on its frame despite rounding.
  EXPECT_DOUBLE_EQ(movie_.sourceFrameTime(25.0 / 24.0), 25.0 / 24.0);
}

TEST_F(PlayPosition, DroppedFilesAndSpeedChangesFitTheObjectToTheSource) {
  object_->end = 199;
  ItemEvent dropped = event(ItemEvent::FileHanded);
  dropped.path = L"/clips/ten.avi";
  movie_.itemEvent(dropped);
  EXPECT_EQ(object_->end - object_->start + 1, 300);
  EXPECT_EQ(movie_.getMediaFlag(0), 1);

  speed().setValue(0, 50);
  ItemEvent slower = event(ItemEvent::ItemChanged);
  slower.item = &speed();
  movie_.itemEvent(slower);
  EXPECT_EQ(object_->end - object_->start + 1, 600);
  speed().setValue(0, 200);  // a shorter play leaves the object as long as it is
  movie_.itemEvent(slower);
  EXPECT_EQ(object_->end - object_->start + 1, 600);

  loop(true);  // a looping clip keeps its length when a file is dropped on it
  movie_.itemEvent(dropped);
  EXPECT_EQ(object_->end - object_->start + 1, 600);
}

TEST_F(PlayPosition, SplitsAndTrimsKeepThePictureUnderTheLeftEnd) {
  ItemEvent split = event(ItemEvent::Split, 60);  // the piece starts 2 s later
  movie_.itemEvent(split);
  EXPECT_DOUBLE_EQ(position().getValue(0), 2.0);

  object_->start = 115;  // the left edge dragged from 100 to 115 at 200 %
  speed().setValue(0, 200);
  ItemEvent trimmed = event(ItemEvent::LeftEdgeDragged, 100);
  movie_.itemEvent(trimmed);
  EXPECT_DOUBLE_EQ(position().getValue(0), 3.0);
  ItemEvent right = event(ItemEvent::RightEdgeDragged, 399);
  movie_.itemEvent(right);
  EXPECT_DOUBLE_EQ(position().getValue(0), 3.0);
}

TEST_F(PlayPosition, AFileThatNoReaderTakesIsClearedAndPlaysNothing) {
  movie_.item<Effect::EffectItemFile>(L"ファイル").setFilePath(L"/clips/broken.avi");
  ItemEvent changed = event(ItemEvent::ItemChanged);
  changed.item = movie_.findItem(L"ファイル");
  movie_.itemEvent(changed);
  EXPECT_TRUE(movie_.item<Effect::EffectItemFile>(L"ファイル").getFilePath()->empty());
  EXPECT_FALSE(movie_.isPlayable());
  EXPECT_EQ(movie_.getDisplayName(), movie_.Effect::EffectBase::getDisplayName());
}

}  // namespace
