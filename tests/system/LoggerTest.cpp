#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "support/TempDirectory.h"
#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/Logger.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"

namespace {

using System::Logger;

// Each test runs on an installation of its own: its main ini, its log folder, and the
// main ini and the logger held until the test ends.
class LoggerTest : public ::testing::Test {
 protected:
  void start(const std::string& mainIni) {
    if (!mainIni.empty()) install_.writeFile("data/sorvel2.ini", mainIni);
    std::filesystem::create_directories(install_.path() / "data");
    System::FileName::initializeVariableList(install_.wide());
    ini_ = System::Singleton<System::MainIniFile>::acquire();
    logger_ = System::Singleton<Logger>::acquire();
  }
  void TearDown() override {
    if (logger_) System::Singleton<Logger>::release();
    if (ini_) System::Singleton<System::MainIniFile>::release();
  }

  std::filesystem::path logFolder() const { return install_.path() / "data" / "Log"; }
  std::vector<std::string> logFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(logFolder())) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string onlyLogFileContent() const {
    const std::vector<std::string> names = logFiles();
    if (names.size() != 1) return "files: " + std::to_string(names.size());
    return install_.readFile("data/Log/" + names[0]);
  }

  TestSupport::TempDirectory install_;
  System::MainIniFile* ini_ = nullptr;
  Logger* logger_ = nullptr;
};

const std::regex stampedLine(R"(\[\d\d/\d\d \d\d:\d\d:\d\d\] \[([A-Z]+)\] \[([^\]]*)\] (.*))");

TEST_F(LoggerTest, DefaultsShowInfoAndUpAndWriteOnlyErrors) {
  start("");
  System::Log::verbose("T::verbose", "hidden");
  System::Log::info("T::info", "step %d", 1);
  System::Log::warn("T::warn", "careful");
  EXPECT_EQ(onlyLogFileContent(), "");
  System::Log::error("T::error", "broken");

  const Logger::View view = logger_->view();
  EXPECT_EQ(view.counter, 4u);
  ASSERT_EQ(view.lines.size(), 3u);
  std::smatch match;
  ASSERT_TRUE(std::regex_match(view.lines[2].text, match, stampedLine)) << view.lines[2].text;
  EXPECT_EQ(match[1], "INFO");
  EXPECT_EQ(match[2], "T::info");
  EXPECT_EQ(match[3], "step 1");
  EXPECT_EQ(view.lines[0].type, &System::Log::Error);

  EXPECT_EQ(onlyLogFileContent(), view.lines[0].text + "\n");
  EXPECT_EQ(logFiles()[0].rfind("sorvel2_", 0), 0u);
}

TEST_F(LoggerTest, MessageLinesBecomeSeparateViewLines) {
  start("");
  System::Log::info("T::f", "a\r\nb");
  Logger::View view = logger_->view();
  EXPECT_EQ(view.counter, 3u);
  ASSERT_EQ(view.lines.size(), 2u);
  EXPECT_EQ(view.lines[0].text, "b");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(view.lines[1].text, match, stampedLine));
  EXPECT_EQ(match[3], "a");

  // Line ends alone add nothing beyond the stamped head of the line.
  System::Log::info("T::g", "\r\n\n");
  view = logger_->view();
  EXPECT_EQ(view.counter, 4u);
  ASSERT_TRUE(std::regex_match(view.lines[0].text, match, stampedLine));
  EXPECT_EQ(match[2], "T::g");
  EXPECT_EQ(match[3], "");
}

TEST_F(LoggerTest, LongMessagesAreCutAtTheBufferSize) {
  start("[Logger]\nFileLogLevel=1\n");
  System::Log::write(System::Log::Info, "T::long", std::string(2000, 'x').c_str());
  const Logger::View view = logger_->view();
  ASSERT_EQ(view.lines.size(), 1u);
  EXPECT_EQ(view.lines[0].text.size(), 1023u);
  EXPECT_EQ(view.lines[0].text.back(), 'x');
  EXPECT_EQ(onlyLogFileContent(), view.lines[0].text);
}

TEST_F(LoggerTest, ViewSizeAndLevelsComeFromTheMainIni) {
  start("[Logger]\nMaxViewLine=3\nViewLogLevel=1\nFileLogLevel=0\n");
  for (int i = 1; i <= 5; ++i) System::Log::verbose("T::f", "m%d", i);
  const Logger::View view = logger_->view();
  EXPECT_EQ(view.counter, 6u);
  ASSERT_EQ(view.lines.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(view.lines[i].text.substr(view.lines[i].text.size() - 2), "m" + std::to_string(5 - i));
  }
  System::Log::error("T::f", "not to the file");
  EXPECT_TRUE(logFiles().empty());
}

TEST_F(LoggerTest, StartRotatesTheOldLogs) {
  for (int day = 1; day <= 5; ++day) {
    install_.writeFile("data/Log/sorvel2_2001-01-0" + std::to_string(day) + "_00-00-00-000.log", "old");
  }
  install_.writeFile("data/Log/notes.txt", "not a log");
  start("[Logger]\nMaxFileNum=2\n");
  const std::vector<std::string> names = logFiles();
  ASSERT_EQ(names.size(), 3u);
  EXPECT_EQ(names[0], "notes.txt");
  EXPECT_EQ(names[1], "sorvel2_2001-01-05_00-00-00-000.log");
  EXPECT_NE(names[2], names[1]);
}

// The file cannot be opened while the log folder is a plain file: the open throws, the
// exception's own ERROR line comes back into the logger on the same thread and must be
// dropped, not deadlock. Once the folder is there, the next line opens the file.
TEST_F(LoggerTest, OpenFailureIsSwallowedAndRetried) {
  install_.writeFile("data/sorvel2.ini", "[Logger]\nFileLogLevel=1\n");
  System::FileName::initializeVariableList(install_.wide());
  std::filesystem::remove_all(logFolder());
  install_.writeFile("data/Log", "in the way");
  ini_ = System::Singleton<System::MainIniFile>::acquire();
  logger_ = System::Singleton<Logger>::acquire();
  System::Log::info("T::f", "first");
  System::Log::info("T::f", "second");
  EXPECT_EQ(logger_->viewCounter(), 3u);

  std::filesystem::remove(logFolder());
  std::filesystem::create_directory(logFolder());
  System::Log::info("T::f", "third");
  const std::string file = onlyLogFileContent();
  EXPECT_NE(file.find("] third\n"), std::string::npos) << file;
  EXPECT_EQ(file.find("first"), std::string::npos);
  EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 1);
}

TEST_F(LoggerTest, LinesFromManyThreadsAreEachLoggedOnce) {
  start("[Logger]\nMaxViewLine=1000\n");
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 50; ++i) System::NoteException("T::thread", "failed");
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(logger_->viewCounter(), 201u);
  const std::string file = onlyLogFileContent();
  EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 200);
}

}  // namespace
