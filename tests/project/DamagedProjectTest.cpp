// Damaged project files. Whatever the bytes, a load comes to an end without taking the
// program down: a broken object is left out and reported, anything else leaves an empty
// project that has no file, so that a plain save cannot overwrite the damaged file.
// tests/data/project/damaged/ keeps inputs that once broke the reader, most of them
// found by the fuzz target in fuzz/; the smaller cases are written out here.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "edit/EditService.h"
#include "edit/Group.h"
#include "edit/Object.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "support/TempDirectory.h"
#include "system/File.h"
#include "system/IniFile.h"

namespace {

using Edit::ProjectFile::LoadResult;
using Outcome = LoadResult::Outcome;

const std::filesystem::path kDamagedFolder = std::filesystem::path(SORVEL_TEST_DATA_DIR) / "project" / "damaged";

// What loading each file of the damaged folder must come to. A file that is added to the
// folder needs its line here; DamagedProjectFiles.EveryFileHasAnExpectation says so.
const std::map<std::string, Outcome> kDamagedFiles = {
    // Movement flags of -4: read as a signed number, they were kept as 4294967292 and
    // written that way, which the next load refused as beyond 32 bits, so the item lost
    // its movement on the second round.
    {"negative-movement-flags.svj2", Outcome::Loaded},
    // An object from frame -2147483648 to 2147483647 with a point at 0: the point's
    // offset from the start does not fit in 32 bits, and computing it was a signed
    // overflow (-fsanitize=undefined). A plain build wrapped around and happened to refuse
    // the point, so only a sanitizer build shows a relapse.
    {"section-point-offset-overflow.svj2", Outcome::PartlyLoaded},
    // A focus flag that is not a number: the object was reported as left out, yet stayed
    // in the project, since the flag was read after the object stood on its row.
    {"unreadable-focus-flag.svj2", Outcome::PartlyLoaded},
    // Row 99999 named in 30 scenes, 1 KB of text: 3 million rows, about 500 MB; 4 KB of
    // the same reached 2 GB. The cap on the row number alone holds per scene.
    {"last-row-in-many-scenes.svj2", Outcome::Unreadable},
};

// New rows that one load may make over all scenes, beyond the first row that each scene
// has from the start. No project has come near it.
constexpr std::int64_t kRowBudget = 1000000;

std::string crlf(std::string_view lines) {
  std::string text;
  for (const char c : lines) {
    if (c == '\n') text += '\r';
    text += c;
  }
  return text;
}

const char* outcomeName(Outcome outcome) {
  switch (outcome) {
    case Outcome::Loaded:
      return "Loaded";
    case Outcome::PartlyLoaded:
      return "PartlyLoaded";
    case Outcome::Unreadable:
      return "Unreadable";
  }
  return "?";
}

std::string problemsOf(const LoadResult& result) {
  std::string text;
  for (const auto& problem : result.problems) text += "\n  " + problem;
  return text;
}

std::size_t objectCount(const Edit::Project& project) {
  std::size_t count = 0;
  for (const auto& entry : project.scenes()) {
    const Edit::Scene& scene = *entry.value;
    for (std::int32_t row = 0; row < scene.layerCount(); ++row) count += scene.getLayer(row).objects.size();
  }
  return count;
}

// The object sections that the reader walks: [0], [1], ... up to the first gap.
std::size_t objectSections(std::string_view text) {
  System::IniFile ini;
  ini.loadMemory(text);
  std::size_t count = 0;
  while (!ini.section(std::to_string(count)).empty()) ++count;
  return count;
}

// The objects that the load reported as left out, each once.
std::size_t reportedObjects(const LoadResult& result) {
  std::set<std::string> numbers;
  for (const auto& problem : result.problems) {
    if (problem.starts_with("object [")) numbers.insert(problem.substr(0, problem.find(']')));
  }
  return numbers.size();
}

// What a load of `text` leaves behind whatever its outcome: each object section became
// an object or was reported, never both; every object that stayed stands on the row
// that holds it with a chain of effects; a group holds only objects that stayed; the
// current scene is one of the project's; and the rows stay within reason.
void expectConsistent(const Edit::EditService& edit, std::string_view text, const LoadResult& result) {
  if (result.outcome != Outcome::Unreadable) {
    EXPECT_EQ(objectCount(edit.project()) + reportedObjects(result), objectSections(text))
        << "objects kept plus objects reported must be the object sections read:" << problemsOf(result);
  }
  std::int64_t rows = 0;
  std::set<const Edit::Object*> living;
  for (const auto& entry : edit.project().scenes()) {
    const Edit::Scene& scene = *entry.value;
    rows += scene.layerCount() - 1;
    std::set<const Edit::Object*> ofScene;
    for (std::int32_t row = 0; row < scene.layerCount(); ++row) {
      for (const auto& object : scene.getLayer(row).objects) {
        EXPECT_EQ(object->layer, row) << "scene " << scene.id;
        EXPECT_FALSE(object->effects.empty()) << "scene " << scene.id << " row " << row;
        EXPECT_LE(object->start, object->end);
        ofScene.insert(object.get());
      }
    }
    if (scene.focusObject) {
      EXPECT_TRUE(ofScene.contains(scene.focusObject.get())) << "focus on a dropped object";
    }
    living.merge(ofScene);
  }
  for (const Edit::Object* object : living) {
    if (!object->group) continue;
    for (const Edit::Object* member : object->group->members()) {
      EXPECT_TRUE(living.contains(member)) << "a group still holds an object that was left out";
    }
  }
  EXPECT_LE(rows, kRowBudget) << "rows made in all scenes";
  ASSERT_TRUE(edit.currentScene());
  EXPECT_EQ(edit.project().findScene(edit.currentScene()->id), edit.currentScene());
}

// After a refused load: a new project, with no file to save over.
void expectEmpty(const Edit::EditService& edit) {
  EXPECT_EQ(edit.project().scenes().size(), 1u);
  ASSERT_TRUE(edit.project().findScene(0));
  EXPECT_EQ(objectCount(edit.project()), 0u);
  EXPECT_TRUE(edit.project().file.empty());
  EXPECT_TRUE(edit.project().pluginData.empty());
  EXPECT_EQ(edit.currentScene(), edit.project().findScene(0));
}

// The reader as a load runs it, from memory; Unreadable when it refused the text.
LoadResult readInto(Edit::EditService& edit, Effect::EffectService& effects, std::string_view text) {
  LoadResult result;
  System::IniFile ini;
  ini.loadMemory(text);
  try {
    edit.replaceProject(
        [&](Edit::Project& project) { Edit::ProjectFile::read(project, ini, edit.sceneDefaults(), effects, result); });
  } catch (const std::exception&) {
    result.outcome = Outcome::Unreadable;
  }
  return result;
}

// The first line where two texts part, for a failure message that fits on a screen.
std::string firstDifference(const std::string& expected, const std::string& actual) {
  std::size_t at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  const auto lineAround = [at](const std::string& text) {
    const std::size_t begin = text.rfind('\n', at == 0 ? 0 : at - 1);
    const std::size_t from = begin == std::string::npos ? 0 : begin + 1;
    return text.substr(from, text.find('\n', from) - from);
  };
  return "\n  before: " + lineAround(expected) + "\n  after:  " + lineAround(actual);
}

// Whatever a load kept must survive the next save: the text written reads back whole
// and writes the same text again.
void expectSavedFormStable(const Edit::Project& project, Effect::EffectService& effects) {
  const std::string first = Edit::ProjectFile::write(project);
  Edit::EditService again;
  const LoadResult result = readInto(again, effects, first);
  EXPECT_STREQ(outcomeName(result.outcome), "Loaded") << "the saved text reads back with problems:"
                                                      << problemsOf(result);
  // As a load of the saved file at the same place would name it.
  again.project().file = project.file;
  const std::string second = Edit::ProjectFile::write(again.project());
  EXPECT_TRUE(second == first) << "the saved text changes on the next save:" << firstDifference(first, second);
}

class DamagedProjectTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete effects;
    effects = nullptr;
  }

  // Through the file, as the user opens it.
  LoadResult load(const std::string& bytes) {
    const std::filesystem::path path = folder.writeFile("damaged.svj2", bytes);
    const LoadResult result = Edit::ProjectFile::load(edit, *effects, path.wstring());
    expectConsistent(edit, bytes, result);
    if (result.outcome == Outcome::Unreadable) {
      expectEmpty(edit);
    } else {
      EXPECT_EQ(edit.project().file, path.wstring());
      expectSavedFormStable(edit.project(), *effects);
    }
    return result;
  }

  // From memory, for the sweeps that read one text many times.
  LoadResult read(std::string_view text) { return readInto(edit, *effects, text); }

  Edit::Scene& scene(std::int32_t id = 0) { return *edit.project().findScene(id); }

  static Effect::EffectService* effects;
  Edit::EditService edit;
  TestSupport::TempDirectory folder;
};

