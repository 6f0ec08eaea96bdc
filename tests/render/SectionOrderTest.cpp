// The order in which the walk reaches objects and the chains it builds, over the
// recording back end: inputs made here write down what they were handed and draw
// nothing; the controls are the program's own group and camera controls.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/output/CameraControl.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/output/GroupControl.h"
#include "effect/output/TimeControl.h"
#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace {

using Effect::EffectMedia;
using Effect::EffectType;
using Render::ObjectContext;
using Render::RenderVideoWorker;

std::mutex logMutex;
std::vector<std::string> drawLog;

// Writes down its layer and the layers of its chain ("2:2,0") and draws nothing; with
// `details` also the frame it was handed and the translation of the group's world.
class Mark final : public Effect::EffectInstance<Mark> {
 public:
  static const Effect::EffectInfo kInfo;
  Mark() : EffectInstance(kInfo) {}
  std::unique_ptr<Media::ResourceBuffer> inputVideo(ObjectContext& context) override {
    std::string entry = std::to_string(context.layer) + ":";
    for (const auto& member : *context.chain) entry += std::to_string(member->layer) + (member == context.chain->back() ? "" : ",");
    if (details) {
      entry += " @" + std::to_string(context.frame);
      const std::array<float, 16>* world = context.group ? context.group->effects.front()->storedWorld() : nullptr;
      if (world) entry += " shift " + std::to_string(static_cast<int>((*world)[12])) + "," + std::to_string(static_cast<int>((*world)[13]));
    }
    std::lock_guard lock(logMutex);
    drawLog.push_back(entry);
    return nullptr;
  }
  static inline bool details = false;
};
const Effect::EffectInfo Mark::kInfo{L"test mark", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", {}};

// Places the object at depth `z`, as a camera sorts it.
class Place final : public Effect::EffectInstance<Place> {
 public:
  static const Effect::EffectInfo kInfo;
  Place() : EffectInstance(kInfo) {}
  void getOutputView(ObjectContext&, Render::ObjectView& view) override {
    view.z = z;
    view.alpha = alpha;
  }
  float z = 0.0f;
  float alpha = 1.0f;
};
const Effect::EffectInfo Place::kInfo{L"test place", EffectType::Output, EffectMedia::Video, EffectMedia::Video, L"", {}};

class Nothing final : public Effect::EffectInstance<Nothing> {
 public:
  static const Effect::EffectInfo kInfo;
  Nothing() : EffectInstance(kInfo) {}
};
const Effect::EffectInfo Nothing::kInfo{L"test filter", EffectType::Filter, EffectMedia::Video, EffectMedia::Video, L"", {}};

class SectionOrder : public ::testing::Test {
 protected:
  SectionOrder() {
    drawLog.clear();
    Mark::details = false;
    scene_ = edit_.currentScene();
    scene_->width = 64;
    scene_->height = 64;
    Edit::Object::setControlRangeReader([this](const Edit::Object& object) {
      return ranges_.contains(&object) ? ranges_.at(&object) : 0;
    });
  }
  ~SectionOrder() override {
    worker_.stop();
    Edit::Object::setControlRangeReader(nullptr);
  }

  Edit::Object& marked(std::int32_t layer, float z = 0.0f, float alpha = 1.0f) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 99);
    object.effects.push_back(std::make_shared<Mark>());
    auto place = std::make_shared<Place>();
    place->z = z;
    place->alpha = alpha;
    object.effects.push_back(place);
    return object;
  }
  template <class Control>
  Edit::Object& control(std::int32_t layer, std::int32_t range, bool withFilter = false) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 99);
    object.control = true;
    object.effects.push_back(std::make_shared<Control>());
    if (withFilter) object.effects.push_back(std::make_shared<Nothing>());
    ranges_[&object] = range;
    return object;
  }
  std::vector<std::string> walk(std::int32_t frame = 0) {
    scene_->update();
    drawLog.clear();
    worker_.requestRenderingFrame(RenderVideoWorker::Single, frame, [](std::int32_t, Media::RenderBuffer&, Anchor::AnchorList&) {});
    worker_.waitRendering();
    std::lock_guard lock(logMutex);
    return drawLog;
  }

  Media::GraphicsDevice device_{[] { return std::make_unique<MediaTest::FakeBackend>(); }, Media::DeviceSettings{}};
  Edit::EditService edit_;
  RenderVideoWorker worker_{device_, edit_, Render::VideoWorkerSettings{1 << 20, {}, nullptr}};
  std::shared_ptr<Edit::Scene> scene_;
  std::map<const Edit::Object*, std::int32_t> ranges_;
};

