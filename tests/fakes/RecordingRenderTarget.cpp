#include "fakes/RecordingRenderTarget.h"

#include <algorithm>
#include <cmath>

namespace TestSupport {

namespace {

class FakeBitmap : public Media::Bitmap {
 public:
  FakeBitmap(std::int32_t width, std::int32_t height) : width_(width), height_(height) {}
  std::int32_t width() const override { return width_; }
  std::int32_t height() const override { return height_; }

 private:
  std::int32_t width_;
  std::int32_t height_;
};

}  // namespace

FixedTextLayout::FixedTextLayout(std::wstring text, float advance, float lineHeight)
    : text_(std::move(text)), advance_(advance), lineHeight_(lineHeight) {}

std::vector<Media::TextLayout::Line> FixedTextLayout::lines() const {
  std::vector<Line> result;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text_.find(L'\n', start);
    Line line;
    line.start = start;
    line.length = (end == std::wstring::npos ? text_.size() : end + 1) - start;
    line.top = static_cast<float>(result.size()) * lineHeight_;
    line.height = lineHeight_;
    line.baseline = lineHeight_ * 0.8f;
    result.push_back(line);
    if (end == std::wstring::npos) return result;
    start = end + 1;
  }
}

Media::SizeF FixedTextLayout::size() const {
  float width = 0.0f;
  const std::vector<Line> all = lines();
  for (const Line& line : all) {
    const bool newline = line.length > 0 && text_[line.start + line.length - 1] == L'\n';
    width = std::max(width, static_cast<float>(line.length - (newline ? 1 : 0)) * advance_);
  }
  return {width, static_cast<float>(all.size()) * lineHeight_};
}

Media::TextLayout::HitTest FixedTextLayout::hitTestPoint(float x, float y) const {
  const std::vector<Line> all = lines();
  const std::size_t row = std::min<std::size_t>(
      static_cast<std::size_t>(std::max(0.0f, std::floor(y / lineHeight_))), all.size() - 1);
  const Line& line = all[row];
  const bool newline = line.length > 0 && text_[line.start + line.length - 1] == L'\n';
  const std::size_t characters = line.length - (newline ? 1 : 0);
  HitTest hit;
  hit.inside = x >= 0.0f && y >= 0.0f && y < static_cast<float>(all.size()) * lineHeight_ &&
               x < static_cast<float>(characters) * advance_;
  if (characters == 0) {
    hit.position = line.start;
    return hit;
  }
  const float cell = std::clamp(x / advance_, 0.0f, static_cast<float>(characters) - 0.001f);
  hit.position = line.start + static_cast<std::size_t>(cell);
  hit.trailing = x >= 0.0f && cell - std::floor(cell) >= 0.5f;
  return hit;
}

Media::TextLayout::Caret FixedTextLayout::caretAt(std::size_t position, bool trailing) const {
  position = std::min(position + (trailing ? 1 : 0), text_.size());
  for (const Line& line : lines()) {
    const bool last = line.start + line.length >= text_.size();
    if (position < line.start + line.length || last) {
      return {static_cast<float>(position - line.start) * advance_, line.top, line.height};
    }
  }
  return {};
}

RecordingRenderTarget::RecordingRenderTarget(std::int32_t width, std::int32_t height) { resize(width, height); }

void RecordingRenderTarget::resize(std::int32_t width, std::int32_t height) {
  width_ = width;
  height_ = height;
  pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Media::ColorF{0, 0, 0, 0});
}

Media::SizeF RecordingRenderTarget::pixelSize() const {
  return {static_cast<float>(width_), static_cast<float>(height_)};
}

std::unique_ptr<Media::TextLayout> RecordingRenderTarget::createTextLayout(const std::wstring& text,
                                                                           const Media::TextFormat& format, float,
                                                                           float) {
  return std::make_unique<FixedTextLayout>(text, format.size / 2.0f, format.size);
}

std::shared_ptr<Media::Bitmap> RecordingRenderTarget::createBitmap(std::int32_t width, std::int32_t height,
                                                                   const void*, std::size_t) {
  return std::make_shared<FakeBitmap>(width, height);
}

std::vector<std::wstring> RecordingRenderTarget::texts() const {
  std::vector<std::wstring> result;
  for (const Operation& operation : operations_) {
    if (operation.kind == Kind::Text) result.push_back(operation.text);
  }
  return result;
}

Media::ColorF RecordingRenderTarget::pixel(std::int32_t x, std::int32_t y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return {0, 0, 0, 0};
  return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)];
}

bool RecordingRenderTarget::flush() {
  ++flushes_;
  if (!failNextFlush_) return true;
  failNextFlush_ = false;
  return false;
}

void RecordingRenderTarget::record(Kind kind, const Media::RectF& rect, const Media::ColorF& color) {
  Operation operation;
  operation.kind = kind;
  operation.rect = rect;
  operation.color = color;
  operation.clip = clip();
  operations_.push_back(std::move(operation));
}

void RecordingRenderTarget::doClear(const Media::ColorF& color) {
  record(Kind::Clear, {0, 0, static_cast<float>(width_), static_cast<float>(height_)}, color);
  std::fill(pixels_.begin(), pixels_.end(), color);
}

void RecordingRenderTarget::doFillRect(const Media::RectF& rect, const Media::Brush& brush) {
  record(Kind::Fill, rect, brush.color);
  const Media::RectF area = rect.intersected(clip());
  for (auto y = static_cast<std::int32_t>(std::ceil(area.top)); y < static_cast<std::int32_t>(std::ceil(area.bottom)); ++y) {
    for (auto x = static_cast<std::int32_t>(std::ceil(area.left)); x < static_cast<std::int32_t>(std::ceil(area.right));
         ++x) {
      if (x >= 0 && y >= 0 && x < width_ && y < height_) {
        pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x)] =
            brush.color;
      }
    }
  }
}

void RecordingRenderTarget::doFillRoundedRect(const Media::RectF& rect, float, const Media::Brush& brush) {
  record(Kind::FillRounded, rect, brush.color);
}

void RecordingRenderTarget::doDrawPath(const std::vector<Media::PointF>& points, bool, const Media::Brush& brush, float,
                                       Media::StrokeStyle) {
  record(Kind::Stroke, {}, brush.color);
  operations_.back().points = points;
}

void RecordingRenderTarget::doFillPath(const std::vector<Media::PointF>& points, const Media::Brush& brush) {
  record(Kind::FillPath, {}, brush.color);
  operations_.back().points = points;
}

void RecordingRenderTarget::doDrawBitmap(const Media::Bitmap&, const Media::RectF& destination, const Media::RectF&,
                                         float) {
  record(Kind::Bitmap, destination, {});
}

void RecordingRenderTarget::doDrawTextLayout(Media::PointF at, const Media::TextLayout& layout,
                                             const Media::Brush& brush) {
  const Media::SizeF size = layout.size();
  record(Kind::Text, {at.x, at.y, at.x + size.width, at.y + size.height}, brush.color);
  if (const auto* fixed = dynamic_cast<const FixedTextLayout*>(&layout)) operations_.back().text = fixed->text();
}

}  // namespace TestSupport
