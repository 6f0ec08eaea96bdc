#include "control/BitmapButtonControl.h"

#include <algorithm>
#include <cmath>

namespace Control {

void BitmapButtonControl::drawBitmap(Media::RenderTarget& target, const Media::Bitmap& picture) {
  const float width = static_cast<float>(picture.width());
  const float height = static_cast<float>(picture.height());
  const float x = std::floor((static_cast<float>(rect.w) - width) / 2.0f);
  const float y = std::floor((static_cast<float>(rect.h) - height) / 2.0f);
  target.drawBitmap(picture, {x, y, x + width, y + height}, {0.0f, 0.0f, width, height}, enabled ? 1.0f : 0.4f);
}

void BitmapButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle&) {
  if (bitmap) drawBitmap(target, *bitmap);
}

void IconButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  if (icon.empty()) return;
  // A square of the shorter side, inset by a quarter of it.
  const float side = static_cast<float>(std::min(rect.w, rect.h)) / 2.0f;
  const float x = (static_cast<float>(rect.w) - side) / 2.0f;
  const float y = (static_cast<float>(rect.h) - side) / 2.0f;
  std::vector<Media::PointF> points;
  points.reserve(icon.size());
  for (const Media::PointF& point : icon) points.push_back({x + point.x * side, y + point.y * side});
  target.fillPath(points, Media::Brush::solid(textColor(style)));
}

void CheckBitmapButtonControl::click() {
  selected = !selected;
  paint();
  if (onChange) onChange(selected);
  ButtonControl::click();
}

void CheckBitmapButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  if (!selected && bitmapOff) {
    drawBitmap(target, *bitmapOff);
  } else {
    BitmapButtonControl::drawContent(target, style);
  }
}

TextIconButtonControl::TextIconButtonControl(Window::WindowControl* parent) : TextButtonControl(parent), icon_(this) {
  centred = false;
}

void TextIconButtonControl::layoutChildren() {
  icon_.setLayout(-rect.h, 0, std::max(rect.h, 1), 0);
  TextButtonControl::layoutChildren();
}

void TextIconButtonControl::drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::RectF box = bounds();
  target.drawText(text, style.font, {4.0f, 0.0f, box.right - static_cast<float>(rect.h), box.bottom},
                  Media::Brush::solid(textColor(style)), Media::TextAlignment::Leading);
}

}  // namespace Control
