// Scales the pixel values of style.conf once at start, so that every later reader of
// `Layout` and `Font` sees pixels that are right for the screen. Main thread, at start.
#pragma once

#include "system/IniFile.h"

namespace Setting {

// Reads HighDpiMode of section Direct3D straight from the main ini (default 0). When it
// is on and `dpi` is not 96, multiplies every Layout value and the size part of every
// Font value ("size,family") by dpi / 96, rounded and at least 1, in the style document.
// Returns the scale applied, 1.0 when none.
float applyDpiScaling(System::IniFile& mainIni, System::IniFile& style, int dpi);

}  // namespace Setting
