// Figures painted by Qt's raster engine into 16-bit premultiplied CPU images, and SVG
// figure files through Qt's SVG renderer. Needs no application object except for SVG
// files with text; this header stays free of Qt.
#pragma once

#include <memory>

#include "media/figure/FigureRasterizer.h"

namespace Platform {

// Any thread may use the rasterizer, as many at once as like.
std::unique_ptr<Media::FigureRasterizer> createQtFigureRasterizer();

}  // namespace Platform
