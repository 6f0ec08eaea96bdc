// The base of everything that takes mouse and keys: the slots the mouse service calls.
// Coordinates are relative to the control unless said otherwise; the base does nothing
// and answers false. Main thread only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/target/RenderTarget.h"

namespace Window {

class WindowMouse {
 public:
  virtual ~WindowMouse() = default;

  // A move over the control with no button held.
  virtual void mouseMove(std::int32_t, std::int32_t) {}
  // A move while this control holds the capture; the distance from the press.
  virtual void dragMove(std::int32_t, std::int32_t) {}
  // The capture ended by the button's release, after a drag.
  virtual void dragEnd(std::int32_t, std::int32_t) {}
  virtual bool dragKey(std::int32_t) { return false; }
  // The key registered as hold key was released.
  virtual void holdKeyUp() {}
  virtual void leftDown(std::int32_t, std::int32_t) {}
  virtual void leftUp(std::int32_t, std::int32_t) {}
  virtual void rightDown(std::int32_t, std::int32_t) {}
  virtual void rightUp(std::int32_t, std::int32_t) {}
  virtual void mouseEnter() {}
  virtual void mouseLeave() {}
  // The control lost the press.
  virtual void captureLost() {}
  // True when consumed.
  virtual bool wheel(std::int32_t, std::int32_t, std::int32_t) { return false; }
  virtual bool wantsWheel() { return true; }
  // With keyboard focus.
  virtual bool keyDown(std::int32_t) { return false; }
  virtual bool charInput(std::uint32_t) { return false; }
  // A finished composition of the input method: each character goes to charInput.
  virtual void imeResult(const std::wstring& text) {
    for (wchar_t c : text) charInput(static_cast<std::uint32_t>(c));
  }
  virtual void focusLost() {}
  virtual void contextMenu(std::int32_t, std::int32_t) {}
  // A composition starts; true when the control takes input methods at all.
  virtual bool imeStart() { return false; }
  // The text being composed, drawn by the control at its caret; empty when it ends.
  virtual void imePreedit(const std::wstring&) {}
  // Where the input method's window goes, in window pixels; false: no input method here.
  virtual bool imeCursor(Media::RectF&) { return false; }
  virtual bool fileDragOver(std::int32_t, std::int32_t, const std::vector<std::wstring>&) { return false; }
  virtual bool fileDrop(std::int32_t, std::int32_t, const std::vector<std::wstring>&) { return false; }
  virtual void fileDragLeave() {}
  // The click that ends a modal pick: `picked` is false for a click inside the control,
  // true with the colour under the mouse for one outside it.
  virtual void cancelModal(bool, const Media::ColorF&) {}
  // The mouse rested over the control.
  virtual void hover() {}
};

}  // namespace Window
