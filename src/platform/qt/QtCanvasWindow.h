// A top-level window on Qt: one widget that shows a kept premultiplied image, which the
// window logic draws into through Media::RenderTarget. This header stays free of Qt.
#pragma once

#include <functional>
#include <memory>

#include "window/PlatformWindow.h"

namespace Platform {

// Every call from Qt's loop into `events` goes through `guard`, which keeps exceptions
// from crossing the loop. `owner`, when given, is a window made here too.
using LoopGuard = std::function<void(const std::function<void()>&)>;
std::unique_ptr<Window::PlatformWindow> createCanvasWindow(const Window::WindowOptions& options,
                                                           Window::WindowEvents& events, LoopGuard guard);

// The QWidget of a window made by createCanvasWindow (a QWidget*), for the services of
// this folder: popup menus open over it.
void* canvasWidget(Window::PlatformWindow& window);

}  // namespace Platform
