#include <gtest/gtest.h>

#include <vector>

#include "app/CommandLine.h"
#include "system/Log.h"

namespace {

using App::CommandLineKey;

class CommandLineTest : public ::testing::Test {
 protected:
  void SetUp() override {
    System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
      if (std::string(type.name) == "INFO") lines_.push_back(std::string(place) + " | " + message);
    });
  }
  void TearDown() override { System::Log::resetHandler(); }
  std::vector<std::string> lines_;
};

TEST_F(CommandLineTest, LastProjectWinsAndOptionsAreLogged) {
  const auto map = App::parseCommandLine({L"first.svj2", L"-verbose", L"-restart", L"notes.txt", L"/p/Second.SVJ2"});
  EXPECT_EQ(map.at(CommandLineKey::Project), L"/p/Second.SVJ2");
  EXPECT_EQ(map.at(CommandLineKey::Restart), L"");
  EXPECT_EQ(map.count(CommandLineKey::Recover), 0u);
  EXPECT_EQ(lines_, (std::vector<std::string>{
                        "Edit::EditService::parseCommandLine | project : first.svj2",
                        "Edit::EditService::parseCommandLine | option : restart",
                        "Edit::EditService::parseCommandLine | project : /p/Second.SVJ2",
                    }));
}

TEST_F(CommandLineTest, OnlyTheExactRestartOptionCounts) {
  const auto map = App::parseCommandLine({L"-Restart", L"-restart=1", L"project.svj2x", L"x.svj2\\dir"});
  EXPECT_TRUE(map.empty());
  EXPECT_TRUE(lines_.empty());
}

}  // namespace
