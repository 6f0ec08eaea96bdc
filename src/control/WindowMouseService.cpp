#include "control/WindowMouseService.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace Window {

namespace {

constexpr std::int32_t kMessageLeft = 0;
constexpr std::int32_t kMessageRight = 1;

struct CursorEntry {
  std::int32_t id;
  CursorShape shape;
};

// The program's own cursors (129 the slider's hover, 130 its drag, 143 a move) and the
// pan cursors have no system shape; the platform draws them from files of its own.
constexpr CursorEntry kCursorShapes[] = {
    {0, CursorShape::Hidden},           {32512, CursorShape::Arrow},   {32644, CursorShape::SizeWestEast},
    {32645, CursorShape::SizeNorthSouth}, {32646, CursorShape::SizeAll}, {32649, CursorShape::Hand},
    {32513, CursorShape::IBeam},        {32648, CursorShape::No},      {32514, CursorShape::Wait},
    {32650, CursorShape::Wait},         {129, CursorShape::SliderHover}, {130, CursorShape::SliderDrag},
    {143, CursorShape::Move},           {32652, CursorShape::PanAll},  {32653, CursorShape::PanEastWest},
    {32657, CursorShape::PanNorthSouth},
};

std::int64_t steadyMilliseconds() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

bool usable(const WindowControl& control) { return control.visible && control.enabled; }

bool wanted(WindowControl& control, WindowMouseService::Want want) {
  switch (want) {
    case WindowMouseService::Want::Any:
      return true;
    case WindowMouseService::Want::ContextMenu:
      return control.acceptsContextMenu;
    case WindowMouseService::Want::Focus:
      return control.acceptsFocus;
    case WindowMouseService::Want::Wheel:
      return control.acceptsWheel && control.wantsWheel();
    case WindowMouseService::Want::Files:
      return control.acceptsFiles;
  }
  return false;
}

// The deepest usable control at the point; the later of equal depth wins, which the
// walk gives by letting a later hit of the same depth replace an earlier one.
void findDeepest(WindowControl& control, std::int32_t x, std::int32_t y, WindowMouseService::Want want,
                 WindowControl*& best) {
  if (!usable(control)) return;
  if (control.parent() != nullptr && control.clipRect.contains(x, y) && wanted(control, want) &&
      (best == nullptr || control.depth() >= best->depth())) {
    best = &control;
  }
  for (WindowControl* child : control.children()) findDeepest(*child, x, y, want, best);
}

}  // namespace

CursorShape WindowMouseService::MouseCursor::shape() const noexcept {
  for (const CursorEntry& entry : kCursorShapes) {
    if (entry.id == id) return entry.shape;
  }
  return CursorShape::Arrow;
}

class WindowMouseService::Root : public WindowControl {
 public:
  explicit Root(WindowMouseService& service) : WindowControl(service) {}
  void place() override {}
};

WindowMouseService::WindowMouseService(PlatformServices& platform, PlatformWindow& window,
                                       const ControlStyle& style, std::function<std::int64_t()> clock)
    : platform_(platform),
      window_(window),
      style_(style),
      clock_(clock ? std::move(clock) : std::function<std::int64_t()>(steadyMilliseconds)),
      root_(std::make_unique<Root>(*this)) {}

WindowMouseService::~WindowMouseService() {
  if (hoverTimer_ != 0) platform_.stopTimer(hoverTimer_);
  if (capturing) window_.captureMouse(false);
  // Controls that outlive the service keep no way back to it.
  root_.reset();
}

void WindowMouseService::setBounds(const ControlRect& bounds) {
  root_->rect = bounds;
  root_->clipRect = bounds;
  root_->layoutChildren();
}

void WindowMouseService::forget(WindowControl& control) noexcept {
  WindowControl* const gone = &control;
  if (focusControl == gone) focusControl = nullptr;
  if (pressedControl == gone) {
    pressedControl = nullptr;
    if (capturing) {
      capturing = false;
      window_.captureMouse(false);
    }
  }
  if (hoverControl == gone) hoverControl = nullptr;
  if (dragOverControl == gone) dragOverControl = nullptr;
  if (holdKeyListener == gone) holdKeyListener = nullptr;
  if (modalControl == gone) modalControl = nullptr;
  if (lastPressed == gone) lastPressed = nullptr;
  if (wheelTarget_ == gone) wheelTarget_ = nullptr;
}

