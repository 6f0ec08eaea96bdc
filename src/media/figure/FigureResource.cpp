#include "media/figure/FigureResource.h"

#include <algorithm>
#include <cmath>

#include "media/figure/BuiltinPaths.h"
#include "media/image/ImageBuffer.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/FileName.h"

namespace Resource {

namespace {

// The built-in figures in menu order, with the outline each draws.
enum class Outline : std::uint8_t { Rectangle, Circle, Triangle, Pentagon, Hexagon, Star, Heart };

struct BuiltinFigure {
  const wchar_t* name;
  Outline outline;
  std::int32_t fillMode;
};

constexpr BuiltinFigure kBuiltins[] = {
    {L"背景", Outline::Rectangle, 1}, {L"円", Outline::Circle, 3},     {L"四角形", Outline::Rectangle, 2},
    {L"三角形", Outline::Triangle, 0}, {L"五角形", Outline::Pentagon, 0}, {L"六角形", Outline::Hexagon, 0},
    {L"星型", Outline::Star, 0},      {L"ハート", Outline::Heart, 0},
};

PathData makeOutline(Outline outline) {
  switch (outline) {
    case Outline::Rectangle:
      return BuiltinPaths::rectangle();
    case Outline::Circle:
      return BuiltinPaths::circle();
    case Outline::Triangle:
      return BuiltinPaths::polygon(3);
    case Outline::Pentagon:
      return BuiltinPaths::polygon(5);
    case Outline::Hexagon:
      return BuiltinPaths::polygon(6);
    case Outline::Star:
      return BuiltinPaths::star();
    case Outline::Heart:
      return BuiltinPaths::heart();
  }
  return BuiltinPaths::rectangle();
}

std::vector<System::DirectoryEntry> figureFiles() {
  return System::listFiles(L"*.svg", System::FileName::expand(L"%Figure%"));
}

FigureResource::RasterizerFactory& rasterizerFactory() {
  static FigureResource::RasterizerFactory factory;
  return factory;
}

// Every pixel of a format 11 image at `color`, premultiplied.
void fillImage(Media::ImageBuffer& image, const Media::FigureColor& color) {
  const float alpha = std::clamp(color[3], 0.0f, 1.0f);
  auto channel = [alpha](float value) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * alpha * 65535.0f));
  };
  const std::uint16_t pixel[4] = {channel(color[0]), channel(color[1]), channel(color[2]),
                                  static_cast<std::uint16_t>(std::lround(alpha * 65535.0f))};
  for (std::uint32_t y = 0; y < image.height(); ++y) {
    auto* row = reinterpret_cast<std::uint16_t*>(image.row(y));
    for (std::uint32_t x = 0; x < image.width(); ++x) std::copy(pixel, pixel + 4, row + std::size_t{x} * 4);
  }
}

std::shared_ptr<Media::ImageBuffer> clearImage(std::uint32_t width, std::uint32_t height) {
  auto image = std::make_shared<Media::ImageBuffer>(Media::Format::Rgba16Unorm, width, height);
  image->clear();
  return image;
}

}  // namespace

void FigureResource::setRasterizerFactory(RasterizerFactory factory) { rasterizerFactory() = std::move(factory); }

std::vector<std::wstring> FigureResource::listNames() {
  std::vector<std::wstring> names;
  for (const BuiltinFigure& builtin : kBuiltins) names.emplace_back(builtin.name);
  for (const System::DirectoryEntry& file : figureFiles()) names.push_back(System::FileName::baseName(file.path));
  return names;
}

FigureResource::FigureResource() {
  if (!rasterizerFactory()) {
    throw System::NoteException("Resource::FigureResource::FigureResource", "figure library not installed.");
  }
  rasterizer_ = rasterizerFactory()();
  for (const BuiltinFigure& builtin : kBuiltins) {
    paths_.push_back(std::make_unique<PathData>(makeOutline(builtin.outline)));
    figures_.push_back(Figure{builtin.name, paths_.back().get(), {}, builtin.fillMode});
  }
  for (const System::DirectoryEntry& file : figureFiles()) {
    figures_.push_back(Figure{System::FileName::baseName(file.path), nullptr, file.path, 0});
  }
}

FigureResource::~FigureResource() = default;

Figure FigureResource::find(const std::wstring& name) const {
  const auto found = std::find_if(figures_.begin(), figures_.end(), [&](const Figure& f) { return f.name == name; });
  if (found != figures_.end()) return *found;
  return Figure{name, nullptr, name, 0};
}

std::shared_ptr<Media::ImageBuffer> FigureResource::draw(const Figure& figure, std::uint32_t width,
                                                         std::uint32_t height, const Media::FigureColor& color,
                                                         float lineWidth, bool fitLine) const {
  if (!figure.path && figure.fillMode != 1) return drawFile(figure.fileName, width, height, color);
  std::shared_ptr<Media::ImageBuffer> image = clearImage(width, height);
  if (width == 0 || height == 0) return image;
  if (figure.fillMode == 1) {
    fillImage(*image, color);
    return image;
  }
  double boxWidth = width;
  double boxHeight = height;
  double offset = 0.0;
  // The circle stays half a pixel inside every edge, so that its antialiased rim is
  // not cut off by the image's border.
  if (figure.fillMode == 3) {
    boxWidth -= 1.0;
    boxHeight -= 1.0;
    offset = 0.5;
  }
  double line = std::max(0.0, static_cast<double>(lineWidth));
  const double inset = figure.path->inset();
  if (line > 0.0 && inset > 0.0) {
    const double widest = inset * std::min(boxWidth, boxHeight);
    if (line >= widest) line = fitLine ? widest : 0.0;
  }
  const PathData& path = *figure.path;
  if (line > 0.0) {
    // The outline shrinks by the stroke's width, so that the stroke stays inside.
    rasterizer_->drawPath(
        *image,
        [&](PathSink& sink) { path.emit(sink, boxWidth - line, boxHeight - line, offset + line / 2, offset + line / 2); },
        color, Media::FigureStroke{line, fitLine});
  } else {
    rasterizer_->drawPath(
        *image, [&](PathSink& sink) { path.emit(sink, boxWidth, boxHeight, offset, offset); }, color,
        Media::FigureStroke{});
  }
  return image;
}

std::shared_ptr<Media::ImageBuffer> FigureResource::drawFile(const std::wstring& path, std::uint32_t width,
                                                             std::uint32_t height,
                                                             const Media::FigureColor& color) const {
  std::unique_ptr<Media::SvgDocument> document = rasterizer_->openSvg(path, "Resource::FigureResource::drawFile");
  if (document->monochrome()) document->setColor(color);
  std::shared_ptr<Media::ImageBuffer> image = clearImage(width, height);
  if (width > 0 && height > 0) document->draw(*image);
  return image;
}

bool FigureResource::canOpen(const std::wstring& path) const { return rasterizer_->isSvg(path); }

}  // namespace Resource
