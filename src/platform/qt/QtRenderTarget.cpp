#include "platform/qt/QtRenderTarget.h"

#include <QBrush>
#include <QFont>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QTextLayout>
#include <QTextLine>

#include <algorithm>
#include <cstring>

namespace Platform {

namespace {

QColor toQColor(const Media::ColorF& color) {
  return QColor::fromRgbF(std::clamp(color.r, 0.0f, 1.0f), std::clamp(color.g, 0.0f, 1.0f),
                          std::clamp(color.b, 0.0f, 1.0f), std::clamp(color.a, 0.0f, 1.0f));
}

QBrush toQBrush(const Media::Brush& brush) {
  if (!brush.gradient) return QBrush(toQColor(brush.color));
  QLinearGradient gradient(QPointF(brush.start.x, brush.start.y), QPointF(brush.end.x, brush.end.y));
  gradient.setColorAt(0.0, toQColor(brush.color));
  gradient.setColorAt(1.0, toQColor(brush.endColor));
  return QBrush(gradient);
}

QRectF toQRect(const Media::RectF& rect) { return QRectF(rect.left, rect.top, rect.width(), rect.height()); }

QPen toQPen(const Media::Brush& brush, float width, Media::StrokeStyle style) {
  QPen pen(toQBrush(brush), width);
  pen.setCapStyle(Qt::FlatCap);
  switch (style) {
    case Media::StrokeStyle::Solid:
      pen.setJoinStyle(Qt::MiterJoin);
      pen.setMiterLimit(1.0);
      break;
    case Media::StrokeStyle::RoundJoin:
      pen.setJoinStyle(Qt::RoundJoin);
      break;
    case Media::StrokeStyle::Dash:
      pen.setJoinStyle(Qt::MiterJoin);
      pen.setMiterLimit(10.0);
      pen.setStyle(Qt::DashLine);
      break;
    case Media::StrokeStyle::AnchorDash:
      pen.setJoinStyle(Qt::MiterJoin);
      pen.setMiterLimit(10.0);
      // In units of the stroke's width.
      pen.setDashPattern({3.0, 3.0});
      break;
  }
  return pen;
}

class QtBitmap : public Media::Bitmap {
 public:
  explicit QtBitmap(QImage image) : image(std::move(image)) {}
  std::int32_t width() const override { return image.width(); }
  std::int32_t height() const override { return image.height(); }
  QImage image;
};

class QtTextLayout : public Media::TextLayout {
 public:
  QtTextLayout(const std::wstring& text, const Media::TextFormat& format, float maxWidth)
      : text_(QString::fromStdWString(text)), length_(text.size()) {
    QFont font(QString::fromStdWString(format.family));
    font.setPixelSize(std::max(1, static_cast<int>(format.size + 0.5f)));
    font.setBold(format.bold);
    font.setItalic(format.italic);
    // Line ends break lines here as they do in the text box.
    QString shown = text_;
    shown.replace(QLatin1Char('\n'), QChar::LineSeparator);
    layout_.setText(shown);
    layout_.setFont(font);
    layout_.setCacheEnabled(true);
    layout_.beginLayout();
    float y = 0.0f;
    for (;;) {
      QTextLine line = layout_.createLine();
      if (!line.isValid()) break;
      // A line is laid out only once it has a width; without a limit it breaks at line ends alone.
      line.setLineWidth(maxWidth > 0.0f ? maxWidth : 1.0e6);
      line.setPosition(QPointF(0.0, y));
      y += static_cast<float>(line.height());
    }
    layout_.endLayout();
  }

  std::size_t length() const override { return length_; }

  Media::SizeF size() const override {
    const QRectF box = layout_.boundingRect();
    float width = 0.0f;
    for (int i = 0; i < layout_.lineCount(); ++i) width = std::max(width, static_cast<float>(layout_.lineAt(i).naturalTextWidth()));
    return {width, static_cast<float>(box.height())};
  }

