// Figures drawn through Qt into 16-bit premultiplied images, held against pixels worked
// out by hand: exact where a pixel is wholly in or out, loose only on antialiased rims.
// SVG files are written here, small enough to know every pixel.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include "media/figure/FigureResource.h"
#include "media/image/ImageBuffer.h"
#include "platform/qt/QtFigureRasterizer.h"
#include "support/TempDirectory.h"
#include "system/Exception.h"
#include "system/FileName.h"

namespace {

using Pixel = std::array<std::uint16_t, 4>;
using Resource::FigureResource;

constexpr Pixel kClear{0, 0, 0, 0};
constexpr Pixel kRed{65535, 0, 0, 65535};

Pixel at(const Media::ImageBuffer& image, std::uint32_t x, std::uint32_t y) {
  const auto* p = reinterpret_cast<const std::uint16_t*>(image.row(y)) + std::size_t{x} * 4;
  return {p[0], p[1], p[2], p[3]};
}

bool sameImage(const Media::ImageBuffer& a, const Media::ImageBuffer& b) {
  if (a.width() != b.width() || a.height() != b.height()) return false;
  for (std::uint32_t y = 0; y < a.height(); ++y) {
    for (std::uint32_t x = 0; x < a.width(); ++x) {
      if (at(a, x, y) != at(b, x, y)) return false;
    }
  }
  return true;
}

class Figures : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { FigureResource::setRasterizerFactory(Platform::createQtFigureRasterizer); }

  void SetUp() override {
    install_.writeFile("data/Figure/b.svg", kTwoColours);
    install_.writeFile("data/Figure/a.svg", kBlackSquares);
    install_.writeFile("data/Figure/broken.svg", "<svg xmlns='http://www.w3.org/2000/svg'><rect");
    System::FileName::initializeVariableList(install_.wide());
    figures_ = std::make_unique<FigureResource>();
  }

  std::shared_ptr<Media::ImageBuffer> draw(const wchar_t* name, std::uint32_t size, float line, bool fit = false,
                                           Media::FigureColor color = {1, 0, 0, 1}) {
    return figures_->draw(figures_->find(name), size, size, color, line, fit);
  }

  // Two black squares side by side, 8 by 4.
  static constexpr const char* kBlackSquares =
      "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4' viewBox='0 0 8 4'>"
      "<rect width='4' height='4' fill='#000000'/>"
      "<rect x='4' width='4' height='4' style='fill:black;fill-opacity:0.5'/></svg>";
  // Red on the left, green on the right.
  static constexpr const char* kTwoColours =
      "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4' viewBox='0 0 8 4'>"
      "<rect width='4' height='4' fill='red'/><rect x='4' width='4' height='4' fill='rgb(0,255,0)'/></svg>";

  TestSupport::TempDirectory install_;
  std::unique_ptr<FigureResource> figures_;
};

TEST_F(Figures, ListHoldsTheBuiltInsThenTheFolderByName) {
  const std::vector<std::wstring> expected{L"背景", L"円",   L"四角形", L"三角形", L"五角形", L"六角形",
                                           L"星型", L"ハート", L"a",      L"b",      L"broken"};
  EXPECT_EQ(FigureResource::listNames(), expected);
  ASSERT_EQ(figures_->figures().size(), expected.size());
  const std::int32_t fillModes[] = {1, 3, 2, 0, 0, 0, 0, 0};
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(figures_->figures()[i].name, expected[i]);
    EXPECT_EQ(figures_->figures()[i].fillMode, fillModes[i]);
    EXPECT_NE(figures_->figures()[i].path, nullptr);
  }
  EXPECT_EQ(figures_->find(L"a").path, nullptr);
  EXPECT_EQ(figures_->find(L"a").fileName, (install_.path() / "data/Figure/a.svg").wstring());
  const Resource::Figure unknown = figures_->find(L"/somewhere/else.svg");
  EXPECT_EQ(unknown.path, nullptr);
  EXPECT_EQ(unknown.fileName, L"/somewhere/else.svg");
}

TEST_F(Figures, BackgroundFillsEveryPixelPremultiplied) {
  const auto image = draw(L"背景", 3, 5.0f, false, {1.0f, 0.5f, 0.0f, 0.5f});
  ASSERT_EQ(image->format(), Media::Format::Rgba16Unorm);
  for (std::uint32_t y = 0; y < 3; ++y) {
    for (std::uint32_t x = 0; x < 3; ++x) EXPECT_EQ(at(*image, x, y), (Pixel{32768, 16384, 0, 32768}));
  }
}

TEST_F(Figures, RectangleFillsWithoutLineAndStrokesInsideWithOne) {
  const auto filled = draw(L"四角形", 16, 0.0f);
  for (std::uint32_t y = 0; y < 16; ++y) {
    for (std::uint32_t x = 0; x < 16; ++x) ASSERT_EQ(at(*filled, x, y), kRed) << x << "," << y;
  }
  // A stroke of 2 on pixel edges: the outline shrinks to 1 .. 15, so the stroke covers
  // exactly the two outer rows and columns.
  const auto stroked = draw(L"四角形", 16, 2.0f);
  for (std::uint32_t y = 0; y < 16; ++y) {
    for (std::uint32_t x = 0; x < 16; ++x) {
      const bool rim = x < 2 || y < 2 || x >= 14 || y >= 14;
      ASSERT_EQ(at(*stroked, x, y), rim ? kRed : kClear) << x << "," << y;
    }
  }
}

