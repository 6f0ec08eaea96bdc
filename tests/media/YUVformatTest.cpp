// The YUV colour tables: the matrices built from each entry, applied as the colour matrix
// passes apply them, against colours worked out by hand from the coefficients; the
// automatic choice by height; the texts that stop the start.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "media/ColorTableText.h"
#include "media/image/YUVformat.h"
#include "media/reference/FramePassReference.h"
#include "system/Exception.h"
#include "system/IniFile.h"
#include "system/Log.h"

namespace {

using Media::Rgba;
using Media::YUVformat;

// What a colour matrix pass makes of one pixel.
Rgba apply(Media::FramePass pass, const Media::ColorMatrixConstants& matrix, const Rgba& pixel) {
  Media::PassImage source(1, 1);
  source.set(0, 0, pixel);
  return Media::framePassReference(pass, Media::constantBytes(matrix), &source, nullptr, 1, 1).color.at(0, 0);
}

Rgba toRgb(const Media::ColorMatrixConstants& matrix, const Rgba& pixel) {
  return apply(Media::FramePass::ColorMatrixAddFirst, matrix, pixel);
}

Rgba toYuv(const Media::ColorMatrixConstants& matrix, const Rgba& pixel) {
  return apply(Media::FramePass::ColorMatrixAddLast, matrix, pixel);
}

void expectNear(const Rgba& actual, const std::array<float, 3>& expected, float scale = 1.0f) {
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(actual[i] * scale, expected[i], 2e-4f * scale) << "component " << i;
}

class ColorTables : public ::testing::Test {
 protected:
  YUVformat read(const std::string& text) {
    ini_.loadMemory(text);
    return YUVformat(ini_);
  }

