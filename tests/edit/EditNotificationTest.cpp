// What the window contents hear through the event service: the lists that an edit
// section's close fires for its requests, and those that a replaced project fires.
// The tests listen where a window does, on the lists of the edit service's own event
// service, and install no section listener of their own.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/Scene.h"
#include "event/Subscriptions.h"

namespace {

using Edit::EditSection;
using Request = Edit::EditSection::Request;

class EditNotificationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Event::EventService& events = edit.events();
    const auto object = [](const std::shared_ptr<Edit::Object>& o) { return o ? std::to_string(o->start) : "null"; };
    listening.add(events.objectChanged, [=, this](const std::shared_ptr<Edit::Object>& o) {
      heard.push_back("object " + object(o));
    });
    listening.add(events.timelineChanged, [this] { heard.push_back("timeline"); });
    listening.add(events.sceneChanged, [this](std::int32_t id) { heard.push_back("scene " + std::to_string(id)); });
    listening.add(events.focusChanged, [=, this](const std::shared_ptr<Edit::Object>& o) {
      heard.push_back("focus " + object(o));
    });
    listening.add(events.frameChanged, [this](std::int32_t frame) { heard.push_back("frame " + std::to_string(frame)); });
    listening.add(events.projectReplaced, [this] { heard.push_back("project"); });
  }

  std::vector<std::string> take() { return std::exchange(heard, {}); }

  Edit::EditService edit;
  Event::Subscriptions listening;
  std::vector<std::string> heard;
};

TEST_F(EditNotificationTest, SectionFiresWhatItAskedForInTheOrderOfTheClose) {
  {
    EditSection section(edit);
    const auto object = section.scene()->createEmptyObject(0, 5, 9);
    section.scene()->focusObject = object;
    section.scene()->cursorFrame = 7;
    section.setChangedObject(object);
    section.setSceneId(3);
    for (Request r : {Request::Frame, Request::Focus, Request::Scene, Request::Timeline, Request::Object}) {
      section.request(r);
    }
  }
  EXPECT_EQ(take(), (std::vector<std::string>{"object 5", "timeline", "scene 3", "focus 5", "frame 7"}));

  {
    EditSection section(edit);
    section.request(Request::Timeline);
    section.request(Request::Time);  // for the settings windows, which have no list
  }
  EXPECT_EQ(take(), (std::vector<std::string>{"timeline"}));

  // A focus object taken off its row is cleared by the close, which says so.
  {
    EditSection section(edit);
    section.scene()->focusObject->layer = -1;
    section.scene()->addLayers(0).needsCompaction = true;
    section.request(Request::Update);
  }
  EXPECT_EQ(take(), (std::vector<std::string>{"focus null"}));
}

TEST_F(EditNotificationTest, ASectionLeftByAnExceptionStillTellsTheWindows) {
  EXPECT_THROW(
      {
        EditSection section(edit);
        section.request(Request::Timeline);
        throw std::runtime_error("command failed half way");
      },
      std::runtime_error);
  EXPECT_EQ(take(), (std::vector<std::string>{"timeline"}));
}

TEST_F(EditNotificationTest, AReplacedProjectIsAnnouncedWithItsSceneAfterTheLock) {
  edit.newProject();
  EXPECT_EQ(take(), (std::vector<std::string>{"project"}));

  bool lockFree = false;
  listening.add(edit.events().projectReplaced, [&] {
    lockFree = edit.lock().try_lock();
    if (lockFree) edit.lock().unlock();
  });
  edit.replaceProject([](Edit::Project& project) {
    project.addScene(4, {});
    project.currentScene = 4;
  });
  EXPECT_TRUE(lockFree);
  EXPECT_EQ(take(), (std::vector<std::string>{"project", "scene 4"}));

  // A load that fails leaves an empty project, and that is announced too.
  EXPECT_THROW(edit.replaceProject([](Edit::Project&) { throw std::runtime_error("unreadable"); }),
               std::runtime_error);
  EXPECT_EQ(take(), (std::vector<std::string>{"project", "scene 0"}));
}

TEST_F(EditNotificationTest, ACurrentSceneThatDoesNotExistGivesWayToSceneZero) {
  edit.replaceProject([](Edit::Project& project) {
    project.addScene(2, {});
    project.currentScene = 9;
  });
  EXPECT_EQ(edit.project().currentScene, 0);
  EXPECT_EQ(edit.currentScene(), edit.project().findScene(0));
  EXPECT_EQ(take(), (std::vector<std::string>{"project", "scene 0"}));
}

}  // namespace