  HitTest hitTestPoint(float x, float y) const override {
    HitTest hit;
    if (layout_.lineCount() == 0) return hit;
    int index = 0;
    while (index + 1 < layout_.lineCount() && y >= layout_.lineAt(index + 1).y()) ++index;
    const QTextLine line = layout_.lineAt(index);
    const int cursor = line.xToCursor(x, QTextLine::CursorBetweenCharacters);
    const int nearest = line.xToCursor(x, QTextLine::CursorOnCharacter);
    hit.position = static_cast<std::size_t>(std::clamp(nearest, 0, static_cast<int>(length_)));
    hit.trailing = cursor > nearest;
    hit.inside = y >= 0.0f && y < layout_.boundingRect().height() && x >= 0.0f && x < line.naturalTextWidth();
    return hit;
  }

  Caret caretAt(std::size_t position, bool trailing) const override {
    const int cursor = static_cast<int>(std::min(position + (trailing ? 1 : 0), length_));
    for (int i = 0; i < layout_.lineCount(); ++i) {
      const QTextLine line = layout_.lineAt(i);
      // A position at a line's end that holds a line break belongs to the next line.
      if (cursor < line.textStart() + line.textLength() || i + 1 == layout_.lineCount()) {
        return {static_cast<float>(line.cursorToX(cursor)), static_cast<float>(line.y()),
                static_cast<float>(line.height())};
      }
    }
    return {0.0f, 0.0f, static_cast<float>(QFontMetricsF(layout_.font()).height())};
  }

  std::vector<Line> lines() const override {
    std::vector<Line> result;
    for (int i = 0; i < layout_.lineCount(); ++i) {
      const QTextLine line = layout_.lineAt(i);
      result.push_back({static_cast<std::size_t>(line.textStart()), static_cast<std::size_t>(line.textLength()),
                        static_cast<float>(line.y()), static_cast<float>(line.height()),
                        static_cast<float>(line.ascent())});
    }
    return result;
  }

  void draw(QPainter& painter, QPointF at) const { layout_.draw(&painter, at); }

