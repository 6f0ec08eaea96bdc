// Every test program starts here: headless Qt, dummy audio and a fresh XDG_DATA_HOME,
// so that no test touches a real user's files or needs a display or a sound card.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

#include "support/TempDirectory.h"

namespace TestSupport {

namespace {
TempDirectory* dataHomeDirectory = nullptr;
}

const std::filesystem::path& dataHome() { return dataHomeDirectory->path(); }

}  // namespace TestSupport

int main(int argc, char** argv) {
  TestSupport::TempDirectory dataHome;
  TestSupport::dataHomeDirectory = &dataHome;
  setenv("XDG_DATA_HOME", dataHome.path().c_str(), 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  ::testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  TestSupport::dataHomeDirectory = nullptr;
  return result;
}
