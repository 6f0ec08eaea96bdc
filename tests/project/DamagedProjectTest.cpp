// Damaged project files. Whatever the bytes, a load comes to an end without taking the
// program down: a broken object is left out and reported, anything else leaves an empty
// project that has no file, so that a plain save cannot overwrite the damaged file.
// tests/data/project/damaged/ keeps inputs that once broke the reader, most of them
// found by the fuzz target in fuzz/; the smaller cases are written out here.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>

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
using enum LoadResult::Outcome;

const std::filesystem::path kDamagedFolder = std::filesystem::path(SORVEL_TEST_DATA_DIR) / "project" / "damaged";

// What loading each file of the damaged folder must come to. A file that is added to the
// folder needs its line here; EveryDamagedFileLoadsToItsExpectedOutcome says so.
const std::map<std::string, Outcome> kDamagedFiles = {
    // Movement flags of -4: read as a signed number, they were kept as 4294967292 and
    // written that way, which the next load refused as beyond 32 bits, so the item lost
    // its movement on the second round.
    {"negative-movement-flags.svj2", Loaded},
    // An object from frame -2147483648 to 2147483647 with a point at 0: the point's
    // offset from the start does not fit in 32 bits, and computing it was a signed
    // overflow (-fsanitize=undefined). A plain build wrapped around and happened to refuse
    // the point, so only a sanitizer build shows a relapse.
    {"section-point-offset-overflow.svj2", PartlyLoaded},
    // A focus flag that is not a number: the object was reported as left out, yet stayed
    // in the project, since the flag was read after the object stood on its row.
    {"unreadable-focus-flag.svj2", PartlyLoaded},
    // Row 99999 named in 30 scenes, 1 KB of text: 3 million rows, about 500 MB; 4 KB of
    // the same reached 2 GB. The cap on the row number alone holds per scene.
    {"last-row-in-many-scenes.svj2", Unreadable},
};

// New rows that one load may make over all scenes, beyond the first row that each scene
// has from the start, and rows that one scene may have (row numbers 0 to 99999). No
// project has come near either.
constexpr std::int64_t kRowBudget = 1000000;
constexpr std::int32_t kRowsPerScene = 100000;

std::string crlf(const std::string& lines) { return std::regex_replace(lines, std::regex("\n"), "\r\n"); }

const char* outcomeName(Outcome outcome) {
  constexpr const char* kNames[] = {"Loaded", "PartlyLoaded", "Unreadable"};
  return kNames[static_cast<int>(outcome)];
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
  if (result.outcome != Unreadable) {
    EXPECT_EQ(objectCount(edit.project()) + reportedObjects(result), objectSections(text))
        << "objects kept plus objects reported must be the object sections read:" << problemsOf(result);
  }
  std::int64_t rows = 0;
  std::set<const Edit::Object*> living;
  for (const auto& entry : edit.project().scenes()) {
    const Edit::Scene& scene = *entry.value;
    rows += scene.layerCount() - 1;
    EXPECT_LE(scene.layerCount(), kRowsPerScene) << "scene " << scene.id;
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
  EXPECT_EQ(edit.project().currentScene, edit.currentScene()->id) << "the file would name another scene";
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
    result.outcome = Unreadable;
  }
  return result;
}

class DamagedProjectTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { effects = new Effect::EffectService(); }
  static void TearDownTestSuite() { delete std::exchange(effects, nullptr); }

  // What every load must leave, whatever the text. After a refused load: a new project,
  // with no file to save over. After any other: the project names the file it came from
  // (`file`; none for a load from memory), a partial load says why, and whatever was
  // kept survives the next save: the text written reads back whole and writes the same
  // text again.
  void expectLoadEnded(std::string_view text, const LoadResult& result, const std::wstring* file) {
    expectConsistent(edit, text, result);
    const Edit::Project& project = edit.project();
    if (result.outcome == Unreadable) {
      EXPECT_EQ(project.scenes().size(), 1u);
      ASSERT_TRUE(project.findScene(0));
      EXPECT_EQ(objectCount(project), 0u);
      EXPECT_TRUE(project.file.empty());
      EXPECT_TRUE(project.pluginData.empty());
      EXPECT_EQ(edit.currentScene(), project.findScene(0));
      return;
    }
    EXPECT_EQ(project.file, file ? *file : project.file);
    EXPECT_TRUE(result.outcome != PartlyLoaded || !result.problems.empty()) << "a partial load says why";
    const std::string first = Edit::ProjectFile::write(project);
    Edit::EditService again;
    const LoadResult reread = readInto(again, *effects, first);
    EXPECT_STREQ(outcomeName(reread.outcome), "Loaded") << "the saved text reads back with problems:"
                                                        << problemsOf(reread);
    again.project().file = project.file;  // as a load of the saved file at the same place would name it
    const std::string second = Edit::ProjectFile::write(again.project());
    EXPECT_EQ(second, first) << "the saved text changes on the next save";
  }

  // Through the file, as the user opens it.
  LoadResult loadFile(const std::filesystem::path& path) {
    const LoadResult result = Edit::ProjectFile::load(edit, *effects, path.wstring());
    const std::wstring file = path.wstring();
    expectLoadEnded(System::File::readAll(file), result, &file);
    return result;
  }
  LoadResult load(const std::string& bytes) { return loadFile(folder.writeFile("damaged.svj2", bytes)); }

  inline static Effect::EffectService* effects = nullptr;
  Edit::EditService edit;
  TestSupport::TempDirectory folder;
};

constexpr std::string_view kHead =
    "[project]\nversion=2001801\nfile=/projects/show.svj2\ndisplay.scene=0\n"
    "[scene.0]\nscene=0\nname=Root\nvideo.width=1280\nvideo.height=720\nvideo.rate=30\nvideo.scale=1\n";

// One text object on row `layer`, with `extra` lines in its object section.
std::string textObject(int number, int layer, std::string_view frame, std::string_view extra = "") {
  const std::string n = std::to_string(number);
  return "[" + n + "]\nlayer=" + std::to_string(layer) + "\nframe=" + std::string(frame) + "\n" + std::string(extra) +
         "[" + n + ".0]\neffect.name=テキスト\nテキスト=object " + n + "\n[" + n + ".1]\neffect.name=標準描画\nX=1.00\n";
}

std::string withHead(const std::string& rest) { return crlf(std::string(kHead) + rest); }

// A sound project with a bit of everything: two scenes, a named row, section points,
// a group, a filter object, a control object and plug-in data.
std::string wholeProject() {
  return withHead("display.zoom=7500\ndisplay.camera=\ndisplay.grid.x=16,-16\n"
                  "[scene.1]\nscene=4\nvideo.width=640\nvideo.height=480\nvideo.rate=24\nvideo.scale=1\nname=サブ\n"
                  "[layer.0]\nlayer=1\nname=字幕\nlock=1\n" +
                  textObject(0, 0, "0,30,59", "focus=1\ngroup=1\n") + textObject(1, 1, "10,20", "group=1\n") +
                  "[2]\nlayer=2\nframe=0,99\n[2.0]\neffect.name=色調補正\n明るさ=120.00\n[2.1]\neffect.name=ぼかし\n範囲=4\n"
                  "[3]\nlayer=3\nframe=0,50,99\n[3.0]\neffect.name=グループ制御\n対象レイヤー数=2\n"
                  "X=0.00,10.00,20.00,直線移動,0\n"
                  "[4]\nlayer=0\nscene=4\nframe=0,23\n[4.0]\neffect.name=図形\n図形の種類=円\n[4.1]\neffect.name=標準描画\n"
                  "[plugin.0]\nplugin.name=Markers\nm.0=10,intro\n");
}

// A damaged text and what its load comes to, besides what every load must leave.
struct Damage {
  std::string what;
  std::string text;
  Outcome outcome;
  std::string problem = "";  // a text that the problems must hold
  int objects = -1;          // objects kept in all scenes; -1: not counted
  std::string rows = "";     // objects on rows 0, 1, ... of scene 0, one digit a row
  void (*also)(const Edit::Project&) = nullptr;
};