WindowControl* WindowMouseService::hitTest(std::int32_t x, std::int32_t y, Want want) const {
  WindowControl* best = nullptr;
  findDeepest(*root_, x, y, want, best);
  return best;
}

void WindowMouseService::setCursor(MouseCursor cursor) {
  currentCursor = cursor;
  applyCursor();
}

void WindowMouseService::hideCursorUntilMove() {
  cursorHiddenByTyping_ = true;
  applyCursor();
}

void WindowMouseService::applyCursor() {
  const CursorShape shape = cursorHiddenByTyping_ ? CursorShape::Hidden : currentCursor.shape();
  if (shape == shownShape_) return;
  shownShape_ = shape;
  window_.setCursor(shape);
}

void WindowMouseService::beginCapture(WindowControl& control, std::int32_t x, std::int32_t y, MouseCursor cursor) {
  control.pressed = true;
  pressedControl = &control;
  capturing = true;
  moved = false;
  pressX = control.rect.x + x;
  pressY = control.rect.y + y;
  pressTime_ = now();
  window_.captureMouse(true);
  if (cursor == kCursorNone) {
    savedCursorX = pressX;
    savedCursorY = pressY;
  }
  setCursor(cursor);
}

void WindowMouseService::setFocus(WindowControl* control) {
  if (focusControl == control) return;
  if (WindowControl* old = focusControl) {
    focusControl = nullptr;
    old->focused = false;
    old->focusLost();
    if (holdKeyListener == old && holdKey == kHoldKeyFocusLoss) {
      holdKeyListener = nullptr;
      old->holdKeyUp();
    }
  }
  if (control != nullptr) {
    focusControl = control;
    control->focused = true;
  }
}

void WindowMouseService::setHoldKey(WindowControl* listener, std::int32_t key) {
  holdKeyListener = listener;
  holdKey = key;
}

void WindowMouseService::mousePressed(MouseButton button, std::int32_t x, std::int32_t y,
                                      std::uint32_t modifiers) {
  modifiers_ = modifiers;
  if (button == MouseButton::Middle) return;
  if (modalControl != nullptr) {
    // The pick takes this click whatever it hits.
    WindowControl* modal = modalControl;
    modalControl = nullptr;
    if (modal->clipRect.contains(x, y)) {
      modal->cancelModal(false, {});
    } else {
      modal->cancelModal(true, colorReader_ ? colorReader_(x, y) : Media::ColorF{});
    }
    return;
  }
  bool right = button == MouseButton::Right;
  if (!right && style_.altLeftClickToRightClick && (modifiers & kModifierAlt) != 0) right = true;
  const std::int32_t message = right ? kMessageRight : kMessageLeft;
  const std::int64_t time = now();
  doubleClick = message == lastButtonMsg && x == lastButtonX && y == lastButtonY &&
                time - lastButtonTime < style_.doubleClickTime;
  lastButtonMsg = message;
  lastButtonTime = time;
  lastButtonX = x;
  lastButtonY = y;
  rightDrag = right;
  moved = false;

  WindowControl* hit = hitTest(x, y);
  if (focusControl != nullptr && focusControl != hit) setFocus(nullptr);
  if (pressedControl != nullptr && pressedControl != hit) {
    WindowControl* old = pressedControl;
    pressedControl = nullptr;
    old->pressed = false;
    capturing = false;
    window_.captureMouse(false);
    old->captureLost();
  }
  if (hit == nullptr) return;
  pressedControl = hit;
  lastPressed = hit;
  if (!hit->pressed) {
    if (right) {
      hit->rightDown(x - hit->rect.x, y - hit->rect.y);
    } else {
      hit->leftDown(x - hit->rect.x, y - hit->rect.y);
    }
  }
  // A control that took no capture has had its press.
  if (pressedControl == hit && !hit->pressed) pressedControl = nullptr;
}