Effect::EffectService* DamagedProjectTest::effects = nullptr;

constexpr std::string_view kHead =
    "[project]\nversion=2001801\nfile=/projects/show.svj2\ndisplay.scene=0\n"
    "[scene.0]\nscene=0\nname=Root\nvideo.width=1280\nvideo.height=720\nvideo.rate=30\nvideo.scale=1\n";

// One text object on row `layer`, with `extra` lines in its object section.
std::string textObject(int number, int layer, std::string_view frame, std::string_view extra = "") {
  const std::string n = std::to_string(number);
  return "[" + n + "]\nlayer=" + std::to_string(layer) + "\nframe=" + std::string(frame) + "\n" + std::string(extra) +
         "[" + n + ".0]\neffect.name=テキスト\nテキスト=object " + n + "\n[" + n + ".1]\neffect.name=標準描画\nX=1.00\n";
}

// A sound project with a bit of everything: two scenes, a named row, section points,
// a group, a filter object, a control object and plug-in data.
std::string wholeProject() {
  return crlf(std::string(kHead) + "display.zoom=7500\ndisplay.camera=\ndisplay.grid.x=16,-16\n" +
              "[scene.1]\nscene=4\nvideo.width=640\nvideo.height=480\nvideo.rate=24\nvideo.scale=1\nname=サブ\n"
              "[layer.0]\nlayer=1\nname=字幕\nlock=1\n" +
              textObject(0, 0, "0,30,59", "focus=1\ngroup=1\n") + textObject(1, 1, "10,20", "group=1\n") +
              "[2]\nlayer=2\nframe=0,99\n[2.0]\neffect.name=色調補正\n明るさ=120.00\n[2.1]\neffect.name=ぼかし\n範囲=4\n"
              "[3]\nlayer=3\nframe=0,50,99\n[3.0]\neffect.name=グループ制御\n対象レイヤー数=2\n"
              "X=0.00,10.00,20.00,直線移動,0\n" +
              "[4]\nlayer=0\nscene=4\nframe=0,23\n[4.0]\neffect.name=図形\n図形の種類=円\n[4.1]\neffect.name=標準描画\n"
              "[plugin.0]\nplugin.name=Markers\nm.0=10,intro\n");
}

