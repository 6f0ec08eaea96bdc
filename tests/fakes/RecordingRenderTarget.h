// A drawing target for tests: it records every primitive and keeps a small pixel grid
// of the solid rectangle fills, so that tests can ask what colour a pixel got. Text is
// laid out with fixed advances, so no test depends on a font.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "media/target/RenderTarget.h"

namespace TestSupport {

// Every character `advance` pixels wide; lines `lineHeight` high, split at '\n'.
class FixedTextLayout : public Media::TextLayout {
 public:
  FixedTextLayout(std::wstring text, float advance, float lineHeight);
  std::size_t length() const override { return text_.size(); }
  Media::SizeF size() const override;
  HitTest hitTestPoint(float x, float y) const override;
  Caret caretAt(std::size_t position, bool trailing) const override;
  std::vector<Line> lines() const override;
  const std::wstring& text() const noexcept { return text_; }

 private:
  std::wstring text_;
  float advance_;
  float lineHeight_;
};

class RecordingRenderTarget : public Media::RenderTarget {
 public:
  enum class Kind { Clear, Fill, FillRounded, Stroke, FillPath, Bitmap, Text };
  struct Operation {
    Kind kind = Kind::Fill;
    Media::RectF rect;   // absolute
    Media::ColorF color;  // the brush's first colour
    std::vector<Media::PointF> points;
    std::wstring text;
    Media::RectF clip;  // in force at the time
  };

  RecordingRenderTarget(std::int32_t width = 0, std::int32_t height = 0);
  void resize(std::int32_t width, std::int32_t height);

  Media::SizeF pixelSize() const override;
  std::unique_ptr<Media::TextLayout> createTextLayout(const std::wstring& text, const Media::TextFormat& format,
                                                      float maxWidth, float maxHeight) override;
  std::shared_ptr<Media::Bitmap> createBitmap(std::int32_t width, std::int32_t height, const void* pixels,
                                              std::size_t pitch) override;

  const std::vector<Operation>& operations() const noexcept { return operations_; }
  void clearOperations() { operations_.clear(); }
  // The texts drawn, in order.
  std::vector<std::wstring> texts() const;
  // The colour the last solid fill gave the pixel; transparent when none did.
  Media::ColorF pixel(std::int32_t x, std::int32_t y) const;
  std::int32_t opens() const noexcept { return opens_; }
  std::int32_t flushes() const noexcept { return flushes_; }
  void failNextFlush() noexcept { failNextFlush_ = true; }

 protected:
  void open() override { ++opens_; }
  bool flush() override;
  void clipChanged() override {}
  void doClear(const Media::ColorF& color) override;
  void doFillRect(const Media::RectF& rect, const Media::Brush& brush) override;
  void doFillRoundedRect(const Media::RectF& rect, float radius, const Media::Brush& brush) override;
  void doDrawPath(const std::vector<Media::PointF>& points, bool closed, const Media::Brush& brush, float width,
                  Media::StrokeStyle style) override;
  void doFillPath(const std::vector<Media::PointF>& points, const Media::Brush& brush) override;
  void doDrawBitmap(const Media::Bitmap& bitmap, const Media::RectF& destination, const Media::RectF& source,
                    float opacity) override;
  void doDrawTextLayout(Media::PointF at, const Media::TextLayout& layout, const Media::Brush& brush) override;

 private:
  void record(Kind kind, const Media::RectF& rect, const Media::ColorF& color);

  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  std::vector<Media::ColorF> pixels_;
  std::vector<Operation> operations_;
  std::int32_t opens_ = 0;
  std::int32_t flushes_ = 0;
  bool failNextFlush_ = false;
};

}  // namespace TestSupport