void WindowMouseService::mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t modifiers) {
  modifiers_ = modifiers;
  if (modalControl != nullptr) return;
  if (cursorHiddenByTyping_) {
    cursorHiddenByTyping_ = false;
    applyCursor();
  }
  if (capturing && pressedControl != nullptr) {
    if (x == lastMoveX && y == lastMoveY) return;
    lastMoveX = x;
    lastMoveY = y;
    if (!moved) {
      const std::int32_t dx = x - pressX;
      const std::int32_t dy = y - pressY;
      if (std::abs(dx) < style_.dragWidth && std::abs(dy) < style_.dragHeight &&
          now() - pressTime_ < style_.doubleClickTime) {
        return;
      }
      moved = true;
    }
    // The move that starts the drag is turned back too, so no distance counts twice.
    if (currentCursor == kCursorNone && (x != savedCursorX || y != savedCursorY)) {
      // Turn every real move back, so the drag never meets the screen's edge.
      pressX -= x - savedCursorX;
      pressY -= y - savedCursorY;
      x = savedCursorX;
      y = savedCursorY;
      const WindowGeometry frame = window_.geometry();
      platform_.setCursorPosition(frame.x + x, frame.y + y);
      lastMoveX = x;
      lastMoveY = y;
    }
    if (pressedControl->pressed) pressedControl->dragMove(x - pressX, y - pressY);
    return;
  }
  if (!(currentCursor == defaultCursor)) setCursor(defaultCursor);
  lastMoveX = x;
  lastMoveY = y;
  WindowControl* hit = hitTest(x, y);
  if (hit != hoverControl) changeHover(hit);
  if (hit != nullptr) hit->mouseMove(x - hit->rect.x, y - hit->rect.y);
}

void WindowMouseService::changeHover(WindowControl* control) {
  if (WindowControl* old = hoverControl) {
    hoverControl = nullptr;
    old->hovered = false;
    old->mouseLeave();
  }
  if (hoverTimer_ != 0) {
    platform_.stopTimer(hoverTimer_);
    hoverTimer_ = 0;
  }
  hoverControl = control;
  if (control == nullptr) return;
  control->hovered = true;
  control->mouseEnter();
  hoverTimer_ = platform_.startTimer(style_.hoverTime, [this] { hoverElapsed(); });
}

void WindowMouseService::hoverElapsed() {
  if (hoverTimer_ != 0) {
    platform_.stopTimer(hoverTimer_);
    hoverTimer_ = 0;
  }
  if (hoverControl != nullptr && !hoverControl->pressed) hoverControl->hover();
}

void WindowMouseService::mouseLeft() {
  if (capturing) return;
  changeHover(nullptr);
}

void WindowMouseService::endCapture() {
  WindowControl* control = pressedControl;
  const bool wasCapturing = capturing;
  capturing = false;
  if (wasCapturing) window_.captureMouse(false);
  if (control != nullptr) {
    // Releasing the capture takes the press away, as losing it would.
    control->pressed = false;
    control->captureLost();
  }
  pressedControl = nullptr;
  setCursor(defaultCursor);
}

void WindowMouseService::mouseReleased(MouseButton button, std::int32_t x, std::int32_t y,
                                       std::uint32_t modifiers) {
  modifiers_ = modifiers;
  if (button == MouseButton::Middle) return;
  WindowControl* control = pressedControl;
  if (control != nullptr && control->pressed) {
    const std::int32_t cx = x - control->rect.x;
    const std::int32_t cy = y - control->rect.y;
    if (rightDrag) {
      control->rightUp(cx, cy);
    } else {
      control->leftUp(cx, cy);
    }
    if (moved && pressedControl == control) control->dragEnd(cx, cy);
  }
  const bool wasRight = rightDrag;
  const bool wasMoved = moved;
  if (pressedControl != nullptr || capturing) endCapture();
  if (wasRight && !wasMoved) {
    if (WindowControl* menu = hitTest(x, y, Want::ContextMenu)) menu->contextMenu(x - menu->rect.x, y - menu->rect.y);
  }
}

void WindowMouseService::captureChanged() {
  if (pressedControl == nullptr) return;
  WindowControl* control = pressedControl;
  pressedControl = nullptr;
  capturing = false;
  control->pressed = false;
  control->captureLost();
  setCursor(defaultCursor);
}