TEST_F(DamagedProjectTest, TheUndamagedFileLoadsWhole) {
  // The base of the cuts below must itself be sound, or they prove nothing.
  const LoadResult result = load(wholeProject());
  EXPECT_EQ(result.outcome, Outcome::Loaded) << problemsOf(result);
  EXPECT_EQ(objectCount(edit.project()), 5u);
}

TEST_F(DamagedProjectTest, FileCutInTheMiddleOfALine) {
  const std::string whole = wholeProject();
  const auto cutAfter = [&](std::string_view marker, std::size_t keep) {
    const std::size_t at = whole.find(marker);
    EXPECT_NE(at, std::string::npos) << marker;
    return whole.substr(0, at + keep);
  };

  // In the middle of a scene's key: the scene lacks a required value.
  LoadResult result = load(cutAfter("video.height=720", 8));
  EXPECT_EQ(result.outcome, Outcome::Unreadable);
  EXPECT_NE(problemsOf(result).find("video.height"), std::string::npos) << problemsOf(result);

  // Inside a character of a scene's name: the name is no longer UTF-8.
  result = load(cutAfter("name=サブ", 7));
  EXPECT_EQ(result.outcome, Outcome::Unreadable);
  EXPECT_NE(problemsOf(result).find("UTF8"), std::string::npos) << problemsOf(result);

  // Inside a character of an object's second effect name: that object goes, the first
  // one stays.
  result = load(cutAfter("[1.1]\r\neffect.name=標準", 23));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_EQ(objectCount(edit.project()), 1u);
  EXPECT_NE(problemsOf(result).find("object [1]"), std::string::npos) << problemsOf(result);

  // The same in the first effect of a filter object.
  result = load(cutAfter("effect.name=色調補正", 14));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_EQ(objectCount(edit.project()), 2u);
}

