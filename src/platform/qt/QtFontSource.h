// The installed fonts through Qt's font database, and font metrics through QRawFont. The
// font database needs the application object, so only programs with one install it.
// This header stays free of Qt.
#pragma once

#include <memory>

#include "media/font/FontSource.h"

namespace Platform {

// Families are read on the main thread; metrics may be asked for from any thread.
std::unique_ptr<Media::FontSource> createQtFontSource();

}  // namespace Platform
