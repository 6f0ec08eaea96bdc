// The sizes, colours and font of the window frame, read once from style.conf when the
// window service starts. Tests build one in code.
#pragma once

#include <cstdint>

#include "media/target/RenderTarget.h"

namespace Setting {
class SettingService;
}

namespace Window {

struct WindowStyle {
  std::int32_t separatorSize = 4;     // WindowSeparatorSize
  std::int32_t footerHeight = 22;     // FooterHeight: the status bar strip
  std::int32_t groupTabHeight = 20;   // GroupTabHeight
  std::int32_t titleHeaderHeight = 24;
  Media::ColorF background{0.118f, 0.122f, 0.133f, 1.0f};
  Media::ColorF windowSeparator{0.082f, 0.086f, 0.094f, 1.0f};
  Media::ColorF windowBorder{0.204f, 0.216f, 0.235f, 1.0f};
  Media::ColorF borderFocus{0.298f, 0.604f, 1.0f, 1.0f};
  Media::ColorF footer{0.094f, 0.098f, 0.106f, 1.0f};
  Media::ColorF titleHeader{0.153f, 0.161f, 0.176f, 1.0f};
  Media::ColorF text{0.875f, 0.882f, 0.898f, 1.0f};
  Media::ColorF buttonBody{0.169f, 0.176f, 0.192f, 1.0f};
  Media::ColorF buttonBodySelect{0.176f, 0.298f, 0.451f, 1.0f};
  Media::TextFormat font{L"Noto Sans CJK JP", 13.0f};

  // Missing or damaged values keep the defaults above.
  static WindowStyle fromSettings(Setting::SettingService& settings);
};

}  // namespace Window
