// The gallery of controls in a real X window under Xvfb: the screen read back shows the
// painted controls, and a click with xdotool turns the check button on. Skips where
// Xvfb or the tools are missing.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include <cstdlib>
#include <string>

#include <sys/wait.h>

#include "control/ControlStyle.h"
#include "support/TempDirectory.h"

namespace {

int shell(const std::string& command) {
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool installed(const char* tool) { return shell(std::string("command -v ") + tool + " >/dev/null 2>&1") == 0; }

bool near(QRgb pixel, const Media::ColorF& color) {
  const QColor expected = QColor::fromRgbF(color.r, color.g, color.b);
  return std::abs(qRed(pixel) - expected.red()) <= 2 && std::abs(qGreen(pixel) - expected.green()) <= 2 &&
         std::abs(qBlue(pixel) - expected.blue()) <= 2;
}

TEST(XvfbGallery, ControlsPaintAndAClickChecksTheCheckButton) {
  for (const char* tool : {"xvfb-run", "xdotool", "import"}) {
    if (!installed(tool)) GTEST_SKIP() << tool << " is not installed (tools/install-deps.sh installs it)";
  }
  TestSupport::TempDirectory home;
  const std::string before = (home.path() / "before.png").string();
  const std::string after = (home.path() / "after.png").string();
  // No window manager: the window stands at (40, 40) as asked. The check button's
  // middle is at (40 + 170, 40 + 22).
  const std::string script =
      std::string("'") + SORVEL_CONTROL_GALLERY + "' --quit-after 30000 & gallery=\\$!; "
      "timeout 15 xdotool search --sync --onlyvisible --name '^Controls$' >/dev/null && sleep 1 && "
      "import -window root '" + before + "' && xdotool mousemove 210 62 click 1 && sleep 1 && "
      "import -window root '" + after + "'; status=\\$?; kill \\$gallery; wait; exit \\$status";
  ASSERT_EQ(shell("QT_QPA_PLATFORM=xcb XDG_DATA_HOME='" + home.path().string() +
                  "' xvfb-run -a -s '-screen 0 640x480x24' sh -c \"" + script + "\" >/dev/null 2>&1"),
            0);
  const QImage first(QString::fromStdString(before));
  const QImage second(QString::fromStdString(after));
  ASSERT_FALSE(first.isNull());
  ASSERT_FALSE(second.isNull());
  const Window::ControlStyle style;
  EXPECT_TRUE(near(first.pixel(60, 55), style.buttonBody));      // the text button
  EXPECT_TRUE(near(first.pixel(290, 96), {0.85f, 0.35f, 0.2f, 1.0f}));  // the rectangle
  EXPECT_TRUE(near(first.pixel(180, 55), style.buttonBody));
  EXPECT_TRUE(near(second.pixel(180, 55), style.buttonBodySelect));
}

}  // namespace
