// An SVG file opened as a figure, by the platform's SVG library (made through
// Media::FigureRasterizer::openSvg). A monochrome document, one whose fill colours are all
// the same opaque colour, takes the object's colour; others keep their own colours.
// One drawing owns a document; documents are not shared between threads.
#pragma once

#include <array>
#include <optional>

namespace Media {

class ImageBuffer;

// Straight RGBA, each 0 .. 1.
using FigureColor = std::array<float, 4>;

struct SvgSize {
  double width = 0.0;
  double height = 0.0;
};

class SvgDocument {
 public:
  virtual ~SvgDocument() = default;

  // The size the file asks for: its width and height, else its view box.
  virtual SvgSize viewportSize() const = 0;
  virtual bool monochrome() const = 0;
  // The one fill colour of a monochrome document.
  virtual std::optional<FigureColor> fillColor() const = 0;
  // Every plain colour paint of the document (fills and strokes) takes the red, green and
  // blue of `color`; each paint keeps its own alpha. Gradients stay as they are.
  virtual void setColor(const FigureColor& color) = 0;
  // Draws the document stretched over the whole of `image` (format 11, premultiplied),
  // over what the image holds.
  virtual void draw(ImageBuffer& image) const = 0;
};

}  // namespace Media
