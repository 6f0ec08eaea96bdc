// What the benchmark programs share: a scratch folder of their own run, which is also
// the program's data folder (XDG_DATA_HOME) so that nothing lands in the user's, and
// the steps of the benchmark library's main.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace Bench {

// The folder of this run; empty until a ScratchDataHome is made.
inline std::filesystem::path& scratchFolder() {
  static std::filesystem::path path;
  return path;
}

// Makes the scratch folder and points the data folder at it; removes it at the end.
class ScratchDataHome {
 public:
  explicit ScratchDataHome(const std::string& prefix) {
    scratchFolder() = std::filesystem::temp_directory_path() / (prefix + "-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(scratchFolder());
    setenv("XDG_DATA_HOME", scratchFolder().c_str(), 1);
  }
  ~ScratchDataHome() { std::filesystem::remove_all(scratchFolder()); }
  ScratchDataHome(const ScratchDataHome&) = delete;
  ScratchDataHome& operator=(const ScratchDataHome&) = delete;
};

// Runs what is registered, as the library's own main does; 1 for arguments it does not know.
inline int runRegistered(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace Bench
