// What the settings service asks of the machine once at start: input timings, screen
// size, memory and DPI. The values of a headless run are the defaults below.
#pragma once

#include <cstdint>
#include <functional>

namespace Setting {

struct SystemMetrics {
  std::int32_t keyboardDelay = 500;    // milliseconds before a held key repeats
  std::int32_t keyboardRepeat = 100;   // milliseconds between repeats
  std::int32_t caretBlink = 500;       // milliseconds
  std::int32_t dragWidth = 6;          // pixels a press may move before it is a drag
  std::int32_t dragHeight = 6;
  std::int32_t doubleClickTime = 500;  // milliseconds
  std::int32_t screenWidth = 1920;     // pixels
  std::int32_t screenHeight = 1080;
  std::int32_t physicalMemory = 16384;  // megabytes
  std::int32_t dpi = 96;               // of the primary screen
};

// Installed by the platform before the settings service starts; without one the
// defaults stand.
using SystemMetricsSource = std::function<SystemMetrics()>;

}  // namespace Setting
