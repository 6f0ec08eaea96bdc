// Media::RenderTarget on a kept premultiplied QImage: the outermost beginDraw opens a
// QPainter on it, the outermost endDraw closes the painter and reports the rectangle
// that changed. Used by the canvas windows and by pixel tests on the offscreen platform.
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>

#include <functional>

#include "media/target/RenderTarget.h"

namespace Platform {

class QtRenderTarget : public Media::RenderTarget {
 public:
  // `changed` receives the dirty rectangle at each outermost endDraw.
  explicit QtRenderTarget(std::function<void(const QRect&)> changed = {});

  // Keeps what fits of the old picture; new pixels are transparent black.
  void resize(int width, int height);
  const QImage& image() const noexcept { return image_; }

  Media::SizeF pixelSize() const override;
  std::unique_ptr<Media::TextLayout> createTextLayout(const std::wstring& text, const Media::TextFormat& format,
                                                      float maxWidth, float maxHeight) override;
  std::shared_ptr<Media::Bitmap> createBitmap(std::int32_t width, std::int32_t height, const void* pixels,
                                              std::size_t pitch) override;

 protected:
  void open() override;
  bool flush() override;
  void clipChanged() override;
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
  void touch(const QRectF& rect);

  QImage image_;
  QPainter painter_;
  QRectF dirty_;
  std::function<void(const QRect&)> changed_;
};

}  // namespace Platform
