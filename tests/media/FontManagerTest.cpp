// The font list with a fake font library: the style arithmetic of a lookup, unknown names,
// the user's menu order, and a face's metrics at a size. Then the same through Qt's font
// database with the fonts of this machine.
#include <gtest/gtest.h>

#include <QGuiApplication>

#include <algorithm>
#include <memory>

#include "media/font/FontFace.h"
#include "media/font/FontManager.h"
#include "platform/qt/QtFontSource.h"
#include "support/TempDirectory.h"
#include "system/FileName.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace {

using Media::FontHandle;
using Media::FontManager;

class FakeFonts : public Media::FontSource {
 public:
  std::vector<Media::FontFamily> families() override {
    return {{L"Plain", 400, 5, false, false},
            {L"Heavy", 800, 5, false, false},
            {L"Slanted Narrow", 300, 3, true, false},
            {L"Signs", 400, 5, false, true},
            {L"Plain", 700, 5, false, false}};
  }
  std::wstring systemDefaultFamily() override { return L"Plain"; }
  std::optional<Media::FontDesignMetrics> designMetrics(const FontHandle& font) override {
    if (font.family != L"Plain") return std::nullopt;
    return Media::FontDesignMetrics{1000, 800, 200, 100, 300, 50};
  }
};

FontManager fakeManager(const std::wstring& defaultFamily = L"Heavy") {
  return FontManager(std::make_unique<FakeFonts>(), defaultFamily);
}

TEST(FontManager, BoldAddsTwoHundredUpTo999AndItalicSlants) {
  const FontManager fonts = fakeManager();
  EXPECT_EQ(fonts.getFont(L"Heavy", false, false), (FontHandle{L"Heavy", 800, 5, false}));
  EXPECT_EQ(fonts.getFont(L"Heavy", true, false), (FontHandle{L"Heavy", 999, 5, false}));
  EXPECT_EQ(fonts.getFont(L"Plain", true, true), (FontHandle{L"Plain", 600, 5, true}));
  // A family whose first font is italic and narrow keeps both with or without a style.
  EXPECT_EQ(fonts.getFont(L"Slanted Narrow", false, false), (FontHandle{L"Slanted Narrow", 300, 3, true}));
  EXPECT_EQ(fonts.getFont(L"Slanted Narrow", true, false), (FontHandle{L"Slanted Narrow", 500, 3, true}));
  EXPECT_TRUE(fonts.isSymbol(L"Signs"));
  EXPECT_FALSE(fonts.isSymbol(L"Plain"));
}

TEST(FontManager, UnknownNamesGiveTheDefaultFamilyAtRegularOrSemiBold) {
  EXPECT_EQ(fakeManager().getFont(L"Not Installed", false, false), (FontHandle{L"Heavy", 400, 5, false}));
  EXPECT_EQ(fakeManager().getFont(L"", true, true), (FontHandle{L"Heavy", 600, 5, true}));
  // A default family that is not installed either falls back on the library's own.
  EXPECT_EQ(fakeManager(FontManager::kDefaultFamily).getFont(L"Not Installed", true, false),
            (FontHandle{L"Plain", 600, 5, false}));
}

TEST(FontManager, ListKeepsTheUsersOrderAndAppendsNewFonts) {
  EXPECT_EQ(fakeManager().getFontList(), (std::vector<std::wstring>{L"Plain", L"Heavy", L"Slanted Narrow", L"Signs"}));

  TestSupport::TempDirectory install;
  install.writeFile("data/sorvel2.ini", "[Font.Signs]\norder=0\n[Font.Heavy]\norder=1\n");
  System::FileName::initializeVariableList(install.wide());
  {
    System::SingletonRef<System::MainIniFile> ini;
    const FontManager fonts = fakeManager();
    EXPECT_EQ(fonts.getFontList(), (std::vector<std::wstring>{L"Signs", L"Heavy", L"Plain", L"Slanted Narrow"}));
  }
  // The order is stored, so the next start finds every font in its place.
  EXPECT_NE(install.readFile("data/sorvel2.ini").find("[Font.Slanted Narrow]\r\nlabel=Slanted Narrow\r\norder=3"),
            std::string::npos);
}

TEST(FontFace, MetricsScaleFromDesignUnits) {
  Resource::FontFace face;
  face.setMetrics({L"Plain"}, {1000, 800, 200, 100, 300, 50}, 20.0f, false, true);
  EXPECT_FLOAT_EQ(face.scale(), 0.02f);
  EXPECT_FLOAT_EQ(face.ascent(), 16.0f);
  EXPECT_FLOAT_EQ(face.lineHeight(), 22.0f);
  EXPECT_FLOAT_EQ(face.strikeThickness(), 1.0f);
  EXPECT_FLOAT_EQ(face.strikePosition(), 6.0f);
  face.setMetrics({L"Plain"}, {1000, 800, 200, 100, 300, 50}, 20.0f, true, false);
  EXPECT_FLOAT_EQ(face.lineHeight(), 20.0f);
  EXPECT_FLOAT_EQ(face.ascent(), 10.0f);
  EXPECT_FLOAT_EQ(face.strikeThickness(), 0.0f);
}

TEST(FontFace, SetFontFindsUnknownNamesThroughTheDefaultAndRefusesWhatCannotBeMade) {
  FontManager::setSourceFactory([] { return std::make_unique<FakeFonts>(); });
  System::SingletonRef<FontManager> fonts;
  Resource::FontFace face;
  face.setFont(L"Not Installed", 10.0f, false, false, false, false);
  EXPECT_EQ(face.font().family, L"Plain");
  EXPECT_FLOAT_EQ(face.lineHeight(), 11.0f);
  EXPECT_THROW(face.setFont(L"Heavy", 10.0f, false, false, false, false), System::Exception);
}

// Qt's font database needs the application object, made once for the program.
class QtFonts : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!QGuiApplication::instance()) {
      static int argc = 1;
      static char name[] = "sorvel_media_tests";
      static char* argv[] = {name, nullptr};
      static QGuiApplication application(argc, argv);
    }
  }
};

TEST_F(QtFonts, InstalledFamiliesLookUpAndMeasure) {
  const FontManager fonts(Platform::createQtFontSource(), FontManager::kDefaultFamily);
  const std::vector<std::wstring> list = fonts.getFontList();
  ASSERT_NE(std::find(list.begin(), list.end(), L"DejaVu Sans"), list.end());
  const FontHandle unknown = fonts.getFont(L"No Such Family", true, false);
  EXPECT_NE(std::find(list.begin(), list.end(), unknown.family), list.end()) << System::Text::toUtf8(unknown.family);
  EXPECT_EQ(unknown.weight, 600);

  const FontHandle dejaVu = fonts.getFont(L"DejaVu Sans", true, false);
  EXPECT_EQ(dejaVu.weight, 600);
  const std::optional<Media::FontDesignMetrics> metrics = fonts.designMetrics(dejaVu);
  ASSERT_TRUE(metrics);
  // DejaVu Sans is drawn on 2048 units to the em, with its strike line above the baseline.
  EXPECT_EQ(metrics->designUnitsPerEm, 2048);
  EXPECT_GT(metrics->ascent, 1500);
  EXPECT_GT(metrics->descent, 300);
  EXPECT_GT(metrics->strikethroughThickness, 0);
  EXPECT_GT(metrics->strikethroughPosition, 0);
}

}  // namespace