  System::IniFile ini_;
};

constexpr float b(int value) { return static_cast<float>(value) / 255.0f; }
constexpr float yc48(int value) { return static_cast<float>(value) / 32767.0f; }

TEST_F(ColorTables, EightBitYuvReadsAsHandWorked) {
  const YUVformat tables = read(MediaTest::kColorTableText);
  const YUVformat::ColorValues& bt601 = tables.YUV2RGB()[0];
  // Packed YUY2 reads Cb, Y, Cr. Limited white and black.
  expectNear(toRgb(bt601.limited, {b(128), b(235), b(128), 0}), {1, 1, 1});
  expectNear(toRgb(bt601.limited, {b(128), b(16), b(128), 0}), {0, 0, 0});
  // Y 81, Cb 90, Cr 240: y = 65/219, cb = -38/224, cr = 112/224; R = y + 1.402 cr,
  // G = y - 0.344136 cb - 0.714136 cr, B = y + 1.772 cb. Nothing is clamped.
  expectNear(toRgb(bt601.limited, {b(90), b(81), b(240), 0}), {0.997804f, -0.001884f, -0.003803f});
  // Full range: y = 76/255, cb = -43/255, cr = 127/255.
  expectNear(toRgb(bt601.full, {b(128), b(255), b(128), 0}), {1, 1, 1});
  expectNear(toRgb(bt601.full, {b(85), b(76), b(255), 0}), {0.996290f, 0.000402f, -0.000769f});
  // BT.709 limited, Y 63, Cb 102, Cr 240: R = y + 1.5748 cr, G = y - 0.187324 cb -
  // 0.468124 cr, B = y + 1.8556 cb with y = 47/219, cb = -26/224, cr = 112/224.
  expectNear(toRgb(tables.YUV2RGB()[1].limited, {b(102), b(63), b(240), 0}), {1.002012f, 0.002293f, -0.000770f});
  // Alpha is 1 whatever was read.
  EXPECT_FLOAT_EQ(toRgb(bt601.limited, {b(128), b(16), b(128), 0})[3], 1.0f);
}

TEST_F(ColorTables, Yc48ReadsAsHandWorked) {
  const YUVformat tables = read(MediaTest::kColorTableText);
  const YUVformat::ColorValues& bt601 = tables.YUV2RGB()[0];
  // YC48 keeps Y, Cb, Cr in order, Y from 0 to 4096.
  expectNear(toRgb(bt601.yc48, {yc48(4096), 0, 0, 0}), {1, 1, 1});
  expectNear(toRgb(bt601.yc48, {yc48(2048), 0, yc48(1024), 0}), {0.8505f, 0.321466f, 0.5f});
  expectNear(toRgb(bt601.yc48, {yc48(2048), yc48(-1024), 0, 0}), {0.5f, 0.586034f, 0.057f});
}

TEST_F(ColorTables, RgbWritesAsHandWorked) {
  const YUVformat tables = read(MediaTest::kColorTableText);
  const YUVformat::ColorValues& bt601 = tables.RGB2YUV()[0];
  const YUVformat::ColorValues& bt709 = tables.RGB2YUV()[1];
  // Limited BT.601 white: 16 + 219 = 235 over 128; red: Y = 16 + 219 * 0.299,
  // Cb = 128 - 224 * 0.168736, Cr = 128 + 224 * 0.5. In 8-bit steps.
  expectNear(toYuv(bt601.limited, {1, 1, 1, 1}), {235, 128, 128}, 255);
  expectNear(toYuv(bt601.limited, {1, 0, 0, 1}), {81.481f, 90.203f, 240.0f}, 255);
  // Limited BT.709 green: Y = 16 + 219 * 0.7152, Cb = 128 - 224 * 0.385428,
  // Cr = 128 - 224 * 0.454153.
  expectNear(toYuv(bt709.limited, {0, 1, 0, 1}), {172.629f, 41.664f, 26.270f}, 255);
  // Full BT.709 red: Y = 255 * 0.2126, Cb = 128 - 255 * 0.114572, Cr = 128 + 127.5,
  // above the range before the store clamps it.
  expectNear(toYuv(bt709.full, {1, 0, 0, 1}), {54.213f, 98.784f, 255.5f}, 255);
  // YC48 red: Y = 4096 * 0.299, Cb = -4096 * 0.168736, Cr = 2048, in 16-bit steps.
  expectNear(toYuv(bt601.yc48, {1, 0, 0, 1}), {1224.704f, -691.143f, 2048.0f}, 32767);
  expectNear(toYuv(bt601.yc48, {1, 1, 1, 1}), {4096, 0, 0}, 32767);
}

TEST_F(ColorTables, AutomaticChoiceGoesByHeight) {
  const YUVformat tables = read(MediaTest::kColorTableText);
  const YUVformat::ColorTable& table = tables.YUV2RGB();
  EXPECT_EQ(table.select(0, 719).name, L"BT.601");
  EXPECT_EQ(table.select(0, 720).name, L"BT.709");
  // A space given by index wins over the height; an index past the end is the last.
  EXPECT_EQ(table.select(1, 1080).name, L"BT.601");
  EXPECT_EQ(table.select(2, 100).name, L"BT.709");
  EXPECT_EQ(table.select(9, 100).name, L"BT.709");
  EXPECT_EQ(table.find(L"BT.709"), 1);
  EXPECT_EQ(table.find(L"BT.2020"), -1);

  // One entry is chosen whatever its limit; of equal limits the later one wins, and a
  // higher limit earlier in the table is not overtaken by a lower one.
  const YUVformat single = read("[YUV2RGB]\n0=Only,1080,1,0,0,0,1,0,0,0,1\n[RGB2YUV]\n0=Only,1080,1,0,0,0,1,0,0,0,1\n");
  EXPECT_EQ(single.YUV2RGB().select(0, 10).name, L"Only");
  const YUVformat ties = read(
      "[YUV2RGB]\n0=A,0,1,0,0,0,1,0,0,0,1\n1=B,720,1,0,0,0,1,0,0,0,1\n2=C,720,1,0,0,0,1,0,0,0,1\n"
      "3=D,480,1,0,0,0,1,0,0,0,1\n[RGB2YUV]\n0=A,0,1,0,0,0,1,0,0,0,1\n");
  EXPECT_EQ(ties.YUV2RGB().select(0, 1080).name, L"C");
  EXPECT_EQ(ties.YUV2RGB().select(0, 600).name, L"D");
}

TEST_F(ColorTables, EntriesEndAtTheFirstMissingKeyAndAreLogged) {
  std::vector<std::string> lines;
  System::Log::setHandler([&](const System::Log::Type& type, const char* place, const char* message) {
    if (std::string(type.name) == "INFO") lines.push_back(std::string(place) + " " + message);
  });
  const YUVformat tables =
      read("[YUV2RGB]\n0=A,0,1,0,0,0,1,0,0,0,1\n2=C,0,1,0,0,0,1,0,0,0,1\n[RGB2YUV]\n0=B,0,1,0,0,0,1,0,0,0,1\n");
  System::Log::resetHandler();
  EXPECT_EQ(tables.YUV2RGB().size(), 1u);
  EXPECT_EQ(lines, (std::vector<std::string>{"Media::YUVformat::InitializeColorTable [YUV2RGB] 0: A",
                                             "Media::YUVformat::InitializeColorTable [RGB2YUV] 0: B"}));
}

TEST_F(ColorTables, BrokenTablesStopTheStart) {
  const auto failure = [&](const std::string& text) -> std::string {
    try {
      read(text);
    } catch (const System::NoteException& e) {
      return e.message() + " | " + e.what();
    }
    return "no exception";
  };
  const std::string tenFields = failure("[YUV2RGB]\n0=A,0,1,0,0,0,1,0,0,1\n[RGB2YUV]\n0=B,0,1,0,0,0,1,0,0,0,1\n");
  EXPECT_EQ(tenFields.substr(0, tenFields.find(" | ")), "yuv color setting invalid");
  EXPECT_NE(tenFields.find("Media::YUVformat::ColorValues::ColorValues"), std::string::npos);
  EXPECT_NE(tenFields.find("section=YUV2RGB key=0"), std::string::npos) << tenFields;
  EXPECT_EQ(failure("[YUV2RGB]\n0=A,0,1,0,0,0,1,0,0,0,1\n").substr(0, 20), "no yuv color setting");
  EXPECT_EQ(failure("[RGB2YUV]\n0=B,0,1,0,0,0,1,0,0,0,1\n").substr(0, 20), "no yuv color setting");
}

TEST_F(ColorTables, TheInstallationOffersBt601AndBt709BothWays) {
  ini_.loadFile(L"" SORVEL_SOURCE_DIR "/data/system.conf");
  const YUVformat tables(ini_);
  for (const YUVformat::ColorTable* table : {&tables.YUV2RGB(), &tables.RGB2YUV()}) {
    EXPECT_EQ(table->select(0, 480).name, L"BT.601");
    EXPECT_EQ(table->select(0, 1080).name, L"BT.709");
  }
  // The installation's BT.601 is the table above, coefficient for coefficient.
  ini_.loadMemory(MediaTest::kColorTableText);
  const YUVformat reference(ini_);
  const auto& installed = tables.YUV2RGB()[0].limited.transform;
  const auto& expected = reference.YUV2RGB()[0].limited.transform;
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(installed[i], expected[i], 1e-5f) << i;
}

}  // namespace
