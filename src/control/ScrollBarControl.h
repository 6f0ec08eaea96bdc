// A scroll bar over an integer range: `pos` to `posEnd` (inclusive) is the page shown
// of `min` to `max`. Arrow buttons at both ends step by one, a press in the track pages,
// the thumb drags with the offset of its press. `onScroll` hears every change.
#pragma once

#include <functional>

#include "control/ButtonControl.h"

namespace Control {

class ScrollBarControl : public Window::WindowControlRenderTarget {
 public:
  // The thumb: drags the page, keeping the press offset.
  class BarMouse : public Window::WindowControlRenderTarget {
   public:
    explicit BarMouse(ScrollBarControl& bar);
    void leftDown(std::int32_t x, std::int32_t y) override;
    void dragMove(std::int32_t dx, std::int32_t dy) override;
    void captureLost() override { bar_.paint(); }

   protected:
    void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

   private:
    ScrollBarControl& bar_;
    std::int32_t startPos_ = 0;
  };

  ScrollBarControl(Window::WindowControl* parent, bool vertical);

  void setRange(std::int32_t minimum, std::int32_t maximum);
  // Clamps a to the range and b to a .. max.
  void setPosition(std::int32_t a, std::int32_t b);
  // Centres the page on the fraction `f` of the range.
  void setCentre(double f);
  void scrollBy(std::int32_t units);
  std::int32_t page() const noexcept { return posEnd - pos + 1; }
  std::int32_t range() const noexcept { return max - min; }

  // Pixels along the bar.
  std::int32_t length() const noexcept { return vertical_ ? rect.h : rect.w; }
  std::int32_t thickness() const noexcept { return vertical_ ? rect.w : rect.h; }
  std::int32_t arrowSize() const noexcept;
  std::int32_t thumbStart() const noexcept;
  std::int32_t thumbEnd() const noexcept;
  float thumbRadius() const noexcept;

  void layoutChildren() override;
  void leftDown(std::int32_t x, std::int32_t y) override;
  bool wheel(std::int32_t, std::int32_t, std::int32_t delta) override;

  std::function<void()> onScroll;
  std::int32_t min = 0;
  std::int32_t max = 0;
  std::int32_t pos = 0;
  std::int32_t posEnd = 0;
  double startFraction = 0.0;  // pos / (max - min + 1)
  double endFraction = 1.0;    // (posEnd + 1) / (max - min + 1)

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

 private:
  void recompute();
  bool vertical_;
  RepeatClickButtonControl back_;
  RepeatClickButtonControl forward_;
  BarMouse thumb_;
};

// The scroll bar of the text box: the same, drawn thinner.
class EditScrollBarControl : public ScrollBarControl {
 public:
  using ScrollBarControl::ScrollBarControl;
};

}  // namespace Control
