// The figures that 図形, the masks and the lens blur draw: the built-in outlines in menu
// order, then the SVG files of %Figure%, each drawn on demand into a CPU image of format
// 11 (16-bit RGBA, premultiplied alpha), which the upload to the GPU copies as it is.
// A System::Singleton service, made on the main thread at start; after that it holds
// nothing that changes, so render threads may draw through it at once.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "media/figure/FigureRasterizer.h"
#include "media/figure/PathData.h"

namespace Media {
class ImageBuffer;
}

namespace Resource {

struct Figure {
  std::wstring name;
  const PathData* path = nullptr;  // null for an SVG file
  std::wstring fileName;           // the SVG file; empty for a built-in outline
  // 1 fills the whole image (背景), 3 keeps the outline half a pixel inside every edge
  // (円), 2 and 0 draw the outline as it is.
  std::int32_t fillMode = 0;
};

class FigureResource {
 public:
  using RasterizerFactory = std::function<std::unique_ptr<Media::FigureRasterizer>()>;

  // The platform installs its 2D library before the service is acquired.
  static void setRasterizerFactory(RasterizerFactory factory);

  // The names of the list in menu order: the built-ins, then the SVG files of %Figure%
  // by file name, without the extension. The item lists read this, with or without the
  // service.
  static std::vector<std::wstring> listNames();

  FigureResource();
  ~FigureResource();
  FigureResource(const FigureResource&) = delete;
  FigureResource& operator=(const FigureResource&) = delete;

  const std::vector<Figure>& figures() const noexcept { return figures_; }
  // The figure of that name; an unknown name is taken as the path of an SVG file.
  Figure find(const std::wstring& name) const;

  // The figure at `width` by `height` in `color` (straight RGBA, 0 .. 1): filled when
  // `lineWidth` is 0, else its outline stroked inside the image. A stroke too wide to
  // leave the shape hollow fills it, unless `fitLine` is set, which keeps it at the
  // widest hollow stroke with round joins. An SVG figure draws as drawFile() does.
  std::shared_ptr<Media::ImageBuffer> draw(const Figure& figure, std::uint32_t width, std::uint32_t height,
                                           const Media::FigureColor& color, float lineWidth, bool fitLine) const;
  // An SVG file stretched over width by height; a monochrome file takes the red, green
  // and blue of `color`, a file of several colours keeps them. A file that cannot be read
  // or is no SVG document throws System::NoteException.
  std::shared_ptr<Media::ImageBuffer> drawFile(const std::wstring& path, std::uint32_t width, std::uint32_t height,
                                               const Media::FigureColor& color) const;
  // Whether the file opens as an SVG document: what a figure file must pass to be taken.
  bool canOpen(const std::wstring& path) const;

 private:
  std::unique_ptr<Media::FigureRasterizer> rasterizer_;
  std::vector<std::unique_ptr<PathData>> paths_;
  std::vector<Figure> figures_;
};

}  // namespace Resource
