#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "setting/DpiScaling.h"
#include "setting/FrameRateMap.h"
#include "setting/SettingService.h"
#include "support/TempDirectory.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/IniFile.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace {

using Setting::SettingService;

// An installation of its own: the program's files in install/, the user's in install/data.
class SettingServiceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(install_.path() / "data");
    System::FileName::initializeVariableList(install_.wide());
  }
  void TearDown() override {
    if (service_) System::Singleton<SettingService>::release();
    SettingService::setSystemMetricsSource(nullptr);
  }
  SettingService& start() {
    service_ = System::Singleton<SettingService>::acquire();
    return *service_;
  }
  void stop() {
    System::Singleton<SettingService>::release();
    service_ = nullptr;
  }
  TestSupport::TempDirectory install_;
  SettingService* service_ = nullptr;
};

TEST_F(SettingServiceTest, UsersFileOverridesTheInstallationKeyByKey) {
  install_.writeFile("style.conf", "[Layout]\r\nLayerHeight=20\r\nScrollBarSize=12\r\n[Color]\r\nText=ffffff\r\n");
  install_.writeFile("data/style.conf", "[Layout]\r\nLayerHeight=26\r\n");
  install_.writeFile("system.conf", "[Config]\r\nPixelFormat=10\r\nShadowBufferSize=1024\r\n");
  install_.writeFile("data/system.conf", "[Config]\r\nShadowBufferSize=2048\r\n");
  SettingService& settings = start();
  EXPECT_EQ(settings.layout()["LayerHeight"].toInt(), 26);
  EXPECT_EQ(settings.layout()["ScrollBarSize"].toInt(), 12);
  EXPECT_EQ(settings.color()["Text"].text, "ffffff");
  EXPECT_EQ(settings.config()["ShadowBufferSize"].toInt(), 2048);
  EXPECT_EQ(settings.config()["PixelFormat"].toInt(), 10);
  EXPECT_TRUE(settings.config()["Missing"].empty());
}

// The tuning files say how large a file the program reads whole; a value that does not
// make sense leaves the built-in limit.
TEST_F(SettingServiceTest, TheReadLimitComesFromTheSystemFile) {
  install_.writeFile("data/system.conf", "[Config]\r\nTextFileSizeLimit=2\r\n");
  start();
  EXPECT_EQ(System::File::readAllLimit(), 2 * 1024 * 1024);
  stop();
  install_.writeFile("data/system.conf", "[Config]\r\nTextFileSizeLimit=-1\r\n");
  start();
  EXPECT_EQ(System::File::readAllLimit(), System::File::kDefaultReadAllLimit);
}

TEST_F(SettingServiceTest, EditGroupGivesNewScenesTheirValuesAndIsWrittenAtExit) {
  install_.writeFile("data/sorvel2.ini", "[Edit]\r\nProjectWidth=1280\r\nGridX=8,x,-8\r\nProjectAudioRate=abc\r\n");
  const Edit::SceneDefaults defaults = start().sceneDefaults();
  EXPECT_EQ(defaults.width, 1280);
  EXPECT_EQ(defaults.height, 1080);
  EXPECT_EQ(defaults.audioRate, 44100);
  EXPECT_EQ(defaults.gridX, (std::vector<std::int32_t>{8, -8}));
  stop();
  const std::string ini = install_.readFile("data/sorvel2.ini");
  EXPECT_EQ(ini.rfind("[Edit]\r\nProjectWidth=1280\r\nGridX=8,x,-8\r\nProjectAudioRate=44100\r\nProjectHeight=1080\r\n", 0),
            0u)
      << ini;
  EXPECT_NE(ini.find("TempoBeatPerMinute=120.000000\r\n"), std::string::npos);
  EXPECT_NE(ini.find("EnableEnterSubmit=0\r\n"), std::string::npos);
}

TEST_F(SettingServiceTest, HighDpiScalesLayoutAndFontOnlyWhenAskedFor) {
  const std::string style = "[Layout]\r\nLayerHeight=20\r\nScrollBarSize=0\r\n[Font]\r\nControl=12,Noto Sans CJK JP\r\nLog=12\r\n";
  install_.writeFile("style.conf", style);
  SettingService::setSystemMetricsSource([] {
    Setting::SystemMetrics metrics;
    metrics.dpi = 144;
    return metrics;
  });

  install_.writeFile("data/sorvel2.ini", "[Direct3D]\r\nHighDpiMode=1\r\n");
  SettingService& scaled = start();
  EXPECT_FLOAT_EQ(scaled.dpiScale(), 1.5f);
  EXPECT_EQ(scaled.layout()["LayerHeight"].toInt(), 30);
  EXPECT_EQ(scaled.layout()["ScrollBarSize"].toInt(), 1);
  EXPECT_EQ(scaled.font()["Control"].text, "18,Noto Sans CJK JP");
  EXPECT_EQ(scaled.font()["Log"].text, "18");
  stop();
  EXPECT_EQ(install_.readFile("style.conf"), style);  // the files themselves are never written

  install_.writeFile("data/sorvel2.ini", "[Direct3D]\r\nHighDpiMode=0\r\n");
  SettingService& plain = start();
  EXPECT_FLOAT_EQ(plain.dpiScale(), 1.0f);
  EXPECT_EQ(plain.layout()["LayerHeight"].toInt(), 20);
  EXPECT_EQ(plain.font()["Control"].text, "12,Noto Sans CJK JP");
}

TEST_F(SettingServiceTest, StartHooksRunInOrderWithTheServiceReady) {
  install_.writeFile("system.conf", "[Config]\r\nExplorerWindowNum=2\r\n");
  // The hook list is process-wide and stays: the hooks write to storage that outlives them.
  static std::vector<std::string> calls;
  SettingService::addStartHook([](SettingService& s) { calls.push_back("a" + s.config()["ExplorerWindowNum"].text); });
  SettingService::addStartHook([](SettingService&) { calls.push_back("b"); });
  start();
  EXPECT_EQ(calls, (std::vector<std::string>{"a2", "b"}));
}

TEST(FrameRateMap, ConvertsBothWaysThroughTheTable) {
  System::IniFile system;
  system.loadMemory("[FrameRate]\n23.976=24000,1001\n29.97=30000,1001\n30=30\n59.94=60000,1001\n");
  const auto section = system.section("FrameRate");
  EXPECT_EQ(Setting::frameRateToRational(section, 29.97), (Setting::Rational{30000, 1001}));
  EXPECT_EQ(Setting::frameRateToRational(section, 30.0), (Setting::Rational{30, 1}));
  EXPECT_EQ(Setting::frameRateToRational(section, 12.5), (Setting::Rational{125, 10}));
  EXPECT_EQ(Setting::frameRateToRational(section, 7.0), (Setting::Rational{7, 1}));
  EXPECT_DOUBLE_EQ(Setting::rationalToFrameRate(section, 30000, 1001), 29.97);
  EXPECT_DOUBLE_EQ(Setting::rationalToFrameRate(section, 24000, 1001), 23.976);
  EXPECT_DOUBLE_EQ(Setting::rationalToFrameRate(section, 125, 10), 12.5);
  EXPECT_DOUBLE_EQ(Setting::rationalToFrameRate(section, 30, 1), 30.0);
}

}  // namespace
