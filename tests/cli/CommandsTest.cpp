// sorvel2-cli's commands, run in-process: what they print, where, and their exit status.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "cli/CliRun.h"
#include "cli/Commands.h"
#include "support/TempDirectory.h"

namespace {

using CliTest::Outcome;
using CliTest::run;

std::string data(const std::string& name) { return std::string(SORVEL_TEST_DATA_DIR) + "/project/" + name; }

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

int lineCount(const std::string& text) { return static_cast<int>(std::count(text.begin(), text.end(), '\n')); }

TEST(CliCommands, HelpAndBadCommandLines) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{{"--help"}, {"help"}, {"help", "info"},
                                                                    {"info", "--help"}, {"convert", "-h"}}) {
    const Outcome result = run(arguments);
    EXPECT_EQ(result.status, Cli::kSuccess);
    EXPECT_EQ(result.out.rfind("usage: sorvel2-cli", 0), 0u);
    EXPECT_TRUE(result.err.empty());
  }
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {}, {"frobnicate"}, {"info"}, {"info", "a", "b"}, {"convert", "a"}, {"help", "frobnicate"}}) {
    const Outcome result = run(arguments);
    EXPECT_EQ(result.status, Cli::kUnreadable);
    EXPECT_EQ(lineCount(result.err), 1) << result.err;
    EXPECT_TRUE(result.out.empty());
  }
}

TEST(CliCommands, InfoListsScenesAndChains) {
  const Outcome result = run({"info", data("handwritten.svj2")});
  EXPECT_EQ(result.status, Cli::kSuccess) << result.err;
  EXPECT_TRUE(result.err.empty());
  EXPECT_EQ(result.out,
            "scene 0 \"Root\": 1920x1080, 60 fps (60/1), 48000 Hz, 9 layers, 2 objects\n"
            "  layer 1 frames 100-200: グループ制御\n"
            "  layer 3 frames 0-40: 図形 > 標準描画 > ぼかし\n"
            "scene 3 \"Second\": 1280x720, 29.97003 fps (30000/1001), 44100 Hz, 1 layers, 1 objects\n"
            "  layer 0 frames 5-5: 色調補正\n");
}

TEST(CliCommands, InfoReportsEachProblemOnALineOfItsOwn) {
  TestSupport::TempDirectory folder;
  const std::string path = folder.writeFile("partly.svj2",
                                            "[project]\r\n[0]\r\nlayer=0\r\nframe=10,5\r\n[0.0]\r\neffect.name=図形\r\n"
                                            "[1]\r\nlayer=0\r\nframe=0,5\r\n[1.0]\r\neffect.name=図形\r\n"
                                            "色=not a colour\r\n")
                               .string();
  const Outcome result = run({"info", path});
  EXPECT_EQ(result.status, Cli::kPartlyFailed);
  EXPECT_EQ(lineCount(result.err), 2) << result.err;
  EXPECT_NE(result.err.find(path + ": object [0]: invalid frame number list."), std::string::npos);
  EXPECT_NE(result.err.find(path + ": ini file effect parameter invalid. [色](not a colour)"), std::string::npos);
  EXPECT_NE(result.out.find("layer 0 frames 0-5: 図形 > 標準描画\n"), std::string::npos);

  const Outcome missing = run({"info", folder.path().string() + "/missing.svj2"});
  EXPECT_EQ(missing.status, Cli::kUnreadable);
  EXPECT_EQ(lineCount(missing.err), 1);
  EXPECT_TRUE(missing.out.empty());
}