void WindowMouseService::wheelTurned(std::int32_t x, std::int32_t y, std::int32_t delta, std::uint32_t modifiers) {
  modifiers_ = modifiers;
  const std::int64_t time = now();
  WindowControl* target = nullptr;
  if (wheelTarget_ != nullptr && time - wheelTime_ < style_.doubleClickTime && usable(*wheelTarget_)) {
    // A list scrolled under the mouse keeps the wheel while the turns go on.
    target = wheelTarget_;
  } else {
    target = hitTest(x, y, Want::Wheel);
  }
  wheelTarget_ = target;
  wheelTime_ = time;
  if (target != nullptr) target->wheel(x - target->rect.x, y - target->rect.y, delta);
}

void WindowMouseService::keyPressed(std::int32_t key, std::uint32_t modifiers, bool) {
  modifiers_ = modifiers;
  if (key >= 37 && key <= 40) moved = true;
  keyHandled = false;
  if (pressedControl != nullptr && pressedControl->pressed && pressedControl->dragKey(key)) {
    keyHandled = true;
    return;
  }
  if (focusControl != nullptr && focusControl->keyDown(key)) {
    keyHandled = true;
    return;
  }
  if (shortcutHandler_) keyHandled = shortcutHandler_(key, modifiers);
}

void WindowMouseService::keyReleased(std::int32_t key, std::uint32_t modifiers) {
  modifiers_ = modifiers;
  if (holdKeyListener != nullptr && key == holdKey) {
    WindowControl* listener = holdKeyListener;
    holdKeyListener = nullptr;
    listener->holdKeyUp();
  }
}

void WindowMouseService::textEntered(const std::wstring& text) {
  for (wchar_t c : text) {
    if (focusControl == nullptr) return;
    focusControl->charInput(static_cast<std::uint32_t>(c));
  }
}

void WindowMouseService::compositionStarted() {
  composing_ = true;
  if (focusControl != nullptr) focusControl->imeStart();
}

void WindowMouseService::compositionChanged(const std::wstring& text) {
  if (!composing_ && !text.empty()) compositionStarted();
  if (text.empty()) composing_ = false;
  if (focusControl != nullptr) focusControl->imePreedit(text);
}

void WindowMouseService::compositionCommitted(const std::wstring& text) {
  composing_ = false;
  if (focusControl != nullptr) focusControl->imeResult(text);
}

bool WindowMouseService::inputCursor(std::int32_t& x, std::int32_t& y, std::int32_t& width, std::int32_t& height) {
  Media::RectF caret;
  if (focusControl == nullptr || !focusControl->imeCursor(caret)) return false;
  x = static_cast<std::int32_t>(caret.left);
  y = static_cast<std::int32_t>(caret.top);
  width = std::max(1, static_cast<std::int32_t>(caret.width()));
  height = static_cast<std::int32_t>(caret.height());
  return true;
}

WindowControl* WindowMouseService::fileTarget(std::int32_t x, std::int32_t y) const {
  return hitTest(x, y, Want::Files);
}

bool WindowMouseService::fileDragOver(std::int32_t x, std::int32_t y, const std::vector<std::wstring>& files) {
  WindowControl* hit = fileTarget(x, y);
  if (dragOverControl != nullptr && dragOverControl != hit) dragOverControl->fileDragLeave();
  dragOverControl = nullptr;
  for (WindowControl* control = hit; control != nullptr && control->parent() != nullptr;
       control = control->parent()) {
    if (control->fileDragOver(x - control->rect.x, y - control->rect.y, files)) {
      dragOverControl = control;
      return true;
    }
  }
  return false;
}

bool WindowMouseService::fileDrop(std::int32_t x, std::int32_t y, const std::vector<std::wstring>& files) {
  dragOverControl = nullptr;
  for (WindowControl* control = fileTarget(x, y); control != nullptr && control->parent() != nullptr;
       control = control->parent()) {
    if (control->fileDrop(x - control->rect.x, y - control->rect.y, files)) return true;
  }
  return false;
}

void WindowMouseService::fileDragLeave() {
  if (WindowControl* control = dragOverControl) {
    dragOverControl = nullptr;
    control->fileDragLeave();
  }
}

}  // namespace Window
