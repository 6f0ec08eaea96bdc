// The tuning files that ship with the program: every reader of the start-up steps must
// find its keys, and every value must read in the form its reader expects.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "setting/FrameRateMap.h"
#include "system/IniFile.h"
#include "system/Text.h"

namespace {

class InstalledConfTest : public ::testing::Test {
 protected:
  static System::IniFile& load(System::IniFile& ini, const char* name) {
    ini.loadFile(System::Text::fromUtf8(std::string(SORVEL_SOURCE_DIR "/data/") + name));
    return ini;
  }
};

TEST_F(InstalledConfTest, SystemConfHoldsTheRequiredKeys) {
  System::IniFile system;
  load(system, "system.conf");
  const auto config = system.section("Config");
  for (const char* key :
       {"ShadowBufferSize", "TemporaryImageCacheSize", "PixelFormat", "MaskFormat", "TextFileSizeLimit"}) {
    EXPECT_GT(config.getValue(key).toInt(), 0) << key;
  }
  EXPECT_FALSE(config.getValue("PreviewZoom").split(",").empty());
  EXPECT_EQ(Setting::frameRateToRational(system.section("FrameRate"), 29.97), (Setting::Rational{30000, 1001}));
  EXPECT_DOUBLE_EQ(Setting::rationalToFrameRate(system.section("FrameRate"), 60000, 1001), 59.94);
  EXPECT_FALSE(system.section("KeyCode").empty());
}

TEST_F(InstalledConfTest, StyleValuesReadInTheirForms) {
  System::IniFile style;
  load(style, "style.conf");
  ASSERT_FALSE(style.section("Color").empty());
  std::array<float, 4> rgba{};
  for (const auto& entry : style.section("Color")) {
    for (const auto& element : entry.value.split(",")) {
      EXPECT_NO_THROW(element.toRGBA(rgba)) << entry.key;
    }
  }
  for (const auto& entry : style.section("Layout")) EXPECT_GT(entry.value.toInt(), 0) << entry.key;
  for (const auto& entry : style.section("Font")) {
    const auto parts = entry.value.split(",");
    EXPECT_GT(parts.at(0).toInt(), 0) << entry.key;
    EXPECT_EQ(parts.size(), 2u) << entry.key;
  }
}

}  // namespace
