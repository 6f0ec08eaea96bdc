// The Qt main loop on the offscreen platform: posted work, timers and watched
// descriptors reach the main thread, and no exception ever crosses the loop.
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <stdexcept>
#include <thread>

#include <QImage>
#include <QWidget>

#include <memory>
#include <vector>

#include "platform/qt/QtCanvasWindow.h"
#include "platform/qt/QtPlatform.h"
#include "platform/qt/QtRenderTarget.h"
#include "system/IniFile.h"
#include "window/ClientTable.h"
#include "window/WindowService.h"
#include "system/Exception.h"
#include "system/TerminationSignals.h"
#include "system/Timer.h"

namespace {

App::Platform& platform() {
  static int argc = 1;
  static char name[] = "sorvel_app_tests";
  static char* argv[] = {name, nullptr};
  // Never destroyed: once windows have existed, Qt's own globals may go before an
  // application object that outlives main(), and its input devices would fault.
  static App::Platform* const instance = Platform::createQtPlatform(argc, argv).release();
  return *instance;
}

TEST(QtPlatform, WorkPostedFromAnotherThreadRunsOnceOnTheMainThread) {
  App::Platform& loop = platform();
  EXPECT_FALSE(loop.hasDisplay());
  const std::thread::id mainThread = std::this_thread::get_id();
  int runs = 0;
  std::thread::id ranOn;
  std::thread poster([&] {
    loop.post([&] {
      ++runs;
      ranOn = std::this_thread::get_id();
    });
    loop.post([&] { loop.quit(); });
  });
  poster.join();
  loop.run();
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(ranOn, mainThread);
}

TEST(QtPlatform, AnExceptionLeavesTheLoopAndIsRethrownAfterIt) {
  App::Platform& loop = platform();
  bool laterTaskRan = false;
  loop.post([] { throw System::NoteException("Test::task", "task failed."); });
  loop.post([&] { laterTaskRan = true; });
  try {
    loop.run();
    FAIL() << "the exception was lost";
  } catch (const System::NoteException& e) {
    EXPECT_EQ(e.message(), "task failed.");
  }
  EXPECT_FALSE(laterTaskRan);
  // The loop is usable again afterwards.
  loop.post([&] { loop.quit(); });
  loop.run();
}

TEST(QtPlatform, TimersAndWatchedDescriptorsRunOnTheLoop) {
  App::Platform& loop = platform();
  int ticks = 0;
  System::Timer timer;
  timer.set(1, [&] {
    if (++ticks == 3) {
      timer.clear();
      loop.quit();
    }
  });
  loop.run();
  EXPECT_EQ(ticks, 3);

  const int descriptor = System::TerminationSignals::install();
  bool seen = false;
  loop.watch(descriptor, [&] {
    seen = System::TerminationSignals::drain();
    loop.quit();
  });
  std::raise(SIGTERM);
  loop.run();
  loop.unwatch(descriptor);
  EXPECT_TRUE(seen);
}

// The window service on Qt's offscreen platform: the canvas shows exactly what the
// layout painted, separators and frames on whole pixels, and the footer.
TEST(QtPlatform, TheMainWindowCanvasShowsTheLayoutOnWholePixels) {
  App::Platform& loop = platform();
  Window::WindowStyle style;
  style.separatorSize = 4;
  style.footerHeight = 20;
  style.windowSeparator = {1, 0, 0, 1};
  style.windowBorder = {0, 0, 1, 1};
  style.footer = {0, 1, 0, 1};
  System::IniFile ini;
  ini.loadMemory("[Window]\r\nw=1000\r\nh=600\r\n");
  Window::WindowService service(loop.windowServices(), style, &ini);
  std::vector<std::unique_ptr<Window::WindowClient>> clients;
  for (const Window::ClientDefinition& definition : Window::standardClients(1)) {
    clients.push_back(std::make_unique<Window::WindowClient>(service, definition));
  }
  service.show();
  loop.post([&] { loop.quit(); });
  loop.run();
  auto* widget = static_cast<QWidget*>(Platform::canvasWidget(service.mainWindow()));
  ASSERT_NE(widget, nullptr);
  EXPECT_EQ(widget->size(), QSize(1000, 600));
  EXPECT_EQ(service.clientWidth(), 1002);
  const QImage shown = widget->grab().toImage();
  EXPECT_EQ(shown.pixel(798, 100) & 0xffffff, 0x0000ffu);
  EXPECT_EQ(shown.pixel(799, 100) & 0xffffff, 0xff0000u);
  EXPECT_EQ(shown.pixel(800, 100) & 0xffffff, 0xff0000u);
  EXPECT_EQ(shown.pixel(801, 100) & 0xffffff, 0x0000ffu);
  EXPECT_EQ(shown.pixel(500, 590) & 0xffffff, 0x00ff00u);

  // A floating client gets its own canvas, transient for the main window.
  service.setFloating(*service.findClient(L"オブジェクト設定"), true);
  Window::WindowClient& floating = *service.findClient(L"オブジェクト設定");
  ASSERT_NE(floating.floatingWindow(), nullptr);
  auto* own = static_cast<QWidget*>(Platform::canvasWidget(floating.floatingWindow()->window()));
  EXPECT_EQ(own->parentWidget(), widget);
  EXPECT_TRUE(own->isWindow());
  EXPECT_GE(own->width(), 256);
  EXPECT_FALSE(own->windowFlags() & Qt::WindowMinimizeButtonHint);
  // The relayout that docking posts runs before the service goes.
  loop.post([&] { loop.quit(); });
  loop.run();
  clients.clear();
}

// The image target: the outermost pair reports what it drew, clips hold, and text
// layouts agree with themselves whatever font the machine has.
TEST(QtPlatform, TheImageTargetReportsWhatItDrewAndLaysOutText) {
  platform();
  std::vector<QRect> changed;
  Platform::QtRenderTarget target([&](const QRect& rect) { changed.push_back(rect); });
  target.resize(100, 50);
  {
    Media::DrawScope scope(target, {10, 10, 40, 30});
    target.fillRect({0, 0, 100, 100}, Media::Brush::solid({1, 0, 0, 1}));
  }
  ASSERT_EQ(changed.size(), 1u);
  EXPECT_EQ(changed[0], QRect(10, 10, 30, 20));
  EXPECT_EQ(target.image().pixel(10, 10), qRgb(255, 0, 0));
  EXPECT_EQ(target.image().pixel(39, 29), qRgb(255, 0, 0));
  EXPECT_EQ(qAlpha(target.image().pixel(40, 29)), 0);

  const auto layout = target.createTextLayout(L"ab\ncdef", {L"Noto Sans CJK JP", 13.0f}, 0.0f, 0.0f);
  const auto lines = layout->lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].start, 3u);
  EXPECT_GT(lines[1].top, lines[0].top);
  for (std::size_t position : {3u, 4u, 6u}) {
    const Media::TextLayout::Caret caret = layout->caretAt(position, false);
    const auto hit = layout->hitTestPoint(caret.x + 0.5f, caret.top + caret.height / 2.0f);
    EXPECT_EQ(hit.position, position);
    EXPECT_FALSE(hit.trailing);
  }
  EXPECT_GT(layout->caretAt(5, false).x, layout->caretAt(4, false).x);
}

}  // namespace
