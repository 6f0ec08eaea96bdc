#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "edit/SceneReader.h"
#include "edit/UndoRecorder.h"

namespace {

using Edit::EditSection;
using Edit::EditService;
using Request = Edit::EditSection::Request;

bool lockIsFree(EditService& service) {
  if (!service.lock().try_lock()) return false;
  service.lock().unlock();
  return true;
}

TEST(EditSection, StopsPlayerThenHoldsLockExclusively) {
  EditService service;
  bool freeWhenStopped = false;
  service.setPlayerStop([&] { freeWhenStopped = lockIsFree(service); });
  {
    const EditSection section(service);
    EXPECT_TRUE(freeWhenStopped);
    EXPECT_EQ(section.scene(), service.currentScene());
    EXPECT_FALSE(service.lock().try_lock_shared());
  }
  {
    const Edit::SceneReader reader(service);
    EXPECT_EQ(reader.scene(), service.currentScene());
    EXPECT_FALSE(service.lock().try_lock());
  }
  EXPECT_TRUE(lockIsFree(service));
}

TEST(EditSection, CloseUpdatesSceneThenTellsListenerWithLockReleased) {
  EditService service;
  const auto scene = service.getScene(0);
  const auto focus = scene->createEmptyObject(0, 0, 9);
  scene->update();
  scene->focusObject = focus;
  int calls = 0;
  service.setSectionListener([&](const EditSection& section) {
    ++calls;
    EXPECT_TRUE(lockIsFree(service));
    EXPECT_TRUE(section.requested(Request::Timeline));
    EXPECT_TRUE(section.requested(Request::Focus));  // the focus object was removed
    EXPECT_EQ(section.scene()->lastUsedFrame(), 49);
  });
  {
    EditSection section(service);
    section.scene()->createEmptyObject(2, 0, 49);
    scene->addLayers(0).needsCompaction = true;
    focus->layer = -1;
    section.request(Request::Update);
    section.request(Request::Timeline);
  }
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(scene->focusObject, nullptr);
}

// Only whether a record was opened and committed matters here.
class IgnoringRecorder final : public Edit::UndoRecorder {
 public:
  void addObjectUpdate(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectCreate(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectDelete(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectSection(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectGroup(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectEffect(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectFlag(const std::shared_ptr<Edit::Object>&) override {}
  void addObjectLayerRange(const std::shared_ptr<Edit::Object>&) override {}
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>&) override {}
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>&) override {}
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>&) override {}
};

TEST(EditSection, SectionLeftByExceptionStillClosesAndItsOwnFailureStaysQuiet) {
  EditService service;
  IgnoringRecorder recorder;
  int calls = 0;
  int commits = 0;
  service.setUndoHooks({&recorder, [] {}, [&] { ++commits; }});
  service.setSectionListener([&](const EditSection&) {
    ++calls;
    throw std::logic_error("listener failed");
  });
  EXPECT_THROW(
      {
        EditSection section(service);
        section.recordUndo();
        section.scene()->createEmptyObject(0, 0, 9);
        section.request(Request::Update);
        throw std::runtime_error("edit failed");
      },
      std::runtime_error);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(commits, 1);
  EXPECT_EQ(service.currentScene()->lastUsedFrame(), 9);
  EXPECT_TRUE(lockIsFree(service));
}

}  // namespace
