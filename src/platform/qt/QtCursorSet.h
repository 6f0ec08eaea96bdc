// The mouse cursors of the platform window: the system shapes Qt has, and the
// program's own (the slider's, the move and the pan cursors) drawn from small SVG files
// in the "cursors" folder beside the executable. Main thread, with the application up.
#pragma once

#include <QCursor>
#include <QString>

#include "window/PlatformWindow.h"

namespace Platform {

// A missing or damaged file gives the nearest system shape; files are read once.
QCursor cursorFor(Window::CursorShape shape);
// The same from the given folder, uncached; for tests.
QCursor loadCursor(Window::CursorShape shape, const QString& folder);

}  // namespace Platform
