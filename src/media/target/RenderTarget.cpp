#include "media/target/RenderTarget.h"

#include <algorithm>
#include <exception>

#include "system/Exception.h"

namespace Media {

RectF RectF::intersected(const RectF& other) const noexcept {
  RectF result{std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
               std::min(bottom, other.bottom)};
  if (result.right < result.left) result.right = result.left;
  if (result.bottom < result.top) result.bottom = result.top;
  return result;
}

void RenderTarget::beginDraw() {
  if (depth_++ == 0) open();
}

void RenderTarget::endDraw() {
  if (depth_ <= 0) return;
  if (--depth_ > 0) return;
  // A scope that leaves its clip behind must not clip the next frame.
  const bool clipped = !clips_.empty();
  clips_.clear();
  if (clipped) clipChanged();
  if (!flush()) throw System::NoteException("Media::RenderTarget::endDraw", "target->EndDraw");
}

void RenderTarget::pushClip(const RectF& rect) {
  clips_.push_back(rect.moved(origin_.x, origin_.y).intersected(clip()));
  clipChanged();
}

void RenderTarget::popClip() {
  if (clips_.empty()) return;
  clips_.pop_back();
  clipChanged();
}

RectF RenderTarget::clip() const {
  if (!clips_.empty()) return clips_.back();
  const SizeF size = pixelSize();
  return {0.0f, 0.0f, size.width, size.height};
}

Brush RenderTarget::absolute(const Brush& brush) const {
  Brush moved = brush;
  moved.start = {brush.start.x + origin_.x, brush.start.y + origin_.y};
  moved.end = {brush.end.x + origin_.x, brush.end.y + origin_.y};
  return moved;
}

void RenderTarget::clear(const ColorF& color) { doClear(color); }

void RenderTarget::fillRect(const RectF& rect, const Brush& brush) {
  if (rect.empty()) return;
  doFillRect(rect.moved(origin_.x, origin_.y), absolute(brush));
}

void RenderTarget::fillRoundedRect(const RectF& rect, float radius, const Brush& brush) {
  if (rect.empty()) return;
  doFillRoundedRect(rect.moved(origin_.x, origin_.y), radius, absolute(brush));
}

void RenderTarget::drawRect(const RectF& rect, const Brush& brush, float width, StrokeStyle style) {
  drawPath({{rect.left, rect.top}, {rect.right, rect.top}, {rect.right, rect.bottom}, {rect.left, rect.bottom}}, true,
           brush, width, style);
}

void RenderTarget::drawLine(PointF from, PointF to, const Brush& brush, float width, StrokeStyle style) {
  drawPath({from, to}, false, brush, width, style);
}

void RenderTarget::drawPath(const std::vector<PointF>& points, bool closed, const Brush& brush, float width,
                            StrokeStyle style) {
  if (points.size() < 2) return;
  std::vector<PointF> moved(points);
  for (PointF& point : moved) point = {point.x + origin_.x, point.y + origin_.y};
  doDrawPath(moved, closed, absolute(brush), width, style);
}

void RenderTarget::fillPath(const std::vector<PointF>& points, const Brush& brush) {
  if (points.size() < 3) return;
  std::vector<PointF> moved(points);
  for (PointF& point : moved) point = {point.x + origin_.x, point.y + origin_.y};
  doFillPath(moved, absolute(brush));
}

void RenderTarget::drawBitmap(const Bitmap& bitmap, const RectF& destination, const RectF& source, float opacity) {
  doDrawBitmap(bitmap, destination.moved(origin_.x, origin_.y), source, opacity);
}

void RenderTarget::drawTextLayout(PointF at, const TextLayout& layout, const Brush& brush) {
  doDrawTextLayout({at.x + origin_.x, at.y + origin_.y}, layout, absolute(brush));
}

void RenderTarget::drawText(const std::wstring& text, const TextFormat& format, const RectF& rect,
                            const Brush& brush, TextAlignment alignment) {
  if (text.empty() || rect.empty()) return;
  const std::unique_ptr<TextLayout> layout = createTextLayout(text, format, rect.width(), rect.height());
  const SizeF size = layout->size();
  float x = rect.left;
  if (alignment == TextAlignment::Center) x += (rect.width() - size.width) / 2.0f;
  if (alignment == TextAlignment::Trailing) x += rect.width() - size.width;
  drawTextLayout({x, rect.top + (rect.height() - size.height) / 2.0f}, *layout, brush);
}

DrawScope::DrawScope(RenderTarget& target, const RectF& rect, bool relative)
    : target_(target), savedOrigin_(target.origin()), exceptionsAtStart_(std::uncaught_exceptions()) {
  target_.beginDraw();
  const RectF absolute = relative ? rect.moved(savedOrigin_.x, savedOrigin_.y) : rect;
  // The clip is pushed only where it narrows what is already there.
  if (!(absolute == target_.clip())) {
    target_.setOrigin({0.0f, 0.0f});
    target_.pushClip(absolute);
    clipped_ = true;
  }
  target_.setOrigin({absolute.left, absolute.top});
}

DrawScope::~DrawScope() noexcept(false) {
  if (clipped_) target_.popClip();
  target_.setOrigin(savedOrigin_);
  if (std::uncaught_exceptions() > exceptionsAtStart_) {
    // Already unwinding: the first failure is the one that counts.
    try {
      target_.endDraw();
    } catch (const System::Exception&) {
    }
    return;
  }
  target_.endDraw();
}

}  // namespace Media
