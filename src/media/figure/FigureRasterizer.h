// What figure drawing asks of the platform's 2D library: an outline filled or stroked
// with antialiasing into a CPU image, and SVG files opened as documents. The figure
// list decides what to draw and where; the rasterizer only paints. Implementations keep
// no drawing state between calls, so any number of threads may use one at once.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "media/figure/SvgDocument.h"

namespace Resource {
class PathSink;
}

namespace Media {

class ImageBuffer;

struct FigureStroke {
  double width = 0.0;       // 0 fills the outline
  bool roundJoins = false;  // else mitred joins, cut at 10 half widths
};

class FigureRasterizer {
 public:
  using Outline = std::function<void(Resource::PathSink& sink)>;

  virtual ~FigureRasterizer() = default;

  // Paints the outline that `outline` writes into the sink, in the image's pixels, with
  // `color` (straight RGBA) over `image`, an image of format 11 with premultiplied alpha.
  virtual void drawPath(ImageBuffer& image, const Outline& outline, const FigureColor& color,
                        const FigureStroke& stroke) const = 0;
  // The SVG document of a file. A file that cannot be read or is no SVG document throws
  // System::NoteException with `place` and the file's name as note.
  virtual std::unique_ptr<SvgDocument> openSvg(const std::wstring& path, const char* place) const = 0;
  // Whether the file reads as an SVG document; logs nothing when it does not.
  virtual bool isSvg(const std::wstring& path) const = 0;
};

}  // namespace Media
