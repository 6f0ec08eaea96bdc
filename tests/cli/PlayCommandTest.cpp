// sorvel2-cli play as a user runs it: a project with one sound played on SDL's disk
// driver, whose file holds what the player handed to the device, and command lines that
// are refused. Nothing about its pace is asserted.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "support/TempDirectory.h"

namespace {

struct ToolRun {
  int status;
  std::string output;
};

ToolRun play(const TestSupport::TempDirectory& folder, const std::string& arguments) {
  const std::string command = "SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE='" + folder.path().string() + "/played.raw' '" +
                              SORVEL2_CLI_EXECUTABLE "' play " + arguments + " >'" + folder.path().string() +
                              "/out.txt' 2>&1";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), folder.readFile("out.txt")};
}

template <class T>
void put(std::string& bytes, T value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// One second of float stereo at 48 kHz, left 0.5 and right 0.25.
std::string wave() {
  std::string data;
  for (int n = 0; n < 48000; ++n) {
    put(data, 0.5f);
    put(data, 0.25f);
  }
  std::string file = "RIFF";
  put(file, static_cast<std::uint32_t>(36 + data.size()));
  file += "WAVEfmt ";
  put(file, std::uint32_t{16});
  put(file, std::uint16_t{3});
  put(file, std::uint16_t{2});
  put(file, std::uint32_t{48000});
  put(file, std::uint32_t{48000 * 8});
  put(file, std::uint16_t{8});
  put(file, std::uint16_t{32});
  file += "data";
  put(file, static_cast<std::uint32_t>(data.size()));
  return file + data;
}

TEST(CliPlay, TheSoundOfTheSceneLandsOnTheDeviceAndTheRunIsReported) {
  TestSupport::TempDirectory folder;
  const std::string sound = folder.writeFile("tone.wav", wave()).string();
  const std::string project =
      folder
          .writeFile("sound.svj2", "[project]\nversion=2001801\n[scene.0]\nscene=0\nvideo.width=16\nvideo.height=8\n"
                                   "video.rate=30\nvideo.scale=1\naudio.rate=48000\n[0]\nlayer=0\nframe=0,14\n"
                                   "[0.0]\neffect.name=音声ファイル\nファイル=" +
                                       sound + "\n[0.1]\neffect.name=音声再生\n")
          .string();
  const ToolRun run = play(folder, "'" + project + "'");
  ASSERT_EQ(run.status, Cli::kSuccess) << run.output;
  for (const char* line : {"frames rendered in time: ", " of 15\n", "frames dropped: ", "audio underruns: ",
                           "frame time: mean "}) {
    EXPECT_NE(run.output.find(line), std::string::npos) << line << "\n" << run.output;
  }
  // Silence until the clock reached the first frame, then the sound at full volume.
  const std::string played = folder.readFile("played.raw");
  std::vector<float> samples(played.size() / sizeof(float));
  std::memcpy(samples.data(), played.data(), samples.size() * sizeof(float));
  std::size_t first = 0;
  while (first < samples.size() && samples[first] == 0.0f) ++first;
  ASSERT_LT(first + 2, samples.size()) << run.output;
  EXPECT_EQ(samples[first], 0.5f);
  EXPECT_EQ(samples[first + 1], 0.25f);
}

TEST(CliPlay, RefusesAWrongCommandLine) {
  TestSupport::TempDirectory folder;
  const std::string project = "'" + folder.path().string() + "/none.svj2'";
  for (const std::string& arguments : {project + " --speed 5", project + " --frames 9-3", std::string("--frames 0-1"),
                                       project + " --scene x", project}) {
    EXPECT_EQ(play(folder, arguments).status, Cli::kUnreadable) << arguments;
  }
}

}  // namespace