TEST_F(DamagedProjectTest, EveryCutOfASoundFileEndsTheLoadCleanly) {
  // A file broken off anywhere, as a full disk or a crash during a save leaves it.
  const std::string whole = wholeProject();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE("cut after " + std::to_string(length) + " bytes");
    const std::string_view text = std::string_view(whole).substr(0, length);
    const LoadResult result = read(text);
    expectConsistent(edit, text, result);
    if (result.outcome == Outcome::Unreadable) {
      expectEmpty(edit);
    } else {
      expectSavedFormStable(edit.project(), *effects);
    }
    if (::testing::Test::HasFailure()) break;
  }
}

TEST_F(DamagedProjectTest, BinaryGarbageIsUnreadable) {
  std::string noise;
  std::uint32_t state = 12345;
  for (int i = 0; i < 4096; ++i) {
    state = state * 1103515245u + 12345u;
    noise += static_cast<char>(state >> 24);
  }
  EXPECT_EQ(load(noise).outcome, Outcome::Unreadable);
  constexpr char kNulls[] = "\0\0\0\0[project]\0\n\xff\xfe";
  EXPECT_EQ(load(std::string(kNulls, sizeof kNulls - 1)).outcome, Outcome::Unreadable);
  // Garbage behind a sound head is ignored line by line; the project itself is sound.
  const LoadResult result = load(crlf(std::string(kHead)) + noise);
  EXPECT_NE(result.outcome, Outcome::Unreadable) << problemsOf(result);
}

TEST_F(DamagedProjectTest, MissingRequiredKeys) {
  // A scene without its width is no scene: nothing of the file is used.
  LoadResult result = load(crlf(
      "[project]\n[scene.0]\nscene=0\nvideo.height=720\nvideo.rate=30\nvideo.scale=1\n" + textObject(0, 0, "0,9")));
  EXPECT_EQ(result.outcome, Outcome::Unreadable);
  EXPECT_NE(problemsOf(result).find("video.width"), std::string::npos) << problemsOf(result);

  // A row section without its row number is as bad.
  result = load(crlf(std::string(kHead) + "[layer.0]\nname=Titles\n" + textObject(0, 0, "0,9")));
  EXPECT_EQ(result.outcome, Outcome::Unreadable);

  // An object without its frames is left out on its own.
  result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9") +
                     "[1]\nlayer=1\n[1.0]\neffect.name=テキスト\n[1.1]\neffect.name=標準描画\n" + textObject(2, 2, "0,9")));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_NE(problemsOf(result).find("object [1]"), std::string::npos) << problemsOf(result);
  EXPECT_EQ(scene().getLayer(0).objects.size(), 1u);
  EXPECT_TRUE(scene().getLayer(1).objects.empty());
  EXPECT_EQ(scene().getLayer(2).objects.size(), 1u);

  // And so is one without its effects.
  result = load(crlf(std::string(kHead) + "[0]\nlayer=0\nframe=0,9\n"));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_NE(problemsOf(result).find("no effect defined."), std::string::npos) << problemsOf(result);
  EXPECT_EQ(objectCount(edit.project()), 0u);
}