TEST_F(Figures, CircleIsCentredAndLeavesTheCornersClear) {
  const auto circle = draw(L"円", 16, 0.0f, false, {1, 1, 1, 1});
  for (std::uint32_t y = 5; y < 11; ++y) {
    for (std::uint32_t x = 5; x < 11; ++x) EXPECT_EQ(at(*circle, x, y), (Pixel{65535, 65535, 65535, 65535}));
  }
  for (const auto& [x, y] : {std::pair{0u, 0u}, {15u, 0u}, {0u, 15u}, {15u, 15u}, {1u, 1u}}) {
    EXPECT_EQ(at(*circle, x, y), kClear) << x << "," << y;
  }
  // Premultiplied: white with any coverage has its colour equal to its alpha; the rim
  // pixels at the middle of each side are partly covered, and the same on all four.
  for (std::uint32_t y = 0; y < 16; ++y) {
    for (std::uint32_t x = 0; x < 16; ++x) {
      const Pixel p = at(*circle, x, y);
      ASSERT_TRUE(p[0] == p[3] && p[1] == p[3] && p[2] == p[3]) << x << "," << y;
    }
  }
  const std::uint16_t rim = at(*circle, 0, 8)[3];
  EXPECT_GT(rim, 0);
  EXPECT_LT(rim, 65535);
  EXPECT_NEAR(at(*circle, 15, 8)[3], rim, 2);
  EXPECT_NEAR(at(*circle, 8, 0)[3], rim, 2);
}

TEST_F(Figures, StrokeKeepsTheMiddleClearUntilItReachesTheInset) {
  // The triangle's inscribed circle has a radius of a quarter of the side, around the
  // middle. A stroke of 2 shrinks the outline into 1 .. 23: its base lies at y = 17.5,
  // and the stroke covers the pixel row 17 whole.
  const auto hollow = draw(L"三角形", 24, 2.0f);
  EXPECT_EQ(at(*hollow, 12, 12), kClear);
  EXPECT_EQ(at(*hollow, 12, 17), kRed);
  EXPECT_EQ(at(*hollow, 12, 19), kClear);
  // From inset × side (12 pixels) on, the figure is filled, as without a line...
  const auto filled = draw(L"三角形", 24, 0.0f);
  EXPECT_EQ(at(*filled, 12, 12), kRed);
  EXPECT_TRUE(sameImage(*draw(L"三角形", 24, 12.0f), *filled));
  EXPECT_TRUE(sameImage(*draw(L"三角形", 24, 40.0f), *filled));
  // ...unless the line is fitted, which keeps it at the widest hollow stroke.
  const auto fitted = draw(L"三角形", 24, 40.0f, true);
  EXPECT_TRUE(sameImage(*fitted, *draw(L"三角形", 24, 12.0f, true)));
  EXPECT_FALSE(sameImage(*fitted, *filled));
}

TEST_F(Figures, MonochromeFileTakesTheColourAndKeepsItsAlpha) {
  const auto image = draw(L"a", 0, 0.0f);
  EXPECT_EQ(image->width(), 0u);
  const auto blue = figures_->draw(figures_->find(L"a"), 8, 4, {0, 0, 1, 1}, 0.0f, false);
  EXPECT_EQ(at(*blue, 1, 1), (Pixel{0, 0, 65535, 65535}));
  const Pixel half = at(*blue, 6, 2);
  EXPECT_EQ(half[0], 0);
  EXPECT_NEAR(half[2], 32768, 1);
  EXPECT_EQ(half[2], half[3]);
  // Stretched over twice the width.
  const auto wide = figures_->drawFile(figures_->find(L"a").fileName, 16, 4, {0, 1, 0, 1});
  EXPECT_EQ(at(*wide, 7, 2), (Pixel{0, 65535, 0, 65535}));
  EXPECT_NEAR(at(*wide, 8, 2)[3], 32768, 1);
}

TEST_F(Figures, FileOfSeveralColoursKeepsThem) {
  const auto image = figures_->draw(figures_->find(L"b"), 8, 4, {0, 0, 1, 1}, 0.0f, false);
  EXPECT_EQ(at(*image, 1, 1), kRed);
  EXPECT_EQ(at(*image, 6, 1), (Pixel{0, 65535, 0, 65535}));
}

TEST_F(Figures, UnreadableFilesAreRefusedWithAMessage) {
  const std::wstring broken = figures_->find(L"broken").fileName;
  EXPECT_FALSE(figures_->canOpen(broken));
  EXPECT_FALSE(figures_->canOpen(L"/no/such/figure.svg"));
  EXPECT_TRUE(figures_->canOpen(figures_->find(L"b").fileName));
  EXPECT_THROW(figures_->draw(figures_->find(L"broken"), 8, 8, {1, 1, 1, 1}, 0.0f, false), System::Exception);
  try {
    figures_->drawFile(L"/no/such/figure.svg", 8, 8, {1, 1, 1, 1});
    FAIL();
  } catch (const System::Exception& exception) {
    EXPECT_NE(exception.text().find("figure.svg"), std::string::npos) << exception.text();
  }
}

TEST_F(Figures, RenderThreadsDrawAtOnceAsOneThreadDoes) {
  const auto star = draw(L"星型", 40, 3.0f);
  const auto file = draw(L"a", 8, 0.0f, false, {0, 1, 0, 1});
  std::vector<int> same(8, 0);
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&, i] {
      bool equal = true;
      for (int round = 0; round < 10; ++round) {
        equal = equal && (i % 2 == 0 ? sameImage(*draw(L"星型", 40, 3.0f), *star)
                                     : sameImage(*draw(L"a", 8, 0.0f, false, {0, 1, 0, 1}), *file));
      }
      same[static_cast<std::size_t>(i)] = equal ? 1 : 0;
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(same, std::vector<int>(8, 1));
}

}  // namespace