 private:
  QString text_;
  std::size_t length_ = 0;
  QTextLayout layout_;
};

}  // namespace

QtRenderTarget::QtRenderTarget(std::function<void(const QRect&)> changed) : changed_(std::move(changed)) {}

void QtRenderTarget::resize(int width, int height) {
  if (width == image_.width() && height == image_.height()) return;
  QImage resized(std::max(width, 0), std::max(height, 0), QImage::Format_ARGB32_Premultiplied);
  resized.fill(Qt::transparent);
  if (!image_.isNull() && !resized.isNull()) {
    QPainter copy(&resized);
    copy.setCompositionMode(QPainter::CompositionMode_Source);
    copy.drawImage(0, 0, image_);
  }
  const bool open = painter_.isActive();
  if (open) painter_.end();
  image_ = std::move(resized);
  if (open) {
    painter_.begin(&image_);
    clipChanged();
  }
}

Media::SizeF QtRenderTarget::pixelSize() const {
  return {static_cast<float>(image_.width()), static_cast<float>(image_.height())};
}

void QtRenderTarget::open() {
  dirty_ = QRectF();
  if (image_.isNull()) return;
  painter_.begin(&image_);
  painter_.setRenderHint(QPainter::Antialiasing, true);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
  clipChanged();
}

bool QtRenderTarget::flush() {
  if (painter_.isActive() && !painter_.end()) return false;
  if (changed_ && !dirty_.isEmpty()) changed_(dirty_.toAlignedRect().intersected(image_.rect()));
  dirty_ = QRectF();
  return true;
}

void QtRenderTarget::clipChanged() {
  if (!painter_.isActive()) return;
  painter_.setClipRect(toQRect(clip()));
}

void QtRenderTarget::touch(const QRectF& rect) { dirty_ = dirty_.united(rect.intersected(toQRect(clip()))); }

void QtRenderTarget::doClear(const Media::ColorF& color) {
  if (!painter_.isActive()) return;
  painter_.save();
  painter_.setCompositionMode(QPainter::CompositionMode_Source);
  painter_.fillRect(toQRect(clip()), toQColor(color));
  painter_.restore();
  touch(toQRect(clip()));
}

void QtRenderTarget::doFillRect(const Media::RectF& rect, const Media::Brush& brush) {
  if (!painter_.isActive()) return;
  // Whole-pixel rectangles stay sharp: no antialiasing for axis-aligned fills.
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.fillRect(toQRect(rect), toQBrush(brush));
  painter_.setRenderHint(QPainter::Antialiasing, true);
  touch(toQRect(rect));
}

void QtRenderTarget::doFillRoundedRect(const Media::RectF& rect, float radius, const Media::Brush& brush) {
  if (!painter_.isActive()) return;
  QPainterPath path;
  path.addRoundedRect(toQRect(rect), radius, radius);
  painter_.fillPath(path, toQBrush(brush));
  touch(toQRect(rect));
}

void QtRenderTarget::doDrawPath(const std::vector<Media::PointF>& points, bool closed, const Media::Brush& brush,
                                float width, Media::StrokeStyle style) {
  if (!painter_.isActive()) return;
  QPolygonF polygon;
  for (const Media::PointF& point : points) polygon << QPointF(point.x, point.y);
  painter_.setPen(toQPen(brush, width, style));
  painter_.setBrush(Qt::NoBrush);
  if (closed) {
    painter_.drawPolygon(polygon);
  } else {
    painter_.drawPolyline(polygon);
  }
  touch(polygon.boundingRect().adjusted(-width, -width, width, width));
}

void QtRenderTarget::doFillPath(const std::vector<Media::PointF>& points, const Media::Brush& brush) {
  if (!painter_.isActive()) return;
  QPolygonF polygon;
  for (const Media::PointF& point : points) polygon << QPointF(point.x, point.y);
  QPainterPath path;
  path.addPolygon(polygon);
  path.closeSubpath();
  painter_.fillPath(path, toQBrush(brush));
  touch(polygon.boundingRect());
}

void QtRenderTarget::doDrawBitmap(const Media::Bitmap& bitmap, const Media::RectF& destination,
                                  const Media::RectF& source, float opacity) {
  if (!painter_.isActive()) return;
  const auto* image = dynamic_cast<const QtBitmap*>(&bitmap);
  if (!image) return;
  painter_.setOpacity(opacity);
  painter_.drawImage(toQRect(destination), image->image, toQRect(source));
  painter_.setOpacity(1.0);
  touch(toQRect(destination));
}

void QtRenderTarget::doDrawTextLayout(Media::PointF at, const Media::TextLayout& layout, const Media::Brush& brush) {
  if (!painter_.isActive()) return;
  const auto* text = dynamic_cast<const QtTextLayout*>(&layout);
  if (!text) return;
  painter_.setPen(QPen(toQBrush(brush), 1.0));
  text->draw(painter_, QPointF(at.x, at.y));
  const Media::SizeF size = layout.size();
  touch(QRectF(at.x, at.y, size.width + 2.0, size.height + 2.0));
}

std::unique_ptr<Media::TextLayout> QtRenderTarget::createTextLayout(const std::wstring& text,
                                                                    const Media::TextFormat& format, float maxWidth,
                                                                    float) {
  return std::make_unique<QtTextLayout>(text, format, maxWidth);
}

std::shared_ptr<Media::Bitmap> QtRenderTarget::createBitmap(std::int32_t width, std::int32_t height,
                                                            const void* pixels, std::size_t pitch) {
  QImage image(std::max(width, 0), std::max(height, 0), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < image.height(); ++y) {
    std::memcpy(image.scanLine(y), static_cast<const std::uint8_t*>(pixels) + pitch * static_cast<std::size_t>(y),
                static_cast<std::size_t>(width) * 4);
  }
  return std::make_shared<QtBitmap>(std::move(image));
}

}  // namespace Platform
