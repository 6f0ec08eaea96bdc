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
#include "effect/output/GroupControl.h"
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

// Writes down its layer and the layers of its chain ("2:2,0") and draws nothing.
class Mark final : public Effect::EffectInstance<Mark> {
 public:
  static const Effect::EffectInfo kInfo;
  Mark() : EffectInstance(kInfo) {}
  std::unique_ptr<Media::ResourceBuffer> inputVideo(ObjectContext& context) override {
    std::string entry = std::to_string(context.layer) + ":";
    for (const auto& member : *context.chain) entry += std::to_string(member->layer) + (member == context.chain->back() ? "" : ",");
    std::lock_guard lock(logMutex);
    drawLog.push_back(entry);
    return nullptr;
  }
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
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 9);
    object.effects.push_back(std::make_shared<Mark>());
    auto place = std::make_shared<Place>();
    place->z = z;
    place->alpha = alpha;
    object.effects.push_back(place);
    return object;
  }
  template <class Control>
  Edit::Object& control(std::int32_t layer, std::int32_t range, bool withFilter = false) {
    Edit::Object& object = *scene_->createEmptyObject(layer, 0, 9);
    object.control = true;
    object.effects.push_back(std::make_shared<Control>());
    if (withFilter) object.effects.push_back(std::make_shared<Nothing>());
    ranges_[&object] = range;
    return object;
  }
  std::vector<std::string> walk() {
    scene_->update();
    drawLog.clear();
    worker_.requestRenderingFrame(RenderVideoWorker::Single, 0, [](std::int32_t, Media::RenderBuffer&, Anchor::AnchorList&) {});
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

}  // namespace
