// Image files through Qt's image readers and writers: PNG, JPEG, BMP and GIF, and WebP,
// TIFF and the others whose plug-ins are installed. This header stays free of Qt.
#pragma once

#include <memory>

#include "media/image/ImageCodec.h"

namespace Platform {

// Needs no application object; any thread may use the codec.
std::unique_ptr<Media::ImageCodec> createQtImageCodec();

}  // namespace Platform
