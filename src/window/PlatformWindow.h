// A top-level window of the platform as the window logic sees it: a canvas with a
// drawing target, a frame rectangle, a cursor and the events it reports. Implemented
// with Qt in src/platform/qt and by a fake in the tests. Main thread only.
#pragma once

#include <cstdint>
#include <string>

namespace Media {
class RenderTarget;
}

namespace Window {

enum class CursorShape : std::int32_t {
  Arrow = 0,
  SizeWestEast,    // a vertical separator
  SizeNorthSouth,  // a horizontal separator
  SizeAll,
  Hand,
  IBeam,
  No,
  Wait,
  Swap,  // a drag that will exchange two clients
  Hidden,
  // The program's own, drawn from SVG files beside the executable.
  SliderHover,
  SliderDrag,
  Move,
  PanAll,
  PanEastWest,
  PanNorthSouth,
};

enum class MouseButton : std::int32_t { Left = 0, Right = 1, Middle = 2 };

// Modifier bits of input events.
inline constexpr std::uint32_t kModifierShift = 1;
inline constexpr std::uint32_t kModifierControl = 2;
inline constexpr std::uint32_t kModifierAlt = 4;

// Position and size in screen pixels, always without the window manager's frame.
struct WindowGeometry {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  friend bool operator==(const WindowGeometry&, const WindowGeometry&) = default;
};

class PlatformWindow;

struct WindowOptions {
  std::wstring title;
  WindowGeometry geometry;
  PlatformWindow* owner = nullptr;  // a transient parent: the window stays above it
  bool minimizeButton = true;
  bool toolWindow = false;  // a small caption and no task-bar entry
  std::int32_t minimumWidth = 256;
  std::int32_t minimumHeight = 256;
};

// What a window reports; every call comes on the main thread from the event loop.
class WindowEvents {
 public:
  virtual ~WindowEvents() = default;
  // The canvas has the new size already.
  virtual void resized(std::int32_t width, std::int32_t height) = 0;
  // The platform lost what was shown: paint everything.
  virtual void paintRequested() = 0;
  // The user asked to close; the window stays until its owner destroys it.
  virtual void closeRequested() = 0;
  virtual void geometryChanged(const WindowGeometry& geometry, bool maximized, bool minimized) = 0;
  virtual void mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t modifiers) = 0;
  virtual void mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) = 0;
  virtual void mouseReleased(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) = 0;
  virtual void mouseLeft() = 0;
  virtual void wheelTurned(std::int32_t x, std::int32_t y, std::int32_t delta, std::uint32_t modifiers) = 0;
  // `key` is the virtual key code the shortcut files store.
  virtual void keyPressed(std::int32_t key, std::uint32_t modifiers, bool repeat) = 0;
  virtual void keyReleased(std::int32_t key, std::uint32_t modifiers) = 0;
  virtual void textEntered(const std::wstring& text) = 0;
  virtual void focusLost() = 0;
  // The input method's composition: the text being composed (empty when it ends), and
  // the finished text, which by default arrives as typed text.
  virtual void compositionChanged(const std::wstring&) {}
  virtual void compositionCommitted(const std::wstring& text) { textEntered(text); }
  // Where the input method's window goes, in canvas pixels; false where input methods
  // are off (no text box has the focus, or a numeric one has).
  virtual bool inputCursor(std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t&) { return false; }
};

// Ignores everything; clients and windows override what they handle.
class WindowEventsBase : public WindowEvents {
 public:
  void resized(std::int32_t, std::int32_t) override {}
  void paintRequested() override {}
  void closeRequested() override {}
  void geometryChanged(const WindowGeometry&, bool, bool) override {}
  void mouseMoved(std::int32_t, std::int32_t, std::uint32_t) override {}
  void mousePressed(MouseButton, std::int32_t, std::int32_t, std::uint32_t) override {}
  void mouseReleased(MouseButton, std::int32_t, std::int32_t, std::uint32_t) override {}
  void mouseLeft() override {}
  void wheelTurned(std::int32_t, std::int32_t, std::int32_t, std::uint32_t) override {}
  void keyPressed(std::int32_t, std::uint32_t, bool) override {}
  void keyReleased(std::int32_t, std::uint32_t) override {}
  void textEntered(const std::wstring&) override {}
  void focusLost() override {}
};

class PlatformWindow {
 public:
  virtual ~PlatformWindow() = default;

  virtual Media::RenderTarget& renderTarget() = 0;
  // The canvas, in pixels.
  virtual std::int32_t clientWidth() const = 0;
  virtual std::int32_t clientHeight() const = 0;

  virtual void setTitle(const std::wstring& title) = 0;
  virtual void show(bool maximized) = 0;
  virtual void hide() = 0;
  virtual bool isVisible() const = 0;
  virtual void raise() = 0;
  virtual WindowGeometry geometry() const = 0;
  virtual bool isMaximized() const = 0;
  virtual void setCursor(CursorShape shape) = 0;
  // Mouse events keep coming to this window while a button is held outside it.
  virtual void captureMouse(bool on) = 0;
};

}  // namespace Window
