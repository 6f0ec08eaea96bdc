// The tab strip above a grouped client: where it stands in its host window. The
// members and their order belong to the window service, which lays the strip out,
// paints it and takes its clicks. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Window {

class WindowGroupTab {
 public:
  std::int32_t x() const noexcept { return x_; }
  std::int32_t y() const noexcept { return y_; }
  std::int32_t width() const noexcept { return width_; }
  std::int32_t height() const noexcept { return height_; }
  void setRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) noexcept {
    x_ = x;
    y_ = y;
    width_ = width;
    height_ = height;
  }
  bool contains(std::int32_t x, std::int32_t y) const noexcept {
    return x >= x_ && x < x_ + width_ && y >= y_ && y < y_ + height_;
  }
  // The tab of `count` equal tabs under the strip-relative `x`, clamped to the strip.
  static std::size_t tabAt(std::int32_t x, std::int32_t width, std::size_t count) noexcept {
    if (count == 0 || width <= 0) return 0;
    const std::int64_t index = static_cast<std::int64_t>(count) * x / width;
    if (index < 0) return 0;
    return static_cast<std::size_t>(index) >= count ? count - 1 : static_cast<std::size_t>(index);
  }

 private:
  std::int32_t x_ = 0;
  std::int32_t y_ = 0;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
};

}  // namespace Window