TEST_F(DamagedProjectTest, FrameListsThatDescribeNoObject) {
  struct Case {
    const char* frame;
    const char* problem;
  };
  const Case cases[] = {
      {"5,3", "invalid frame number list."},        // ends before it starts
      {"7", "not enough frame number list."},       // no end
      {"", "ini file parameter invalid format"},    // nothing at all
      {"0,0,10", "invalid frame number list."},     // a point on the first frame of its section
      {"0,10,10", "invalid frame number list."},    // a point on the last frame
      {"0,5,5,10", "invalid frame number list."},   // two points on one frame
      {"-1,10", "invalid frame number list."},      // before the first frame
      {"0,2147483647", "invalid frame number list."},  // no frame after the end
      {"0,x,10", "ini file parameter invalid format"},
      {"0,99999999999", "ini file parameter invalid format"},  // beyond 32 bits
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string("frame=") + c.frame);
    const LoadResult result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9") + textObject(1, 1, c.frame)));
    EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
    EXPECT_NE(problemsOf(result).find(c.problem), std::string::npos) << problemsOf(result);
    EXPECT_EQ(scene().getLayer(0).objects.size(), 1u);
    EXPECT_TRUE(scene().getLayer(1).objects.empty());
  }
}

TEST_F(DamagedProjectTest, RowNumbersOutOfRange) {
  // A negative row, and one far beyond any real project, which must not make the reader
  // allocate rows up to it.
  for (const char* layer : {"-1", "2000000000", "99999999999"}) {
    SCOPED_TRACE(std::string("layer=") + layer);
    const LoadResult result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9") + "[1]\nlayer=" + layer +
                                        "\nframe=0,9\n[1.0]\neffect.name=テキスト\n[1.1]\neffect.name=標準描画\n"));
    EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
    EXPECT_LE(scene().layerCount(), 100000);
    EXPECT_EQ(objectCount(edit.project()), 1u);
  }
  const LoadResult result = load(crlf(std::string(kHead) + "[layer.0]\nlayer=-5\nname=Up\n"));
  EXPECT_EQ(result.outcome, Outcome::Unreadable);
}

TEST_F(DamagedProjectTest, EffectsThatNoChainCanHold) {
  // An effect that is not registered; the object was already in a group and the focus.
  LoadResult result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9", "group=1\n") +
                                "[1]\nlayer=1\nframe=0,9\ngroup=1\nfocus=1\n"
                                "[1.0]\neffect.name=Not An Effect\n"));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_NE(problemsOf(result).find("not found effect."), std::string::npos) << problemsOf(result);
  EXPECT_TRUE(scene().getLayer(1).objects.empty());
  EXPECT_FALSE(scene().focusObject);
  const auto& kept = scene().getLayer(0).objects.at(0);
  ASSERT_TRUE(kept->group);
  EXPECT_EQ(kept->group->size(), 1u);

  // A filter first, then an input effect: an input effect must lead its chain.
  result = load(crlf(std::string(kHead) + "[0]\nlayer=0\nframe=0,9\n[0.0]\neffect.name=ぼかし\n"
                                          "[0.1]\neffect.name=テキスト\n" +
                     textObject(1, 1, "0,9")));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_NE(problemsOf(result).find("different effect type."), std::string::npos) << problemsOf(result);
  EXPECT_TRUE(scene().getLayer(0).objects.empty());
  EXPECT_EQ(scene().getLayer(1).objects.size(), 1u);

  // An output effect that does not fit the input effect's media.
  result = load(crlf(std::string(kHead) + "[0]\nlayer=0\nframe=0,9\n[0.0]\neffect.name=音声ファイル\n"
                                          "[0.1]\neffect.name=標準描画\n"));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_EQ(objectCount(edit.project()), 0u);

  // A control effect behind a media object's chain.
  result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9") + "[0.2]\neffect.name=グループ制御\n"));
  EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
  EXPECT_EQ(objectCount(edit.project()), 0u);

  // An empty name and a name that is not UTF-8.
  for (const char* name : {"", "\xe3\x83"}) {
    result = load(crlf(std::string(kHead) + "[0]\nlayer=0\nframe=0,9\n[0.0]\neffect.name=" + name + "\n"));
    EXPECT_EQ(result.outcome, Outcome::PartlyLoaded);
    EXPECT_EQ(objectCount(edit.project()), 0u);
  }
}

