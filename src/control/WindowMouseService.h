// Turns one window's input events into calls on its controls: the hit test, the press
// and its capture, the drag threshold and the hidden-cursor drag, double clicks, hover,
// the wheel latch, the modal pick, the hold key and the keyboard focus. One per window
// with controls; it owns the root of the window's control tree. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "control/ControlStyle.h"
#include "control/WindowControl.h"
#include "window/PlatformServices.h"

namespace Window {

// A hold key that stands for the loss of the focus control rather than a real key.
inline constexpr std::int32_t kHoldKeyFocusLoss = 0x10000;
inline constexpr std::int32_t kKeyControl = 17;

class WindowMouseService : public WindowEventsBase {
 public:
  // The cursor set: system numbers and the program's own resource numbers.
  struct MouseCursor {
    std::int32_t id = 0;
    bool system = true;
    friend bool operator==(const MouseCursor&, const MouseCursor&) = default;
    // The shape the platform shows for it.
    CursorShape shape() const noexcept;
  };
  static constexpr MouseCursor kCursorNone{0, true};
  static constexpr MouseCursor kCursorArrow{32512, true};
  static constexpr MouseCursor kCursorEastWest{32644, true};
  static constexpr MouseCursor kCursorNorthSouth{32645, true};
  static constexpr MouseCursor kCursorSizeAll{32646, true};
  static constexpr MouseCursor kCursorHand{32649, true};
  static constexpr MouseCursor kCursorIBeam{32513, true};
  static constexpr MouseCursor kCursorNo{32648, true};
  static constexpr MouseCursor kCursorWait{32514, true};
  static constexpr MouseCursor kCursorAppStarting{32650, true};
  static constexpr MouseCursor kCursorSlider{129, false};
  static constexpr MouseCursor kCursorMove{143, false};
  static constexpr MouseCursor kCursorSlide{130, false};
  static constexpr MouseCursor kCursorPanAll{32652, true};
  static constexpr MouseCursor kCursorPanEastWest{32653, true};
  static constexpr MouseCursor kCursorPanNorthSouth{32657, true};

  // `clock` gives milliseconds; the default is the steady clock.
  WindowMouseService(PlatformServices& platform, PlatformWindow& window, const ControlStyle& style,
                     std::function<std::int64_t()> clock = {});
  ~WindowMouseService() override;
  WindowMouseService(const WindowMouseService&) = delete;
  WindowMouseService& operator=(const WindowMouseService&) = delete;

  PlatformServices& platform() noexcept { return platform_; }
  PlatformWindow& window() noexcept { return window_; }
  Media::RenderTarget& target() { return window_.renderTarget(); }
  const ControlStyle& style() const noexcept { return style_; }
  std::int64_t now() const { return clock_(); }

  // The tree's root covers the given rectangle of the window; setting it lays out all.
  WindowControl& root() noexcept { return *root_; }
  void setBounds(const ControlRect& bounds);
  void paint() { root_->paint(); }

  // What a control asks of the service.
  void beginCapture(WindowControl& control, std::int32_t x, std::int32_t y, MouseCursor cursor);
  void setFocus(WindowControl* control);
  void setHoldKey(WindowControl* listener, std::int32_t key);
  void setModal(WindowControl* control) { modalControl = control; }
  void setCursor(MouseCursor cursor);
  // Hidden until the mouse moves again: typing hides the pointer.
  void hideCursorUntilMove();
  // The keyboard's modifier bits at the last input event.
  std::uint32_t modifiers() const noexcept { return modifiers_; }
  void setModifiers(std::uint32_t modifiers) noexcept { modifiers_ = modifiers; }
  // Keys the focus control left go here (the shortcut service).
  void setShortcutHandler(std::function<bool(std::int32_t key, std::uint32_t modifiers)> handler) {
    shortcutHandler_ = std::move(handler);
  }
  // Reads the colour under a window point for the modal pick.
  void setColorReader(std::function<Media::ColorF(std::int32_t, std::int32_t)> reader) {
    colorReader_ = std::move(reader);
  }
  // A control about to be destroyed: no pointer of the service keeps it.
  void forget(WindowControl& control) noexcept;

  // Hit tests in window pixels. `want` filters the opt-in cases.
  enum class Want { Any, ContextMenu, Focus, Wheel, Files };
  WindowControl* hitTest(std::int32_t x, std::int32_t y, Want want = Want::Any) const;

  // Input, in window pixels.
  void mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;
  void mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;
  void mouseReleased(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;
  void mouseLeft() override;
  void wheelTurned(std::int32_t x, std::int32_t y, std::int32_t delta, std::uint32_t modifiers) override;
  void keyPressed(std::int32_t key, std::uint32_t modifiers, bool repeat) override;
  void keyReleased(std::int32_t key, std::uint32_t modifiers) override;
  void textEntered(const std::wstring& text) override;
  void focusLost() override { setFocus(nullptr); }
  // The platform took the capture away.
  void captureChanged();
  // The composition of the input method: it starts, changes, and ends with its text.
  void compositionStarted();
  void compositionChanged(const std::wstring& text) override;
  void compositionCommitted(const std::wstring& text) override;
  bool inputCursor(std::int32_t& x, std::int32_t& y, std::int32_t& width, std::int32_t& height) override;
  // The rest of the mouse over the hover control, as the hover timer reports it.
  void hoverElapsed();
  bool fileDragOver(std::int32_t x, std::int32_t y, const std::vector<std::wstring>& files);
  bool fileDrop(std::int32_t x, std::int32_t y, const std::vector<std::wstring>& files);
  void fileDragLeave();

  MouseCursor defaultCursor = kCursorArrow;
  MouseCursor currentCursor = kCursorArrow;
  WindowControl* focusControl = nullptr;
  WindowControl* pressedControl = nullptr;
  WindowControl* hoverControl = nullptr;
  WindowControl* dragOverControl = nullptr;
  WindowControl* holdKeyListener = nullptr;
  std::int32_t holdKey = 0;
  WindowControl* modalControl = nullptr;
  bool capturing = false;
  std::int32_t pressX = 0;
  std::int32_t pressY = 0;
  bool moved = false;
  std::int32_t savedCursorX = 0;
  std::int32_t savedCursorY = 0;
  std::int32_t lastButtonMsg = -1;
  std::int64_t lastButtonTime = 0;
  std::int32_t lastButtonX = 0;
  std::int32_t lastButtonY = 0;
  std::int32_t lastMoveX = -1;
  std::int32_t lastMoveY = -1;
  WindowControl* lastPressed = nullptr;
  bool doubleClick = false;
  bool rightDrag = false;
  bool keyHandled = false;

 private:
  class Root;
  void endCapture();
  void changeHover(WindowControl* control);
  void applyCursor();
  WindowControl* fileTarget(std::int32_t x, std::int32_t y) const;

  PlatformServices& platform_;
  PlatformWindow& window_;
  ControlStyle style_;
  std::function<std::int64_t()> clock_;
  std::unique_ptr<WindowControl> root_;
  std::function<bool(std::int32_t, std::uint32_t)> shortcutHandler_;
  std::function<Media::ColorF(std::int32_t, std::int32_t)> colorReader_;
  std::uint32_t modifiers_ = 0;
  std::int64_t pressTime_ = 0;
  std::uint32_t hoverTimer_ = 0;
  WindowControl* wheelTarget_ = nullptr;
  std::int64_t wheelTime_ = 0;
  bool cursorHiddenByTyping_ = false;
  bool composing_ = false;
  CursorShape shownShape_ = CursorShape::Arrow;
};

}  // namespace Window
