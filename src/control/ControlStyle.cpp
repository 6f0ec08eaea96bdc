#include "control/ControlStyle.h"

#include "window/WindowStyle.h"

namespace Window {

ControlStyle ControlStyle::fromWindowStyle(const WindowStyle& style) {
  ControlStyle result;
  result.background = style.background;
  result.text = style.text;
  result.buttonBody = style.buttonBody;
  result.buttonBodySelect = style.buttonBodySelect;
  result.selection = style.buttonBodySelect;
  result.borderFocus = style.borderFocus;
  result.titleHeader = style.titleHeader;
  result.titleHeaderHeight = style.titleHeaderHeight;
  result.font = style.font;
  return result;
}

}  // namespace Window
