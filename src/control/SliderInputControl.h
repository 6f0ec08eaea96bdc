// The value row of every number item: a value area dragged like a slider, a text box
// that replaces it on a click, and minus and plus buttons at its ends. Values are held
// as integers `raw` = round(value / step) between `rawMin` and `rawMax`; begin, change
// and end notifications are separate so the owner can open and close an undo group.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "control/ButtonControl.h"
#include "control/EditControl.h"

namespace Control {

class SliderInputControl : public Window::WindowControlRenderTarget {
 public:
  // The value area.
  class SliderButton : public Window::WindowControlRenderTarget {
   public:
    explicit SliderButton(SliderInputControl& owner)
        : Window::WindowControlRenderTarget(&owner), owner_(owner) {}
    void leftDown(std::int32_t x, std::int32_t y) override;
    void leftUp(std::int32_t x, std::int32_t y) override;
    void dragMove(std::int32_t dx, std::int32_t dy) override;
    bool dragKey(std::int32_t key) override;
    void captureLost() override;
    void mouseMove(std::int32_t x, std::int32_t y) override;
    void mouseEnter() override { paint(); }
    void mouseLeave() override { paint(); }

   protected:
    void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

   private:
    // The modes of the gesture, read from the modifiers at the press and each move.
    bool directMode() const;
    bool fineMode() const;

    SliderInputControl& owner_;
    std::int64_t startRaw_ = 0;
    std::int32_t startDx_ = 0;
    std::int32_t pressX_ = 0;
    bool direct_ = false;
    bool fine_ = false;
  };

  // The text box that stands in for the value area while the user types.
  class SliderEdit : public EditControl {
   public:
    explicit SliderEdit(SliderInputControl& owner);
    bool keyDown(std::int32_t key) override;
    void focusLost() override;
    bool wheel(std::int32_t x, std::int32_t y, std::int32_t delta) override;

   private:
    SliderInputControl& owner_;
  };

  explicit SliderInputControl(Window::WindowControl* parent);

  // Values of the item; `step` is the smallest change (0.01 gives two decimals).
  void setRange(double minimum, double maximum, double value, double step);
  // A non-linear item: `toSlider` maps a value onto the linear slider, `fromSlider` back.
  void setCurve(std::function<double(double)> toSlider, std::function<double(double)> fromSlider);
  // Clamps, repaints and notifies a change when the value moved.
  void setRaw(std::int64_t value);
  double value() const;
  // The value as the box shows it: zero-padded digits with the decimal point.
  std::wstring text() const { return format(raw); }
  std::wstring format(std::int64_t value) const;
  // The raw value of a typed text; empty when it is no number.
  std::optional<std::int64_t> parse(const std::wstring& text) const;

  void openEdit();
  bool editing() const noexcept { return edit_.visible; }
  void layoutChildren() override;

  std::int64_t raw = 0;
  std::int64_t rawMin = 0;
  std::int64_t rawMax = 0;
  std::int64_t scale = 1;
  std::int32_t decimals = 0;
  double speed = 1.0;  // raw units per pixel of a plain drag
  std::int64_t stepCoarse = 1;
  std::int64_t stepFine = 1;
  std::wstring zeroText;  // shown for a zero when set
  bool firstSection = false;
  bool lastSection = false;

  std::function<void()> onBegin;
  std::function<void()> onChange;
  std::function<void()> onEnd;

  SliderButton& valueArea() noexcept { return button_; }
  SliderEdit& editBox() noexcept { return edit_; }
  RepeatClickButtonControl& minusButton() noexcept { return minus_; }
  RepeatClickButtonControl& plusButton() noexcept { return plus_; }

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;

 private:
  void begin();
  void end();
  void computeSpeed();
  double toRawScale(double value) const;

  std::function<double(double)> toSlider_;
  std::function<double(double)> fromSlider_;
  bool pending_ = false;  // a begin without its end yet
  RepeatClickButtonControl minus_;
  RepeatClickButtonControl plus_;
  SliderButton button_;
  SliderEdit edit_;
};

}  // namespace Control