TEST(CliCommands, ConvertWritesTheCanonicalFormAndGuardsTheInput) {
  TestSupport::TempDirectory folder;
  const std::string out = folder.path().string() + "/out.svj2";
  const Outcome result = run({"convert", data("handwritten.svj2"), out});
  EXPECT_EQ(result.status, Cli::kSuccess) << result.err;
  std::string expected = readFile(data("handwritten.expected.svj2"));
  const std::string storedFile = "file=/projects/new/show.svj2";
  expected.replace(expected.find(storedFile), storedFile.size(), "file=" + out);
  EXPECT_EQ(readFile(out), expected);

  // A file that lost an object is not written over itself.
  const std::string partly = folder.writeFile("partly.svj2", "[project]\r\n[0]\r\nlayer=0\r\nframe=7\r\n").string();
  const Outcome refused = run({"convert", partly, partly});
  EXPECT_EQ(refused.status, Cli::kPartlyFailed);
  EXPECT_EQ(readFile(partly), "[project]\r\n[0]\r\nlayer=0\r\nframe=7\r\n");

  // A folder that is not there: the file the user named, and why, on one line.
  const std::string nowhere = folder.path().string() + "/no/such/folder/x.svj2";
  const Outcome unwritten = run({"convert", data("handwritten.svj2"), nowhere});
  EXPECT_EQ(unwritten.status, Cli::kUnreadable);
  EXPECT_EQ(lineCount(unwritten.err), 1) << unwritten.err;
  EXPECT_EQ(unwritten.err.rfind("sorvel2-cli: " + nowhere + ": cannot be written: failed to open file. [Note] " +
                                    nowhere + " (No such file or directory)",
                                0),
            0u)
      << unwritten.err;
  EXPECT_EQ(unwritten.err.find(".saving"), std::string::npos);
}

// A file of a newer version loads whole: a warning, exit status 0, and it may be
// converted onto itself.
TEST(CliCommands, NewerFilesAreAWarningNotAFailure) {
  TestSupport::TempDirectory folder;
  std::string text = readFile(data("handwritten.svj2"));
  text.replace(text.find("version=2001801"), 15, "version=2999999");
  const std::string path = folder.writeFile("newer.svj2", text).string();
  const Outcome info = run({"info", path});
  EXPECT_EQ(info.status, Cli::kSuccess);
  EXPECT_EQ(info.err, "sorvel2-cli: " + path +
                          ": warning: the file was written by a newer version (2999999) than this program (2001801)\n");
  EXPECT_FALSE(info.out.empty());

  const Outcome converted = run({"convert", path, path});
  EXPECT_EQ(converted.status, Cli::kSuccess) << converted.err;
  EXPECT_NE(readFile(path).find("version=2001801\r\n"), std::string::npos);
}

// What the user may name in place of a project, and the one line that says what it is.
TEST(CliCommands, WhatIsNoProjectFileSaysWhatItIs) {
  TestSupport::TempDirectory folder;
  const auto firstLine = [](const std::vector<std::string>& arguments) {
    const Outcome result = run(arguments);
    EXPECT_EQ(result.status, Cli::kUnreadable) << result.err;
    EXPECT_EQ(lineCount(result.err), 1) << result.err;
    return result.err;
  };
  const std::string here = folder.path().string();
  EXPECT_EQ(firstLine({"info", here}), "sorvel2-cli: " + here + ": this is a folder, not a project file\n");
  EXPECT_NE(firstLine({"info", "/dev/zero"}).find("/dev/zero: not a regular file."), std::string::npos);
  const std::string wide = folder.writeFile("wide.svj2", std::string("\xff\xfe[\0p\0", 6)).string();
  EXPECT_NE(firstLine({"info", wide}).find(wide + ": ini file is UTF-16 text; only UTF-8 is read."), std::string::npos);
  std::string rows = "[project]\r\n";
  for (int k = 0; k <= 10; ++k) {
    rows += "[layer." + std::to_string(k) + "]\r\nlayer=99999\r\nscene=" + std::to_string(k) + "\r\n";
  }
  const std::string crowded = folder.writeFile("crowded.svj2", rows).string();
  EXPECT_NE(firstLine({"info", crowded}).find("row 99999 of scene 10 passes the budget of 1000000 new rows in one load"),
            std::string::npos);

  // Saved as "UTF-8 with BOM": read all the same, with a warning.
  const std::string marked = folder.writeFile("marked.svj2", "\xef\xbb\xbf" + readFile(data("handwritten.svj2"))).string();
  const Outcome result = run({"info", marked});
  EXPECT_EQ(result.status, Cli::kSuccess);
  EXPECT_EQ(result.err, "sorvel2-cli: " + marked + ": warning: the file starts with a UTF-8 byte order mark, which was skipped\n");
  EXPECT_EQ(result.out, run({"info", data("handwritten.svj2")}).out);
}

}  // namespace
