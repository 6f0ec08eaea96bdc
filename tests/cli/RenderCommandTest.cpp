// sorvel2-cli render over projects written by the test: frames composed by the render
// workers and written as PNG, what is reported when an effect cannot draw yet, and the
// command lines and files it refuses. The program runs as its own process, since it
// starts the graphics device.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/CliRun.h"
#include "cli/Commands.h"
#include "media/image/ImageBuffer.h"
#include "platform/qt/QtImageCodec.h"
#include "support/TempDirectory.h"
#include "system/Text.h"

namespace {

// A scene of 16 by 8 pixels; `objects` is appended as the file holds them.
std::string project(const std::string& objects = "") {
  return "[project]\nversion=2001801\n[scene.0]\nscene=0\nname=Test\nvideo.width=16\nvideo.height=8\n"
         "video.rate=30\nvideo.scale=1\naudio.rate=48000\n" +
         objects;
}

// テキスト cannot draw yet: it stands for any effect that is left out.
const std::string kText = "[0]\nlayer=0\nframe=0,9\n[0.0]\neffect.name=テキスト\n[0.1]\neffect.name=標準描画\n";

struct ToolRun {
  int status;
  std::string output;
};

ToolRun cli(const TestSupport::TempDirectory& folder, const std::string& arguments) {
  const std::string command =
      "'" SORVEL2_CLI_EXECUTABLE "' render " + arguments + " >'" + folder.path().string() + "/out.txt' 2>&1";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), folder.readFile("out.txt")};
}

std::shared_ptr<Media::ImageBuffer> readPng(const std::filesystem::path& path) {
  return Platform::createQtImageCodec()->read(System::Text::fromUtf8(path.string()), "CliRender");
}

TEST(CliRender, WritesEachFrameAndSaysWhatWasLeftOut) {
  TestSupport::TempDirectory folder;
  const std::string empty = folder.writeFile("empty.svj2", project()).string();
  const ToolRun clean = cli(folder, "'" + empty + "' --frame 3 -o '" + folder.path().string() + "/clean.png'");
  ASSERT_EQ(clean.status, Cli::kSuccess) << clean.output;
  const auto image = readPng(folder.path() / "clean.png");
  ASSERT_EQ(image->width(), 16u);
  ASSERT_EQ(image->height(), 8u);
  EXPECT_EQ(std::to_integer<int>(image->row(4)[4 * 4 + 3]), 0);  // nothing drawn: transparent

  // An object whose effect does not draw yet is left out, said once, and the frames
  // are written all the same.
  const std::string text = folder.writeFile("text.svj2", project(kText)).string();
  const ToolRun partly = cli(folder, "'" + text + "' --frames 0-2 -o '" + folder.path().string() + "/f_%02d.png' --depth 16");
  EXPECT_EQ(partly.status, Cli::kPartlyFailed) << partly.output;
  EXPECT_NE(partly.output.find("frame 0: object left out: [テキスト] on layer 1"), std::string::npos) << partly.output;
  EXPECT_EQ(partly.output.find("frame 1:"), std::string::npos) << partly.output;
  for (const char* name : {"f_00.png", "f_01.png", "f_02.png"}) EXPECT_TRUE(std::filesystem::exists(folder.path() / name));
}

TEST(CliRender, RefusesWrongCommandLinesAndUnusableFiles) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"render"},
           {"render", "p.svj2", "-o", "x.png"},
           {"render", "p.svj2", "--frame", "1"},
           {"render", "p.svj2", "--frame", "1", "-o", "x.jpg"},
           {"render", "p.svj2", "--frames", "3-1", "-o", "x%d.png"},
           {"render", "p.svj2", "--frames", "0-3", "-o", "x.png"},
           {"render", "p.svj2", "--frame", "1", "-o", "x%s.png"},
           {"render", "p.svj2", "--frame", "1", "--frames", "1-2", "-o", "x%d.png"},
           {"render", "p.svj2", "--frame", "1", "-o", "x.png", "--depth", "12"}}) {
    const CliTest::Outcome outcome = CliTest::run(arguments);
    EXPECT_EQ(outcome.status, Cli::kUnreadable) << arguments.back();
    EXPECT_NE(outcome.err.find("see sorvel2-cli --help"), std::string::npos) << outcome.err;
  }

  TestSupport::TempDirectory folder;
  const std::string good = folder.writeFile("good.svj2", project()).string();
  const std::string out = folder.path().string() + "/x.png";
  const ToolRun missingScene = cli(folder, "'" + good + "' --scene 4 --frame 0 -o '" + out + "'");
  EXPECT_EQ(missingScene.status, Cli::kUnreadable);
  EXPECT_NE(missingScene.output.find("no scene 4"), std::string::npos) << missingScene.output;
  EXPECT_EQ(cli(folder, "'" + folder.path().string() + "/none.svj2' --frame 0 -o '" + out + "'").status,
            Cli::kUnreadable);
  const ToolRun unwritable = cli(folder, "'" + good + "' --frame 0 -o '" + folder.path().string() + "/no/x.png'");
  EXPECT_EQ(unwritable.status, Cli::kUnreadable);
  EXPECT_NE(unwritable.output.find("cannot be written"), std::string::npos) << unwritable.output;
  EXPECT_FALSE(std::filesystem::exists(out));
}

// The example project of the README, carried to a folder of its own as a user would:
// its media are found below the new folder, and frame 30 shows the background, the
// bars, and the nested scene with its star.
TEST(CliRender, TheExampleProjectShowsItsPicturesFiguresAndNestedScene) {
  TestSupport::TempDirectory folder;
  const std::filesystem::path examples = SORVEL_EXAMPLES_DIR;
  std::filesystem::copy(examples, folder.path() / "examples", std::filesystem::copy_options::recursive);
  const std::string out = (folder.path() / "demo.png").string();
  const ToolRun run = cli(folder, "'" + (folder.path() / "examples" / "demo.svj2").string() + "' --frame 30 -o '" + out + "'");
  ASSERT_EQ(run.status, Cli::kSuccess) << run.output;
  const auto image = readPng(out);
  ASSERT_EQ(image->width(), 1280u);
  const auto rgba = [&](std::uint32_t x, std::uint32_t y) {
    const std::byte* p = image->row(y) + x * 4;
    return std::array<int, 4>{std::to_integer<int>(p[0]), std::to_integer<int>(p[1]), std::to_integer<int>(p[2]),
                              std::to_integer<int>(p[3])};
  };
  EXPECT_EQ(rgba(5, 5), (std::array<int, 4>{0x20, 0x28, 0x40, 255}));    // the background figure
  EXPECT_EQ(rgba(200, 360), (std::array<int, 4>{255, 255, 255, 255}));  // the bars, four times their size
  EXPECT_EQ(rgba(400, 360), (std::array<int, 4>{255, 0, 0, 255}));
  EXPECT_EQ(rgba(700, 200), (std::array<int, 4>{0x10, 0x30, 0x20, 255}));  // the nested scene
  EXPECT_EQ(rgba(960, 360), (std::array<int, 4>{0xff, 0xcc, 0x00, 255}));  // its star's middle
}

}  // namespace
