// The colours, font and sizes the controls draw with, and the system settings their
// behaviour reads (double-click time, drag distance, key repeat, slider speed). Built
// from the window style and the settings at start, in code in the tests.
#pragma once

#include <cstdint>

#include "media/target/RenderTarget.h"

namespace Window {

struct WindowStyle;

struct ControlStyle {
  Media::ColorF background{0.118f, 0.122f, 0.133f, 1.0f};
  Media::ColorF text{0.875f, 0.882f, 0.898f, 1.0f};
  Media::ColorF textDisable{0.5f, 0.5f, 0.52f, 1.0f};
  Media::ColorF buttonBody{0.169f, 0.176f, 0.192f, 1.0f};
  Media::ColorF buttonBodyHover{0.216f, 0.224f, 0.243f, 1.0f};
  Media::ColorF buttonBodyPress{0.125f, 0.129f, 0.141f, 1.0f};
  Media::ColorF buttonBodyDisable{0.141f, 0.145f, 0.157f, 1.0f};
  Media::ColorF buttonBodySelect{0.176f, 0.298f, 0.451f, 1.0f};
  Media::ColorF border{0.255f, 0.267f, 0.290f, 1.0f};
  Media::ColorF borderFocus{0.298f, 0.604f, 1.0f, 1.0f};
  Media::ColorF sliderCursor{0.298f, 0.604f, 1.0f, 1.0f};
  Media::ColorF editBackground{0.086f, 0.090f, 0.098f, 1.0f};
  Media::ColorF selection{0.176f, 0.298f, 0.451f, 1.0f};
  Media::ColorF scrollThumb{0.333f, 0.345f, 0.369f, 1.0f};
  Media::ColorF titleHeader{0.153f, 0.161f, 0.176f, 1.0f};
  Media::TextFormat font{L"Noto Sans CJK JP", 13.0f};
  std::int32_t titleHeaderHeight = 24;
  std::int32_t listItemHeight = 20;

  // Milliseconds and pixels of the desktop's settings.
  std::int32_t doubleClickTime = 500;
  std::int32_t dragWidth = 6;
  std::int32_t dragHeight = 6;
  std::int32_t hoverTime = 400;
  std::int32_t repeatDelay = 500;   // (keyboard delay + 1) * 1000 / 4
  std::int32_t repeatPeriod = 100;  // 1000 / (keyboard speed + 2)
  std::int32_t caretBlinkTime = 500;
  std::int32_t screenWidth = 1920;

  // The user's settings of the controls.
  bool altLeftClickToRightClick = false;  // AltLeftClickToRightClick
  std::int32_t sliderMoveMode = 0;        // SliderMoveMode
  std::int32_t sliderMoveRatio = 100;     // SliderMoveRatio, percent
  std::int32_t sliderDirectMove = 0;      // SliderDirectMove: 0 Alt jumps, 1 jumps without Shift
  bool slideMouseHidden = false;          // SlideMouseHidden
  bool sliderButtonHidden = false;        // SliderButtonHidden
  bool sliderCursorHidden = false;        // SliderCursorHidden

  // The colours and font of the window frame carried over.
  static ControlStyle fromWindowStyle(const WindowStyle& style);
};

}  // namespace Window
