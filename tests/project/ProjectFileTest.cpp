// The project file: the writer's canonical form, reading hand-made files into it, the
// safety rules of saving and loading, and the rewriting of media paths.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemFile.h"
#include "event/Subscriptions.h"
#include "support/TempDirectory.h"
#include "system/File.h"
#include "system/IniFile.h"

namespace {

using Edit::ProjectFile::LoadResult;

std::string readData(const std::string& name) {
  std::ifstream file(std::string(SORVEL_TEST_DATA_DIR) + "/project/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string crlf(std::string_view lines) {
  std::string text;
  for (const char c : lines) {
    if (c == '\n') text += '\r';
    text += c;
  }
  return text;
}

class ProjectFileTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  // Reads `text` into the edit service's project as a load does.
  LoadResult readText(const std::string& text) {
    LoadResult result;
    System::IniFile ini;
    ini.loadMemory(text);
    edit.replaceProject([&](Edit::Project& project) { Edit::ProjectFile::read(project, ini, {}, *effects, result); });
    return result;
  }

  static Effect::EffectService* effects;
  Edit::EditService edit;
  TestSupport::TempDirectory folder;
};

Effect::EffectService* ProjectFileTest::effects = nullptr;

TEST_F(ProjectFileTest, EmptyProjectWritesOnlyTheProjectAndItsScene) {
  const std::string text = Edit::ProjectFile::write(edit.project());
  EXPECT_EQ(text.rfind("[project]\r\nversion=2001801\r\nfile=\r\ndisplay.scene=0\r\n[scene.0]\r\nscene=0\r\nname=Root\r\n", 0),
            0u);
  EXPECT_EQ(text.find("[layer."), std::string::npos);
  EXPECT_EQ(text.find("[0]"), std::string::npos);
  EXPECT_NE(text.find("display.camera=\r\ndisplay.grid.x=16,-16\r\n"), std::string::npos);
}

TEST_F(ProjectFileTest, HandWrittenProjectComesOutInCanonicalForm) {
  const LoadResult result = readText(readData("handwritten.svj2"));
  EXPECT_EQ(result.outcome, LoadResult::Outcome::Loaded);
  EXPECT_EQ(result.storedPath, L"/projects/old/show.svj2");
  EXPECT_TRUE(result.problems.empty());
  edit.project().file = L"/projects/new/show.svj2";
  EXPECT_EQ(Edit::ProjectFile::write(edit.project()), readData("handwritten.expected.svj2"));

  // The model as the file describes it.
  const auto second = edit.project().findScene(3);
  ASSERT_TRUE(second);
  EXPECT_EQ(edit.currentScene(), second);
  EXPECT_EQ(second->displayZoom(), 10000);  // 123 is no zoom of the timeline
  ASSERT_TRUE(second->focusObject);
  const auto& shape = edit.project().findScene(0)->getLayer(3).objects.at(0);
  EXPECT_EQ(shape->sections, (std::vector<std::int32_t>{10, 25}));
  EXPECT_TRUE(shape->group);
  EXPECT_EQ(shape->group, second->focusObject->group);  // one group number, one group, across scenes
  EXPECT_TRUE(edit.project().findScene(0)->getLayer(1).objects.at(0)->control);
  EXPECT_EQ(Edit::EffectManager::getObjectType(*shape), 1);
}

TEST_F(ProjectFileTest, WrittenProjectReadsAndWritesBackByteForByte) {
  const std::string canonical = readData("handwritten.expected.svj2");
  edit.project().file = readText(canonical).storedPath;
  EXPECT_EQ(Edit::ProjectFile::write(edit.project()), canonical);
}

TEST_F(ProjectFileTest, SaveAndLoadThroughTheFile) {
  readText(readData("handwritten.svj2"));
  const std::wstring path = folder.wide() + L"/show.svj2";
  Edit::ProjectFile::saveAs(edit.project(), path);
  const std::string saved = System::File::readAll(path);
  EXPECT_EQ(saved.find("file=" + folder.path().string() + "/show.svj2\r\n"), 28u);

  Edit::EditService other;
  const LoadResult result = Edit::ProjectFile::load(other, *effects, path);
  EXPECT_EQ(result.outcome, LoadResult::Outcome::Loaded);
  EXPECT_EQ(other.project().file, path);
  EXPECT_EQ(Edit::ProjectFile::write(other.project()), saved);
}

TEST_F(ProjectFileTest, AFileThatCannotBeReadIsNeverTheProjectsFile) {
  const std::wstring path = folder.path().wstring() + L"/broken.svj2";
  folder.writeFile("broken.svj2", crlf("[project]\n[scene.0]\nscene=0\nvideo.width=wide\n"));
  edit.project().file = L"/somewhere/else.svj2";
  const LoadResult result = Edit::ProjectFile::load(edit, *effects, path);
  EXPECT_EQ(result.outcome, LoadResult::Outcome::Unreadable);
  ASSERT_EQ(result.problems.size(), 1u);
  EXPECT_NE(result.problems[0].find("video.width"), std::string::npos);
  EXPECT_EQ(edit.project().file, L"");
  EXPECT_EQ(edit.project().scenes().size(), 1u);

  EXPECT_EQ(Edit::ProjectFile::load(edit, *effects, folder.wide() + L"/missing.svj2").outcome,
            LoadResult::Outcome::Unreadable);
  folder.writeFile("noproject.svj2", "\x01\x02\xff garbage without sections");
  EXPECT_EQ(Edit::ProjectFile::load(edit, *effects, folder.wide() + L"/noproject.svj2").outcome,
            LoadResult::Outcome::Unreadable);
}

// What the user may give in place of a project file, and what each load says of it.
TEST_F(ProjectFileTest, LoadSaysWhyAFileIsNotAProject) {
  const auto problem = [&](const std::wstring& path) {
    const LoadResult result = Edit::ProjectFile::load(edit, *effects, path);
    EXPECT_EQ(result.outcome, LoadResult::Outcome::Unreadable);
    return result.problems.empty() ? std::string() : result.problems.back();
  };
  EXPECT_EQ(problem(folder.wide()), "this is a folder, not a project file");
  EXPECT_EQ(problem(folder.wide() + L"/missing.svj2"), "the file does not exist");
  EXPECT_NE(problem(L"/dev/zero").find("not a regular file."), std::string::npos);
  folder.writeFile("wide.svj2", std::string("\xff\xfe[\0p\0", 6));
  EXPECT_NE(problem(folder.wide() + L"/wide.svj2").find("UTF-16"), std::string::npos);
  const std::wstring sound = folder.writeFile("sound.svj2", readData("handwritten.svj2")).wstring();
  System::File::setReadAllLimit(16);
  EXPECT_NE(problem(sound).find("file is larger than the read limit."), std::string::npos);
  System::File::setReadAllLimit(System::File::kDefaultReadAllLimit);

  folder.writeFile("marked.svj2", "\xef\xbb\xbf" + readData("handwritten.svj2"));
  const LoadResult marked = Edit::ProjectFile::load(edit, *effects, folder.wide() + L"/marked.svj2");
  EXPECT_EQ(marked.outcome, LoadResult::Outcome::Loaded);
  EXPECT_EQ(marked.warnings, std::vector<std::string>{"the file starts with a UTF-8 byte order mark, which was skipped"});
  EXPECT_EQ(edit.project().scenes().size(), 2u);
}

// The windows hear of a load through the edit service's own event service: the project
// was replaced, and which scene it shows.
TEST_F(ProjectFileTest, LoadTellsTheWindowsOfTheNewProjectAndItsScene) {
  std::vector<std::string> heard;
  Event::Subscriptions listening;
  listening.add(edit.events().projectReplaced, [&] { heard.push_back("project"); });
  listening.add(edit.events().sceneChanged, [&](std::int32_t id) { heard.push_back("scene " + std::to_string(id)); });
  const std::wstring path = folder.writeFile("show.svj2", readData("handwritten.svj2")).wstring();
  Edit::ProjectFile::load(edit, *effects, path);
  EXPECT_EQ(heard, (std::vector<std::string>{"project", "scene 3"}));
}

TEST_F(ProjectFileTest, PluginDataAndNewerVersionsAreKept) {
  const std::string text = crlf(
      "[project]\nversion=2999999\n[plugin.0]\nplugin.name=Not Installed\nz=last\na=first\n"
      "[plugin.1]\nplugin.name=Other\nkey=value\n");
  const LoadResult result = readText(text);
  // A newer file loses nothing by being read: a warning, not a failure.
  EXPECT_EQ(result.outcome, LoadResult::Outcome::Loaded);
  EXPECT_TRUE(result.problems.empty());
  ASSERT_EQ(result.warnings.size(), 1u);
  EXPECT_NE(result.warnings[0].find("2999999"), std::string::npos);
  EXPECT_NE(result.warnings[0].find("2001801"), std::string::npos);
  const std::string written = Edit::ProjectFile::write(edit.project());
  EXPECT_NE(written.find(crlf("[plugin.0]\nplugin.name=Not Installed\nz=last\na=first\n[plugin.1]\nplugin.name=Other\n"
                              "key=value\n")),
            std::string::npos);
}

TEST_F(ProjectFileTest, NamedRowsAreKeptBeyondTheLastObject) {
  const std::string text = crlf(
      "[project]\n[scene.0]\nscene=0\nvideo.width=640\nvideo.height=480\nvideo.rate=25\nvideo.scale=1\n"
      "[layer.0]\nlayer=40\nname=Later\n");
  readText(text);
  EXPECT_NE(Edit::ProjectFile::write(edit.project()).find(crlf("[layer.0]\nlayer=40\nname=Later\n")),
            std::string::npos);
}

TEST_F(ProjectFileTest, MovedProjectLooksForMissingMediaBelowItsNewFolder) {
  auto object = edit.project().findScene(0)->createEmptyObject(0, 0, 10);
  Edit::EffectManager(*object, *effects).addEffect(L"動画ファイル");
  auto& file = object->effects[0]->item<Effect::EffectItemFile>(L"ファイル");
  file.setFilePath(L"C:\\a\\m\\x.mp4");
  auto second = edit.project().findScene(0)->createEmptyObject(1, 0, 10);
  Edit::EffectManager(*second, *effects).addEffect(L"画像ファイル");
  const std::wstring existing = folder.path().wstring() + L"/here.png";
  folder.writeFile("here.png", "png");
  second->effects[0]->item<Effect::EffectItemFile>(L"ファイル").setFilePath(existing);

  int asked = 0;
  EXPECT_EQ(Edit::ProjectFile::updateEffectItemFilePath(edit.project(), L"C:\\a\\p.svj2", L"D:/b/p.svj2",
                                                        [&] { return ++asked, false; }),
            0);
  EXPECT_EQ(file.getFilePath(), std::wstring(L"C:/a/m/x.mp4"));
  EXPECT_EQ(Edit::ProjectFile::updateEffectItemFilePath(edit.project(), L"c:\\A\\p.svj2", L"D:/b/p.svj2",
                                                        [&] { return ++asked, true; }),
            1);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(file.getFilePath(), std::wstring(L"D:/b/m/x.mp4"));
  EXPECT_EQ(second->effects[0]->item<Effect::EffectItemFile>(L"ファイル").getFilePath(), existing);
  // The same place, written another way: nothing has moved.
  EXPECT_EQ(Edit::ProjectFile::updateEffectItemFilePath(edit.project(), L"D:/B/p.svj2", L"d:/b/P.svj2",
                                                        [] { return true; }),
            0);
}

}  // namespace
