// The editor's window end to end under Xvfb, with no window manager: a portable
// installation starts with a given sorvel2.ini and style.conf, a separator is dragged
// with xdotool, the screen is read back with ImageMagick's import, and the values the
// program writes on the way down are checked. Skips where Xvfb or the tools are missing.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "support/TempDirectory.h"

namespace {

namespace fs = std::filesystem;

int shell(const std::string& command) {
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool installed(const char* tool) { return shell(std::string("command -v ") + tool + " >/dev/null 2>&1") == 0; }

void writeFile(const fs::path& path, const std::string& text) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

std::string readFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// The value of `key` in `[section]` of an ini text, or "" when missing.
std::string iniValue(const std::string& ini, const std::string& section, const std::string& key) {
  const std::size_t start = ini.find("[" + section + "]\r\n");
  if (start == std::string::npos) return {};
  const std::size_t end = ini.find("\r\n[", start + 1);
  const std::size_t at = ini.find("\r\n" + key + "=", start);
  if (at == std::string::npos || at > end) return {};
  const std::size_t from = at + key.size() + 3;
  return ini.substr(from, ini.find("\r\n", from) - from);
}

// Colours of the style file, one for each painted part, so pixels say what they are.
constexpr const char* kStyle =
    "[Color]\r\nBackground=202020\r\nWindowSeparator=ff0000\r\nWindowBorder=0000ff\r\nFooter=00ff00\r\n"
    "TitleHeader=303030\r\n[Layout]\r\nWindowSeparatorSize=4\r\nFooterHeight=20\r\n";

class XvfbRun : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* tool : {"Xvfb", "xdotool", "import"}) {
      if (!installed(tool)) GTEST_SKIP() << tool << " is not installed: the end-to-end window tests need Xvfb, "
                                         << "xdotool and ImageMagick (tools/install-deps.sh installs them)";
    }
    display_ = ":" + std::to_string(90 + getpid() % 400);
    const std::string lock = "/tmp/.X" + display_.substr(1) + "-lock";
    ASSERT_EQ(shell("Xvfb " + display_ + " -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 & echo $! > '" +
                    (home_.path() / "xvfb.pid").string() + "'"),
              0);
    for (int i = 0; i < 200 && !fs::exists("/tmp/.X11-unix/X" + display_.substr(1)); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ASSERT_TRUE(fs::exists("/tmp/.X11-unix/X" + display_.substr(1))) << "Xvfb did not start on " << display_;
    // A portable installation: the program and its tuning files, with data/ beside them.
    install_ = home_.path() / "install";
    fs::create_directories(install_ / "data");
    const fs::path program(SORVEL2_EXECUTABLE);
    fs::copy_file(program, install_ / "sorvel2");
    for (const auto& entry : fs::directory_iterator(program.parent_path())) {
      if (entry.path().extension() == ".conf") fs::copy_file(entry.path(), install_ / entry.path().filename());
    }
    writeFile(install_ / "data" / "style.conf", kStyle);
  }

  void TearDown() override {
    stop();
    if (!display_.empty()) shell("kill $(cat '" + (home_.path() / "xvfb.pid").string() + "') 2>/dev/null");
  }

  std::string env() const {
    return "DISPLAY=" + display_ + " QT_QPA_PLATFORM=xcb XDG_DATA_HOME='" + home_.path().string() + "' ";
  }

  void start() {
    ASSERT_EQ(shell(env() + "'" + (install_ / "sorvel2").string() + "' >'" + (home_.path() / "out.txt").string() +
                    "' 2>&1 & echo $! > '" + (home_.path() / "program.pid").string() + "'"),
              0);
    running_ = true;
  }

  // Waits for a top-level window named "Sorvel Vantor2"; false after 60 seconds.
  bool waitForWindow() {
    return shell(env() + "timeout 60 xdotool search --sync --onlyvisible --name '^Sorvel Vantor2$' >/dev/null") == 0;
  }