TEST_F(DamagedProjectTest, EachDamageComesToItsOutcome) {
  const std::string whole = wholeProject();
  const auto cutAfter = [&](std::string_view marker, std::size_t keep) {
    const std::size_t at = whole.find(marker);
    EXPECT_NE(at, std::string::npos) << marker;
    return whole.substr(0, at + keep);
  };
  std::string noise(4096, '\0');
  std::uint32_t state = 12345;
  for (char& c : noise) c = static_cast<char>((state = state * 1103515245u + 12345u) >> 24);
  constexpr char kNulls[] = "\0\0\0\0[project]\0\n\xff\xfe";
  // Object 1 on row 1 behind a sound object 0 on row 0.
  const auto second = [](const std::string& object) { return withHead(textObject(0, 0, "0,9") + object); };
  const auto frames = [&](const char* frame) { return second(textObject(1, 1, frame)); };
  const auto row = [&](const char* layer) {
    return second("[1]\nlayer=" + std::string(layer) +
                  "\nframe=0,9\n[1.0]\neffect.name=テキスト\n[1.1]\neffect.name=標準描画\n");
  };
  // Object 0 on row 0 with these effect sections.
  const auto lone = [](const std::string& effects) { return withHead("[0]\nlayer=0\nframe=0,9\n" + effects); };
  // Scene 2 with one value of its format changed, and object 0 on scene 0.
  const auto format = [](const std::string& key, const std::string& value) {
    std::string section = "[scene.1]\nscene=2\n";
    for (const char* k : {"video.width", "video.height", "video.rate", "video.scale", "audio.rate"}) {
      const char* normal = std::string_view(k).starts_with("video.") ? "1" : "44100";
      section += std::string(k) + "=" + (k == key ? value : normal) + "\n";
    }
    return withHead(section + textObject(0, 0, "0,9"));
  };
  const auto noSceneTwo = [](const Edit::Project& project) { EXPECT_FALSE(project.findScene(2)); };
  std::string rowsInElevenScenes;
  for (int k = 0; k <= 10; ++k) {
    rowsInElevenScenes += "[layer." + std::to_string(k) + "]\nlayer=99999\nscene=" + std::to_string(k) + "\n";
  }
  const std::string kFrames = "invalid frame number list.", kFormat = "ini file parameter invalid format";

  const Damage cases[] = {
      // The base of the cuts must itself be sound, or they prove nothing.
      {"undamaged", whole, Loaded, "", 5},
      // Cut in the middle of a line, as a full disk or a crash during a save leaves it.
      {"cut in a scene's key", cutAfter("video.height=720", 8), Unreadable, "video.height"},
      {"cut in a character of a scene's name", cutAfter("name=サブ", 7), Unreadable, "UTF8"},
      {"cut in an object's second effect name", cutAfter("[1.1]\r\neffect.name=標準", 23), PartlyLoaded,
       "object [1]", 1},
      {"cut in a filter object's first effect name", cutAfter("effect.name=色調補正", 14), PartlyLoaded, "", 2},
      {"binary garbage", noise, Unreadable},
      {"nulls", std::string(kNulls, sizeof kNulls - 1), Unreadable},
      // Garbage behind a sound head is ignored line by line; the project itself is sound.
      {"garbage behind a sound head", withHead("") + noise, Loaded},
      // A scene or row section without a required key: nothing of the file is used.
      {"a scene without its width",
       crlf("[project]\n[scene.0]\nscene=0\nvideo.height=720\nvideo.rate=30\nvideo.scale=1\n" +
            textObject(0, 0, "0,9")),
       Unreadable, "video.width"},
      {"a row section without its row", withHead("[layer.0]\nname=Titles\n" + textObject(0, 0, "0,9")), Unreadable},
      {"a row section with a negative row", withHead("[layer.0]\nlayer=-5\nname=Up\n"), Unreadable},
      // Later code divides by a scene's rates and sizes images by it: a scene that cannot
      // be shown is left out with the text of a value that does not read; the rest loads.
      {"a frame rate of 0", format("video.rate", "0"), PartlyLoaded,
       "scene.1: ini file parameter invalid format(int).", 1, "", noSceneTwo},
      {"a negative scale", format("video.scale", "-1"), PartlyLoaded, "key=video.scale", 1, "", noSceneTwo},
      {"a sample rate of 0", format("audio.rate", "0"), PartlyLoaded, "key=audio.rate", 1, "", noSceneTwo},
      {"a negative width", format("video.width", "-1"), PartlyLoaded, "key=video.width", 1, "", noSceneTwo},
      {"a negative height", format("video.height", "-1"), PartlyLoaded, "key=video.height", 1, "", noSceneTwo},
      {"an image of no size", format("video.width", "0"), Loaded, "", 1},
      // Its objects still load, on a scene with a new scene's format.
      {"an object on a scene that was left out", format("video.rate", "0") + crlf(textObject(1, 0, "0,9", "scene=2\n")),
       PartlyLoaded, "scene.1", 2, "",
       [](const Edit::Project& project) { EXPECT_EQ(project.findScene(2)->videoRate, 30); }},
      {"a current scene that does not exist",
       std::regex_replace(withHead(textObject(0, 0, "0,9")), std::regex("display.scene=0"), "display.scene=7"), Loaded,
       "", 1, "",
       [](const Edit::Project& project) {
         EXPECT_EQ(project.currentScene, 0);
         EXPECT_NE(Edit::ProjectFile::write(project).find("\r\ndisplay.scene=0\r\n"), std::string::npos);
       }},
      {"rows beyond the budget of one load", withHead(rowsInElevenScenes), Unreadable,
       "row 99999 of scene 10 passes the budget of 1000000 new rows in one load"},
      // A broken object is left out on its own.
      {"an object without frames",
       second("[1]\nlayer=1\n[1.0]\neffect.name=テキスト\n[1.1]\neffect.name=標準描画\n" + textObject(2, 2, "0,9")),
       PartlyLoaded, "object [1]", -1, "101"},
      {"an object without effects", lone(""), PartlyLoaded, "no effect defined.", 0},
      {"frame=5,3: ends before it starts", frames("5,3"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=7: no end", frames("7"), PartlyLoaded, "not enough frame number list.", -1, "10"},
      {"frame=: nothing at all", frames(""), PartlyLoaded, kFormat, -1, "10"},
      {"frame=0,0,10: a point on the first frame", frames("0,0,10"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=0,10,10: a point on the last frame", frames("0,10,10"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=0,5,5,10: two points on one frame", frames("0,5,5,10"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=-1,10: before the first frame", frames("-1,10"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=0,2147483647: no frame after the end", frames("0,2147483647"), PartlyLoaded, kFrames, -1, "10"},
      {"frame=0,x,10", frames("0,x,10"), PartlyLoaded, kFormat, -1, "10"},
      {"frame=0,99999999999: beyond 32 bits", frames("0,99999999999"), PartlyLoaded, kFormat, -1, "10"},
      // Rows far beyond any real project must not make the reader allocate up to them.
      {"layer=-1", row("-1"), PartlyLoaded, "", 1},
      {"layer=2000000000", row("2000000000"), PartlyLoaded, "", 1},
      {"layer=99999999999", row("99999999999"), PartlyLoaded, "", 1},
      {"an unregistered effect, on an object in a group and the focus",
       withHead(textObject(0, 0, "0,9", "group=1\n") +
                "[1]\nlayer=1\nframe=0,9\ngroup=1\nfocus=1\n[1.0]\neffect.name=Not An Effect\n"),
       PartlyLoaded, "not found effect.", -1, "10",
       [](const Edit::Project& project) {
         const Edit::Scene& scene = *project.findScene(0);
         EXPECT_FALSE(scene.focusObject);
         const auto& kept = scene.getLayer(0).objects.at(0);
         ASSERT_TRUE(kept->group);
         EXPECT_EQ(kept->group->size(), 1u);
       }},
      {"a filter, then an input effect, which must lead its chain",
       lone("[0.0]\neffect.name=ぼかし\n[0.1]\neffect.name=テキスト\n" + textObject(1, 1, "0,9")), PartlyLoaded,
       "different effect type.", -1, "01"},
      {"an output that does not fit the input's media",
       lone("[0.0]\neffect.name=音声ファイル\n[0.1]\neffect.name=標準描画\n"), PartlyLoaded, "", 0},
      {"a control effect behind a media chain", second("[0.2]\neffect.name=グループ制御\n"), PartlyLoaded, "", 0},
      {"an empty effect name", lone("[0.0]\neffect.name=\n"), PartlyLoaded, "", 0},
      {"an effect name that is not UTF-8", lone("[0.0]\neffect.name=\xe3\x83\n"), PartlyLoaded, "", 0},
      // Not a failure: the file simply ends its objects at the hole.
      {"a hole in the object numbers", second(textObject(1, 1, "0,9") + textObject(3, 3, "0,9")), Loaded, "", 2,
       "1100"},
      // An item is the effect's business: a bad value costs the value, not the object.
      {"item values that do not parse",
       withHead("[0]\nlayer=0\nframe=0,50,99\n[0.0]\neffect.name=テキスト\nサイズ=big\n文字色=xyz\n[0.1]\n"
                "effect.name=標準描画\nX=1,2,3,no movement,0\nY=1,2,直線移動,99999999999\n"
                "Z=1,2,3,4,5,6,7,8,9,直線移動,0|x\n"),
       Loaded, "", 1, "",
       [](const Edit::Project& project) {  // they keep their defaults
         const std::string written = Edit::ProjectFile::write(project);
         for (const char* line : {"\r\nサイズ=40.00\r\n", "\r\n文字色=ffffff\r\n", "\r\nX=0.00\r\n", "\r\nY=0.00\r\n"}) {
           EXPECT_NE(written.find(line), std::string::npos) << line;
         }
       }},
  };
  for (const Damage& c : cases) {
    SCOPED_TRACE(c.what);
    const LoadResult result = load(c.text);
    EXPECT_STREQ(outcomeName(result.outcome), outcomeName(c.outcome)) << problemsOf(result);
    EXPECT_NE(problemsOf(result).find(c.problem), std::string::npos) << problemsOf(result);
    if (c.objects >= 0) {
      EXPECT_EQ(objectCount(edit.project()), static_cast<std::size_t>(c.objects));
    }
    for (std::size_t at = 0; at < c.rows.size(); ++at) {
      EXPECT_EQ(edit.project().findScene(0)->getLayer(static_cast<std::int32_t>(at)).objects.size(),
                static_cast<std::size_t>(c.rows[at] - '0'))
          << "row " << at;
    }
    if (c.also) c.also(edit.project());
  }
}

TEST_F(DamagedProjectTest, EveryCutOfASoundFileEndsTheLoadCleanly) {
  // A file broken off anywhere, as a full disk or a crash during a save leaves it.
  const std::string whole = wholeProject();
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE("cut after " + std::to_string(length) + " bytes");
    const std::string_view text = std::string_view(whole).substr(0, length);
    expectLoadEnded(text, readInto(edit, *effects, text), nullptr);
    if (::testing::Test::HasFailure()) break;
  }
}

// Each file of the damaged folder loads to its outcome in kDamagedFiles, and each line
// there has its file.
TEST_F(DamagedProjectTest, EveryDamagedFileLoadsToItsExpectedOutcome) {
  std::set<std::string> onDisk;
  for (const auto& entry : std::filesystem::directory_iterator(kDamagedFolder)) {
    const std::string name = entry.path().filename().string();
    SCOPED_TRACE(name);
    if (!entry.is_regular_file()) continue;
    onDisk.insert(name);
    const auto expected = kDamagedFiles.find(name);
    if (expected == kDamagedFiles.end()) {
      ADD_FAILURE() << "no line in kDamagedFiles";
      continue;
    }
    const LoadResult result = loadFile(entry.path());
    EXPECT_STREQ(outcomeName(result.outcome), outcomeName(expected->second)) << problemsOf(result);
  }
  for (const auto& entry : kDamagedFiles) EXPECT_TRUE(onDisk.contains(entry.first)) << entry.first << " is missing";
}

}  // namespace
