#include "platform/qt/QtSystemMetrics.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyleHints>

#include <unistd.h>

namespace Platform {

namespace {

// Megabytes of installed memory, or the default when the system does not say.
std::int32_t physicalMemoryMegabytes(std::int32_t fallback) {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGE_SIZE);
  if (pages <= 0 || pageSize <= 0) return fallback;
  return static_cast<std::int32_t>(static_cast<long long>(pages) * pageSize / (1024 * 1024));
}

}  // namespace

Setting::SystemMetrics querySystemMetrics(bool hasDisplay) {
  Setting::SystemMetrics metrics;
  metrics.physicalMemory = physicalMemoryMegabytes(metrics.physicalMemory);
  if (!hasDisplay) return metrics;

  const QStyleHints* hints = QGuiApplication::styleHints();
  if (hints->keyboardAutoRepeatRate() > 0) metrics.keyboardRepeat = 1000 / hints->keyboardAutoRepeatRate();
  // Qt gives the whole on-and-off cycle; the caret's blink time is one half of it.
  if (hints->cursorFlashTime() > 0) metrics.caretBlink = hints->cursorFlashTime() / 2;
  metrics.dragWidth = metrics.dragHeight = hints->startDragDistance();
  metrics.doubleClickTime = hints->mouseDoubleClickInterval();
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    metrics.screenWidth = screen->size().width();
    metrics.screenHeight = screen->size().height();
    metrics.dpi = static_cast<std::int32_t>(screen->logicalDotsPerInch() + 0.5);
  }
  return metrics;
}

}  // namespace Platform