TEST_F(DamagedProjectTest, AHoleInTheObjectNumbersEndsTheObjects) {
  const LoadResult result = load(crlf(std::string(kHead) + textObject(0, 0, "0,9") + textObject(1, 1, "0,9") +
                                      textObject(3, 3, "0,9")));
  // Not a failure: the file simply ends its objects at the hole.
  EXPECT_EQ(result.outcome, Outcome::Loaded) << problemsOf(result);
  EXPECT_EQ(objectCount(edit.project()), 2u);
  EXPECT_TRUE(scene().getLayer(3).objects.empty());
}

TEST_F(DamagedProjectTest, ItemValuesThatDoNotParseKeepTheirDefaults) {
  // An item is the effect's business: a bad value costs the value, not the object.
  const LoadResult result = load(crlf(std::string(kHead) +
                                      "[0]\nlayer=0\nframe=0,50,99\n[0.0]\neffect.name=テキスト\nサイズ=big\n"
                                      "文字色=xyz\n[0.1]\neffect.name=標準描画\nX=1,2,3,no movement,0\n"
                                      "Y=1,2,直線移動,99999999999\nZ=1,2,3,4,5,6,7,8,9,直線移動,0|x\n"));
  EXPECT_EQ(result.outcome, Outcome::Loaded) << problemsOf(result);
  EXPECT_EQ(objectCount(edit.project()), 1u);
  const std::string written = Edit::ProjectFile::write(edit.project());
  for (const char* line : {"\r\nサイズ=40.00\r\n", "\r\n文字色=ffffff\r\n", "\r\nX=0.00\r\n", "\r\nY=0.00\r\n"}) {
    EXPECT_NE(written.find(line), std::string::npos) << line;
  }
}

// The files of the damaged folder, one test each, named after the file.
class DamagedProjectFileTest : public DamagedProjectTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(DamagedProjectFileTest, LoadsToItsExpectedOutcome) {
  const std::filesystem::path path = kDamagedFolder / GetParam();
  const LoadResult result = Edit::ProjectFile::load(edit, *effects, path.wstring());
  EXPECT_STREQ(outcomeName(result.outcome), outcomeName(kDamagedFiles.at(GetParam()))) << problemsOf(result);
  expectConsistent(edit, System::File::readAll(path.wstring()), result);
  if (result.outcome == Outcome::Unreadable) {
    expectEmpty(edit);
    return;
  }
  EXPECT_EQ(edit.project().file, path.wstring());
  if (result.outcome == Outcome::PartlyLoaded) {
    EXPECT_FALSE(result.problems.empty());
  }
  expectSavedFormStable(edit.project(), *effects);
}

std::vector<std::string> damagedFileNames() {
  std::vector<std::string> names;
  for (const auto& entry : kDamagedFiles) names.push_back(entry.first);
  return names;
}

std::string testName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name;
  for (const char c : info.param) name += std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
  return name;
}

INSTANTIATE_TEST_SUITE_P(DamagedFiles, DamagedProjectFileTest, ::testing::ValuesIn(damagedFileNames()), testName);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DamagedProjectFileTest);

TEST(DamagedProjectFiles, EveryFileHasAnExpectation) {
  std::set<std::string> onDisk;
  if (std::filesystem::is_directory(kDamagedFolder)) {
    for (const auto& entry : std::filesystem::directory_iterator(kDamagedFolder)) {
      if (entry.is_regular_file()) onDisk.insert(entry.path().filename().string());
    }
  }
  for (const auto& name : onDisk) EXPECT_TRUE(kDamagedFiles.contains(name)) << name << " has no line in kDamagedFiles";
  for (const auto& entry : kDamagedFiles) EXPECT_TRUE(onDisk.contains(entry.first)) << entry.first << " is missing";
}

}  // namespace
