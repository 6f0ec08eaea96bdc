// The own top-level window of a floating client: transient for the main window, no
// minimise button, at least 256 x 256. It keeps the client's `x`, `y`, `w`, `h` and
// `zoom` in step with the window, and its close button closes the client. Main thread.
#pragma once

#include <memory>

#include "window/PlatformWindow.h"

namespace Window {

class WindowClient;
class WindowService;

class WindowFloating : public WindowEventsBase {
 public:
  WindowFloating(WindowService& service, WindowClient& client);
  ~WindowFloating() override;

  PlatformWindow& window() noexcept { return *window_; }

  void resized(std::int32_t width, std::int32_t height) override;
  void paintRequested() override;
  void closeRequested() override;
  void geometryChanged(const WindowGeometry& geometry, bool maximized, bool minimized) override;
  void mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;

 private:
  WindowService& service_;
  WindowClient& client_;
  std::unique_ptr<PlatformWindow> window_;
};

}  // namespace Window
