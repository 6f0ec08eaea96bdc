#include "platform/qt/QtFigureRasterizer.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>

#include "media/figure/EndpointArc.h"
#include "media/figure/PathSink.h"
#include "media/image/ImageBuffer.h"
#include "platform/qt/QtSvgDocument.h"

namespace Platform {

namespace {

class PainterPathSink : public Resource::PathSink {
 public:
  void beginFigure(double x, double y) override { path_.moveTo(x, y); }
  void addLine(double x, double y) override { path_.lineTo(x, y); }
  void addArc(double x, double y, double radiusX, double radiusY, double rotation, bool clockwise,
              bool large) override {
    const QPointF start = path_.currentPosition();
    for (const Resource::CubicSegment& segment :
         Resource::endpointArcToCubics(start.x(), start.y(), x, y, radiusX, radiusY, rotation, clockwise, large)) {
      path_.cubicTo(segment.control1X, segment.control1Y, segment.control2X, segment.control2Y, segment.x, segment.y);
    }
  }
  void addQuadraticBezier(double controlX, double controlY, double x, double y) override {
    path_.quadTo(controlX, controlY, x, y);
  }
  void endFigure(bool closed) override {
    if (closed) path_.closeSubpath();
  }

  const QPainterPath& path() const noexcept { return path_; }

 private:
  QPainterPath path_;
};

class QtFigureRasterizer : public Media::FigureRasterizer {
 public:
  void drawPath(Media::ImageBuffer& image, const Outline& outline, const Media::FigureColor& color,
                const Media::FigureStroke& stroke) const override {
    if (image.width() == 0 || image.height() == 0) return;
    PainterPathSink sink;
    outline(sink);
    // The image's bytes are R, G, B, A in 16-bit words: Qt's premultiplied RGBA64.
    QImage target(reinterpret_cast<uchar*>(image.data()), static_cast<int>(image.width()),
                  static_cast<int>(image.height()), static_cast<qsizetype>(image.pitch()),
                  QImage::Format_RGBA64_Premultiplied);
    QPainter painter(&target);
    painter.setRenderHint(QPainter::Antialiasing);
    auto unit = [](float value) { return std::clamp(value, 0.0f, 1.0f); };
    const QColor paint = QColor::fromRgbF(unit(color[0]), unit(color[1]), unit(color[2]), unit(color[3]));
    if (stroke.width <= 0.0) {
      painter.fillPath(sink.path(), paint);
      return;
    }
    QPen pen(QBrush(paint), stroke.width, Qt::SolidLine, Qt::FlatCap, stroke.roundJoins ? Qt::RoundJoin : Qt::MiterJoin);
    // Qt measures the miter in whole pen widths, the figure's limit in half widths: 10.
    pen.setMiterLimit(5.0);
    painter.strokePath(sink.path(), pen);
  }

  std::unique_ptr<Media::SvgDocument> openSvg(const std::wstring& path, const char* place) const override {
    return openQtSvgDocument(path, place);
  }

  bool isSvg(const std::wstring& path) const override { return isQtSvgDocument(path); }
};

}  // namespace

std::unique_ptr<Media::FigureRasterizer> createQtFigureRasterizer() { return std::make_unique<QtFigureRasterizer>(); }

}  // namespace Platform
