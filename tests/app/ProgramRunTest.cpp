// Runs the real program headless, as a user's session or a render node would, and
// checks what it leaves on disk.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/TempDirectory.h"

namespace {

// Runs a shell script with the program's path in $PROGRAM; returns the script's exit status.
int runScript(const std::string& script) {
  const std::string command = "PROGRAM='" SORVEL2_EXECUTABLE "' QT_QPA_PLATFORM=offscreen /bin/sh -c '" + script + "'";
  const int status = std::system(command.c_str());
  return WEXITSTATUS(status);
}

TEST(ProgramRun, TerminationSignalClosesInOrderAndWritesTheIni) {
  TestSupport::TempDirectory home;
  const std::string script =
      "export XDG_DATA_HOME=" + home.path().string() +
      "; \"$PROGRAM\" >\"$XDG_DATA_HOME/out.txt\" 2>&1 & pid=$!;"
      " i=0; while ! ls \"$XDG_DATA_HOME\"/sorvel2/Log/*.log >/dev/null 2>&1 && [ $i -lt 400 ]; do sleep 0.05; i=$((i+1)); done;"
      " kill -TERM $pid; wait $pid; exit $?";
  EXPECT_EQ(runScript(script), 0) << home.readFile("out.txt");
  const auto data = home.path() / "sorvel2";
  for (const char* folder : {"Plugin", "Script", "Default", "Alias", "Figure", "Transition", "Language", "Backup", "Log"}) {
    EXPECT_TRUE(std::filesystem::is_directory(data / folder)) << folder;
  }
  const std::string ini = home.readFile("sorvel2/sorvel2.ini");
  EXPECT_NE(ini.find("[Logger]\r\nMaxViewLine=200\r\n"), std::string::npos) << ini;
  EXPECT_NE(ini.find("[Edit]\r\nProjectWidth=1920\r\n"), std::string::npos) << ini;
  int logFiles = 0;
  for (const auto& entry : std::filesystem::directory_iterator(data / "Log")) logFiles += entry.path().extension() == ".log";
  EXPECT_EQ(logFiles, 1);
}

// `sorvel2 PROJECT.svj2` opens that project at start, as its log says.
TEST(ProgramRun, TheProjectOnTheCommandLineIsOpened) {
  TestSupport::TempDirectory home;
  const std::string project = home.writeFile("show.svj2",
                                             "[project]\r\nversion=2001801\r\ndisplay.scene=2\r\n[scene.0]\r\nscene=2\r\n"
                                             "name=Opened\r\nvideo.width=640\r\nvideo.height=480\r\nvideo.rate=25\r\n"
                                             "video.scale=1\r\n")
                                  .string();
  home.writeFile("sorvel2/sorvel2.ini", "[Logger]\r\nFileLogLevel=1\r\n");  // every line reaches the file
  const std::string script =
      "export XDG_DATA_HOME=" + home.path().string() + "; \"$PROGRAM\" \"" + project +
      "\" >\"$XDG_DATA_HOME/out.txt\" 2>&1 & pid=$!;"
      " i=0; while ! grep -qs \"set current scnene\" \"$XDG_DATA_HOME\"/sorvel2/Log/*.log && [ $i -lt 400 ]; do"
      " sleep 0.05; i=$((i+1)); done;"
      " kill -TERM $pid; wait $pid; exit $?";
  EXPECT_EQ(runScript(script), 0) << home.readFile("out.txt");
  std::string log;
  for (const auto& entry : std::filesystem::directory_iterator(home.path() / "sorvel2" / "Log")) {
    log += home.readFile(std::filesystem::relative(entry.path(), home.path()).string());
  }
  EXPECT_NE(log.find("load project file : " + project), std::string::npos) << log;
  EXPECT_NE(log.find("set current scnene [Opened](2)"), std::string::npos) << log;
}

TEST(ProgramRun, FailedStartShowsOneMessageWritesNoIniAndReturnsZero) {
  TestSupport::TempDirectory home;
  // A data folder that cannot be created: the first path expansion fails.
  home.writeFile("blocked", "a file where the data folder's parent should be");
  const std::string script = "XDG_DATA_HOME=" + home.path().string() + "/blocked \"$PROGRAM\" 2>\"" +
                             home.path().string() + "/err.txt\"";
  EXPECT_EQ(runScript(script), 0);
  const std::string shown = home.readFile("err.txt");
  EXPECT_NE(shown.find("Application Exception: mkdir() failed."), std::string::npos) << shown;
  EXPECT_EQ(shown.find("Application Exception", shown.find("Application Exception") + 1), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(home.path() / "blocked" / "sorvel2" / "sorvel2.ini"));
}

}  // namespace