  // SIGTERM, then the exit status; -1 when the program did not end within 30 seconds.
  int stop() {
    if (!running_) return 0;
    running_ = false;
    const std::string pid = "$(cat '" + (home_.path() / "program.pid").string() + "')";
    shell("kill -TERM " + pid);
    for (int i = 0; i < 600; ++i) {
      if (shell("kill -0 " + pid + " 2>/dev/null") != 0) return 0;
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    shell("kill -KILL " + pid);
    return -1;
  }

  QImage screenshot() {
    const fs::path shot = home_.path() / "shot.png";
    fs::remove(shot);
    EXPECT_EQ(shell(env() + "import -window root '" + shot.string() + "'"), 0);
    return QImage(QString::fromStdString(shot.string()));
  }

  // Waits until the pixel has the colour: the first paint may take a moment.
  QImage screenshotWhen(int x, int y, QRgb color) {
    QImage image;
    for (int i = 0; i < 100; ++i) {
      image = screenshot();
      if (!image.isNull() && (image.pixel(x, y) & 0xffffff) == (color & 0xffffff)) break;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return image;
  }

  void xdotool(const std::string& arguments) { EXPECT_EQ(shell(env() + "xdotool " + arguments), 0); }

  std::string ini() { return readFile(install_ / "data" / "sorvel2.ini"); }

  TestSupport::TempDirectory home_;
  std::string display_;
  fs::path install_;
  bool running_ = false;
};

TEST_F(XvfbRun, DraggingASeparatorIsWrittenBackOnTheWayDown) {
  // The warning about ordered views belongs to the first start with a renderer; a start
  // with the box open must still end at SIGTERM.
  start();
  ASSERT_TRUE(waitForWindow()) << readFile(home_.path() / "out.txt");
  ASSERT_EQ(stop(), 0) << "the program did not end at SIGTERM while starting";
  std::string written = ini();
  ASSERT_FALSE(written.empty());

  // The second start shows no box; the window stands at 0, 0 with no window manager.
  std::string given = written;
  given.replace(given.find("[Window]\r\n"), std::string("[Window]\r\n").size(),
                "[Window]\r\nx=0\r\ny=0\r\nw=1000\r\nh=600\r\n");
  writeFile(install_ / "data" / "sorvel2.ini", given);
  start();
  ASSERT_TRUE(waitForWindow()) << readFile(home_.path() / "out.txt");
  QImage shot = screenshotWhen(500, 590, qRgb(0, 255, 0));
  ASSERT_FALSE(shot.isNull());
  // Separator strip between the preview and the object list, its frames, the footer.
  EXPECT_EQ(shot.pixel(799, 100) & 0xffffff, 0xff0000u);
  EXPECT_EQ(shot.pixel(800, 100) & 0xffffff, 0xff0000u);
  EXPECT_EQ(shot.pixel(798, 100) & 0xffffff, 0x0000ffu);
  EXPECT_EQ(shot.pixel(801, 100) & 0xffffff, 0x0000ffu);
  EXPECT_EQ(shot.pixel(500, 590) & 0xffffff, 0x00ff00u);

  xdotool("mousemove 800 100 mousedown 1 mousemove 780 100 mousemove 740 100 mousemove 700 100 mouseup 1");
  shot = screenshotWhen(699, 100, qRgb(255, 0, 0));
  EXPECT_EQ(shot.pixel(699, 100) & 0xffffff, 0xff0000u);
  EXPECT_NE(shot.pixel(800, 100) & 0xffffff, 0xff0000u);
  ASSERT_EQ(stop(), 0);

  written = ini();
  // 0.8 - 100 / 1002 of the layout's width.
  EXPECT_EQ(iniValue(written, "Window.preview", "right"), "0.700200") << written;
  EXPECT_EQ(iniValue(written, "Window.object.list", "left"), "0.700200");
  EXPECT_EQ(iniValue(written, "Window.setting", "left"), "0.700200");
  EXPECT_EQ(iniValue(written, "Window.preview", "left"), "0.200000");
  EXPECT_EQ(iniValue(written, "Window", "w"), "1000");
  EXPECT_EQ(iniValue(written, "Window", "h"), "600");
}

}  // namespace
