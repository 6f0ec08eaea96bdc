// Buttons that show a picture: a bitmap (with the tool tip of its hover), a small icon
// drawn in the text colour, and the check variant with a picture for on and for off.
#pragma once

#include <memory>
#include <vector>

#include "control/ButtonControl.h"

namespace Control {

class BitmapButtonControl : public ButtonControl {
 public:
  using ButtonControl::ButtonControl;
  std::shared_ptr<Media::Bitmap> bitmap;

 protected:
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
  void drawBitmap(Media::RenderTarget& target, const Media::Bitmap& picture);
};

// The icon is an outline in a unit square, filled with the text colour, so it follows
// the colour scheme and the enabled state like text does.
class IconButtonControl : public ButtonControl {
 public:
  using ButtonControl::ButtonControl;
  std::vector<Media::PointF> icon;

 protected:
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

class CheckBitmapButtonControl : public BitmapButtonControl {
 public:
  using BitmapButtonControl::BitmapButtonControl;
  std::shared_ptr<Media::Bitmap> bitmapOff;  // shown while off when set
  std::function<void(bool)> onChange;

 protected:
  void click() override;
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

// A text with a side icon that is a button of its own.
class TextIconButtonControl : public TextButtonControl {
 public:
  class IconControl : public IconButtonControl {
   public:
    using IconButtonControl::IconButtonControl;
  };

  explicit TextIconButtonControl(Window::WindowControl* parent);
  void layoutChildren() override;
  IconControl& iconButton() noexcept { return icon_; }

 protected:
  void drawContent(Media::RenderTarget& target, const Window::ControlStyle& style) override;

 private:
  IconControl icon_;
};

}  // namespace Control
