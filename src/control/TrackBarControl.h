// A horizontal track with a thumb over an integer range and up to two range marks given
// as fractions. A press anywhere jumps the thumb there and drags it; the wheel and the
// arrow keys step by one.
#pragma once

#include <functional>

#include "control/WindowControlRenderTarget.h"

namespace Control {

class TrackBarControl : public Window::WindowControlRenderTarget {
 public:
  // The track under the thumb: the press and the drag.
  class BarMouse : public Window::WindowControl {
   public:
    explicit BarMouse(TrackBarControl& bar) : Window::WindowControl(&bar), bar_(bar) {}
    void leftDown(std::int32_t x, std::int32_t y) override;
    void dragMove(std::int32_t dx, std::int32_t dy) override;
    bool dragKey(std::int32_t key) override;
    void captureLost() override { bar_.paint(); }

   private:
    TrackBarControl& bar_;
    std::int32_t pressX_ = 0;
  };

  explicit TrackBarControl(Window::WindowControl* parent);

  void setRange(std::int32_t minimum, std::int32_t maximum);
  void setValue(std::int32_t value);
  // Fractions 0 to 1; a negative one hides the mark.
  void setMarks(float first, float second);
  // The value a pixel of the track stands for, and back.
  std::int32_t valueAt(std::int32_t x) const noexcept;
  std::int32_t thumbX() const noexcept;

  bool wheel(std::int32_t, std::int32_t, std::int32_t delta) override;
  bool keyDown(std::int32_t key) override;

  std::function<void(std::int32_t)> onChange;
  std::int32_t min = 0;
  std::int32_t max = 100;
  std::int32_t value = 0;
  float mark[2] = {-1.0f, -1.0f};
  static constexpr std::int32_t kThumbWidth = 8;

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

 private:
  BarMouse mouse_;
};

}  // namespace Control
