// The project the editor opens when it starts: the one its command line names, or the
// empty project, whose scene the windows are then told of; and what the user sees when
// the named file is missing or cannot be read.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ProjectBench.h"
#include "dialog/MessageBox.h"
#include "edit/ProjectOpener.h"
#include "event/MainThreadPoster.h"
#include "event/Subscriptions.h"
#include "support/TempDirectory.h"
#include "system/Log.h"
#include "system/Text.h"

namespace {

// Boxes are recorded; posted ones are shown at once, as the main loop would show them.
class Screen final : public Dialog::MessagePresenter, public Event::MainThreadPoster {
 public:
  std::optional<bool> show(const std::wstring& text, const std::wstring&, Dialog::MessageKind) override {
    boxes.push_back(text);
    return true;
  }
  void post(std::function<void()> task) override { task(); }
  std::vector<std::wstring> boxes;
};

class ProjectOpenerTest : public ProjectTest::ProjectBench {
 protected:
  void SetUp() override {
    Dialog::setPresenter(screen);
    edit.events().setPoster(screen.get());
    listening.add(edit.events().projectReplaced, [this] { heard.push_back("project"); });
    listening.add(edit.events().sceneChanged, [this](std::int32_t id) { heard.push_back("scene " + std::to_string(id)); });
    System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
      if (type.level == System::Log::Info.level) log.push_back(std::string(place) + ": " + message);
    });
  }
  void TearDown() override {
    System::Log::resetHandler();
    edit.events().setPoster(nullptr);
    Dialog::setPresenter(nullptr);
  }

  std::wstring copyOf(const char* name) {
    const auto target = folder.path() / name;
    std::filesystem::copy_file(std::filesystem::path(SORVEL_TEST_DATA_DIR) / "project" / name, target);
    return target.wstring();
  }

  std::shared_ptr<Screen> screen = std::make_shared<Screen>();
  Edit::ProjectOpener opener{edit, *effects};
  Event::Subscriptions listening;
  std::vector<std::string> heard;
  std::vector<std::string> log;
  TestSupport::TempDirectory folder;
};

TEST_F(ProjectOpenerTest, WithoutAProjectTheWindowsAreToldOfTheEmptyProjectsScene) {
  opener.beginApplication(L"");
  EXPECT_EQ(heard, std::vector<std::string>{"scene 0"});
  EXPECT_TRUE(log.empty());
}

TEST_F(ProjectOpenerTest, TheProjectOfTheCommandLineOpensUnderItsOwnName) {
  const std::wstring path = copyOf("handwritten.svj2");
  opener.beginApplication(path);
  EXPECT_EQ(edit.project().file, path);
  EXPECT_EQ(edit.currentScene()->id, 3);
  EXPECT_EQ(heard, (std::vector<std::string>{"project", "scene 3"}));
  EXPECT_EQ(log, (std::vector<std::string>{
                     "Edit::EditService::loadProject: load project file : " + System::Text::toUtf8(path),
                     "Edit::EditService::updateScene: set current scnene [Second](3)"}));
  EXPECT_TRUE(screen->boxes.empty());
}

TEST_F(ProjectOpenerTest, WhatCannotBeOpenedIsShownAndTheWindowsStillHearOfAScene) {
  opener.beginApplication(folder.wide() + L"/missing.svj2");
  EXPECT_EQ(screen->boxes, std::vector<std::wstring>{L"指定のファイルが存在しません"});
  EXPECT_EQ(heard, std::vector<std::string>{"scene 0"});

  folder.writeFile("broken.svj2", "no project here");
  EXPECT_TRUE(opener.open(folder.wide() + L"/broken.svj2"));
  EXPECT_EQ(screen->boxes.back(), L"プロジェクトの読み込みに失敗しました");
  EXPECT_TRUE(edit.project().file.empty());

  folder.writeFile("partly.svj2", "[project]\r\n[0]\r\nlayer=0\r\nframe=7\r\n");
  EXPECT_TRUE(opener.open(folder.wide() + L"/partly.svj2"));
  EXPECT_EQ(screen->boxes.back(), L"一部のオブジェクトの読み込みに失敗しました");
  EXPECT_EQ(edit.project().file, folder.wide() + L"/partly.svj2");
}

}  // namespace
