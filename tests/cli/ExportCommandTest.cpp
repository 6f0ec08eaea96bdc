// sorvel2-cli export as a user or a render farm runs it: the example project to AVI,
// read back through the program's reader; a numbered sequence; settings a run may set
// and the ones it may not; and SIGTERM in mid-export, which leaves an AVI that plays.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "cli/Commands.h"
#include "plugin/AviFileReader.h"
#include "plugin/InputFile.h"
#include "support/TempDirectory.h"

namespace {

struct ToolRun {
  int status;
  std::string output;
};

ToolRun cli(const TestSupport::TempDirectory& folder, const std::string& arguments) {
  const std::string command =
      "'" SORVEL2_CLI_EXECUTABLE "' export " + arguments + " >'" + folder.path().string() + "/out.txt' 2>&1";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), folder.readFile("out.txt")};
}

std::shared_ptr<Plugin::InputFile> readAvi(const std::filesystem::path& path) {
  static Plugin::AviFileReader reader;
  return reader.open(path.wstring(), 0);
}

TEST(CliExport, TheExampleProjectBecomesAnAviOfItsFramesAndSound) {
  TestSupport::TempDirectory folder;
  const std::string project = std::string(SORVEL_EXAMPLES_DIR) + "/demo.svj2";
  const ToolRun run = cli(folder, "'" + project + "' --frames 0-4 -o '" + folder.path().string() + "/demo.avi'");
  ASSERT_EQ(run.status, Cli::kSuccess) << run.output;
  EXPECT_NE(run.output.find("100.00% (5/5)"), std::string::npos) << run.output;
  const auto avi = readAvi(folder.path() / "demo.avi");
  ASSERT_TRUE(avi);
  EXPECT_EQ(avi->frameCount, 5);
  EXPECT_EQ(avi->width, 1280u);
  EXPECT_EQ(avi->sampleCount, 5 * 1600);

  const ToolRun sequence = cli(folder, "'" + project + "' --frames 10-11 --writer 連番ファイル出力 -o '" +
                                           folder.path().string() + "/seq.png'");
  ASSERT_EQ(sequence.status, Cli::kSuccess) << sequence.output;
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "seq0.png"));
  EXPECT_TRUE(std::filesystem::exists(folder.path() / "seq1.png"));
}

TEST(CliExport, RefusesWhatCannotStartWithoutWritingAnything) {
  TestSupport::TempDirectory folder;
  const std::string project = std::string(SORVEL_EXAMPLES_DIR) + "/demo.svj2";
  const std::string out = folder.path().string() + "/x.avi";
  for (const std::string& arguments :
       {"'" + project + "' -o '" + folder.path().string() + "/x.mkv'", "'" + project + "' -o '" + out + "' --set VideoType=H264",
        "'" + project + "' -o '" + out + "' --set quality=50", "'" + project + "' -o '" + out + "' --writer nothing",
        "'" + folder.path().string() + "/none.svj2' -o '" + out + "'"}) {
    const ToolRun run = cli(folder, arguments);
    EXPECT_EQ(run.status, Cli::kUnreadable) << arguments << "\n" << run.output;
  }
  EXPECT_FALSE(std::filesystem::exists(out));
}

TEST(CliExport, SigtermCancelsAtTheNextFrameAndTheAviStillPlays) {
  TestSupport::TempDirectory folder;
  // A long scene of tiny frames, so that the export is still running when the signal comes.
  const std::string project = folder
                                  .writeFile("long.svj2",
                                             "[project]\nversion=2001801\n[scene.0]\nscene=0\nvideo.width=16\n"
                                             "video.height=8\nvideo.rate=30\nvideo.scale=1\naudio.rate=48000\n[0]\n"
                                             "layer=0\nframe=0,99999\n[0.0]\neffect.name=図形\n図形の種類=背景\n"
                                             "[0.1]\neffect.name=標準描画\n")
                                  .string();
  const std::filesystem::path out = folder.path() / "long.avi";
  const pid_t child = fork();
  if (child == 0) {
    const std::string log = (folder.path() / "err.txt").string();
    freopen(log.c_str(), "w", stderr);
    execl(SORVEL2_CLI_EXECUTABLE, SORVEL2_CLI_EXECUTABLE, "export", project.c_str(), "-o", out.c_str(), nullptr);
    _exit(127);
  }
  // Waits until frames are being written, then asks the export to stop.
  for (int i = 0; i < 600 && (!std::filesystem::exists(out) || std::filesystem::file_size(out) < 100000); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  kill(child, SIGTERM);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 3) << folder.readFile("err.txt");
  const auto avi = readAvi(out);
  ASSERT_TRUE(avi);
  EXPECT_GT(avi->frameCount, 0);
  EXPECT_LT(avi->frameCount, 100000);
}

}  // namespace