using Log = std::vector<std::string>;

TEST_F(SectionOrder, GroupsReachTheirRangeAndNestOutward) {
  control<Effect::GroupControl>(0, 0, true);  // every layer below
  control<Effect::GroupControl>(1, 2, true);  // layers 2 and 3
  marked(2);
  marked(3);
  marked(4);
  // Inside both groups an object's chain holds the inner group, then the outer one.
  EXPECT_EQ(walk(), (Log{"2:2,1,0", "3:3,1,0", "4:4,0"}));

  // A group without filters adds nothing to the chain.
  scene_->objectAt(1, 0)->effects.pop_back();
  EXPECT_EQ(walk(), (Log{"2:2,0", "3:3,0", "4:4,0"}));
}

TEST_F(SectionOrder, ACameraDrawsItsObjectsNearFirstThenTransparentOnesThenTheUnsorted) {
  control<Effect::CameraControl>(0, 4);
  marked(1, 100.0f);         // far
  marked(2, -100.0f);        // near
  marked(3, -200.0f, 0.5f);  // nearest, but transparent
  marked(4, 0.0f).camera = false;  // not under the camera's order: drawn after it
  marked(5, 50.0f);          // past the camera's range
  EXPECT_EQ(walk(), (Log{"2:2", "1:1", "3:3", "4:4", "5:5"}));
}

TEST_F(SectionOrder, ASecondCameraEndsTheFirstOnesRange) {
  control<Effect::CameraControl>(0, 0);
  marked(1, 100.0f);
  control<Effect::CameraControl>(2, 0);
  marked(3, -100.0f);  // nearer, but under the second camera
  EXPECT_EQ(walk(), (Log{"1:1", "3:3"}));
}

TEST_F(SectionOrder, TimeControlShowsItsRangeAtAnotherMomentUntilTheRangeEnds) {
  Mark::details = true;
  auto& timing = static_cast<Effect::TimeControl&>(*control<Effect::TimeControl>(0, 1).effects.front());
  timing.initialize();  // the curve runs 0 to 100 over the object: frame for frame
  marked(1);
  marked(2);
  auto& repeat = timing.item<Effect::EffectItemInteger>(L"繰り返し");
  auto& step = timing.item<Effect::EffectItemInteger>(L"コマ落ち");
  repeat.setValue(2);
  EXPECT_EQ(walk(10), (Log{"1:1 @20", "2:2 @10"}));  // twice as fast, and only its range
  EXPECT_EQ(walk(60), (Log{"1:1 @20", "2:2 @60"}));  // wraps at the object's end
  step.setValue(3);
  EXPECT_EQ(walk(10), (Log{"1:1 @18", "2:2 @10"}));  // three frames show one moment
  EXPECT_EQ(walk(11), (Log{"1:1 @18", "2:2 @11"}));
}

TEST_F(SectionOrder, GroupsInsideGroupsMultiplyTheirMatrices) {
  Mark::details = true;
  auto& outer = control<Effect::GroupControl>(0, 0);
  auto& inner = control<Effect::GroupControl>(1, 0);
  marked(2);
  outer.effects.front()->item<Effect::EffectItemNumber>(L"X").setValue(0, 100);
  inner.effects.front()->item<Effect::EffectItemNumber>(L"Y").setValue(0, 30);
  inner.effects.front()->item<Effect::EffectItemNumber>(L"Z軸回転").setValue(0, 90);
  // The inner group's own shift is turned by nothing outside it, then the outer shift is added.
  EXPECT_EQ(walk(), (Log{"2:2 @0 shift 100,30"}));
  auto& group = static_cast<Effect::GroupControl&>(*inner.effects.front());
  EXPECT_FALSE(group.plainShift());
  const std::array<float, 16> innerProjection = *group.storedViewProjection();
  const std::array<float, 16> outerProjection = *outer.effects.front()->storedViewProjection();
  EXPECT_EQ(innerProjection, outerProjection);  // the outermost projection stays
}

}  // namespace
