// sorvel2-cli's commands, run in-process: what they print, where, and their exit status.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "cli/Commands.h"
#include "support/TempDirectory.h"

namespace {

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

Outcome run(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = Cli::run(arguments, out, err);
  return {status, out.str(), err.str()};
}

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
           {}, {"render"}, {"info"}, {"info", "a", "b"}, {"convert", "a"}, {"help", "render"}}) {
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
  EXPECT_EQ(run({"convert", data("handwritten.svj2"), folder.path().string() + "/no/such/folder/x.svj2"}).status,
            Cli::kUnreadable);
}

}  // namespace
