#include "window/WindowFloating.h"

#include <algorithm>

#include "window/WindowClient.h"
#include "window/WindowService.h"

namespace Window {

namespace {

constexpr std::int32_t kMinimumSize = 256;

}  // namespace

WindowFloating::WindowFloating(WindowService& service, WindowClient& client) : service_(service), client_(client) {
  WindowOptions options;
  options.title = client.getTitle();
  WindowGeometry geometry = client.floatingGeometry();
  geometry.width = std::max(geometry.width, kMinimumSize);
  geometry.height = std::max(geometry.height, kMinimumSize);
  options.geometry = geometry;
  options.owner = &service.mainWindow();
  options.minimizeButton = false;
  // Kind 2 has no caption of its own: a tool window is the nearest the window managers
  // of this platform offer.
  options.toolWindow = client.kind() == 2;
  options.minimumWidth = kMinimumSize;
  options.minimumHeight = kMinimumSize;
  window_ = service.platform().createWindow(options, *this);
}

WindowFloating::~WindowFloating() = default;

void WindowFloating::resized(std::int32_t width, std::int32_t height) {
  if (client_.hidden()) return;
  client_.setPixelRect(0, 0, width, height);
  paintRequested();
}

void WindowFloating::paintRequested() {
  if (client_.hidden()) return;
  service_.repaintClient(client_);
}

void WindowFloating::closeRequested() {
  if (service_.inputDisabled()) return;
  service_.toggleClient(client_);
}

void WindowFloating::geometryChanged(const WindowGeometry& geometry, bool maximized, bool minimized) {
  client_.setFloatingZoomed(maximized);
  if (!maximized && !minimized) client_.setFloatingGeometry(geometry);
}

void WindowFloating::mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t) {
  if (service_.inputDisabled()) return;
  if (client_.mousePressed(button, x, y)) return;
  if (button != MouseButton::Right) return;
  // The same operations as the docked client's menu; docking back lives here, since
  // the window managers of this platform give no way into the system menu.
  PopupMenu menu;
  client_.buildWindowMenu(menu);
  const WindowGeometry at = window_->geometry();
  service_.platform().showPopupMenu(*window_, at.x + x, at.y + y, menu);
}

}  // namespace Window
