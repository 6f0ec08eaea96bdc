// The slider input: drag speeds and steps, the modes of the modifiers, the hidden-cursor
// drag, the text box that replaces the value area, and the notifications.
#include <gtest/gtest.h>

#include "control/ControlTestSupport.h"
#include "control/SliderInputControl.h"

namespace {

using TestSupport::ControlFixture;
using Window::kModifierAlt;
using Window::kModifierShift;

// A slider of 0 to 100 in tenths at 50.0, its value area from x 20 to 220 (y 0 to 20).
struct SliderFixture {
  explicit SliderFixture(const std::function<void(Window::ControlStyle&)>& adjust = {})
      : fixture(adjust), slider(&fixture.root()) {
    slider.setLayout(0, 0, 240, 20);
    fixture.layout();
    slider.setRange(0.0, 100.0, 50.0, 0.1);
    slider.onBegin = [this] { events.push_back("begin"); };
    slider.onChange = [this] { events.push_back("change " + std::to_string(slider.raw)); };
    slider.onEnd = [this] { events.push_back("end"); };
  }
  ControlFixture fixture;
  Control::SliderInputControl slider;
  std::vector<std::string> events;
};

TEST(SliderInput, SpeedAndStepsFollowScaleModeAndRatio) {
  SliderFixture tenths;
  EXPECT_EQ(tenths.slider.scale, 10);
  EXPECT_DOUBLE_EQ(tenths.slider.speed, 10.0);
  EXPECT_EQ(tenths.slider.stepCoarse, 10);
  EXPECT_EQ(tenths.slider.stepFine, 1);

  SliderFixture hundredths([](Window::ControlStyle& style) { style.sliderMoveRatio = 10; });
  hundredths.slider.setRange(0.0, 1.0, 0.5, 0.01);
  EXPECT_DOUBLE_EQ(hundredths.slider.speed, 10.0);
  EXPECT_EQ(hundredths.slider.stepCoarse, 10);  // 100, 50, 25, 10
  EXPECT_EQ(hundredths.slider.stepFine, 1);     // on through 5, 2, 1

  SliderFixture screen([](Window::ControlStyle& style) { style.sliderMoveMode = 1; });
  screen.slider.setRange(0.0, 3840.0, 0.0, 1.0);
  EXPECT_DOUBLE_EQ(screen.slider.speed, 2.0);  // the range over 1920 pixels
  screen.slider.setRange(0.0, 1.0, 0.0, 1.0);
  EXPECT_DOUBLE_EQ(screen.slider.speed, 0.05);  // never slower

  SliderFixture width([](Window::ControlStyle& style) { style.sliderMoveMode = 2; });
  width.slider.setRange(0.0, 400.0, 0.0, 1.0);
  EXPECT_DOUBLE_EQ(width.slider.speed, 2.0);  // the range over the value area's 200 pixels
}

TEST(SliderInput, TextHasTheDecimalsOfTheStep) {
  SliderFixture s;
  s.slider.setRange(-1.0, 1.0, -0.05, 0.01);
  EXPECT_EQ(s.slider.text(), L"-0.05");
  s.slider.setRaw(150);
  EXPECT_EQ(s.slider.raw, 100);  // clamped
  EXPECT_EQ(s.slider.text(), L"1.00");
  s.slider.setRange(0.0, 10.0, 3.0, 1.0);
  EXPECT_EQ(s.slider.text(), L"3");
  s.slider.zeroText = L"なし";
  EXPECT_EQ(s.slider.format(0), L"なし");
  EXPECT_EQ(s.slider.parse(L" 2.56"), 3);
  EXPECT_EQ(s.slider.parse(L"x"), std::nullopt);
}

TEST(SliderInput, DragStepsCoarselyShiftFinelyAndModesRestartWithoutAJump) {
  SliderFixture s([](Window::ControlStyle& style) { style.sliderMoveRatio = 35; });
  EXPECT_EQ(s.slider.stepCoarse, 2);  // r = 3.5
  s.fixture.press(100, 10);
  s.fixture.move(107, 10);  // round(7 x 3.5) = 25, down to the step: 24
  EXPECT_EQ(s.slider.raw, 524);
  s.fixture.move(109, 10, kModifierShift);  // Shift starts afresh here
  s.fixture.move(112, 10, kModifierShift);  // 3 pixels of stepFine 1
  EXPECT_EQ(s.slider.raw, 527);
  s.fixture.key(37, kModifierShift);  // the arrow keys step by one
  s.fixture.move(113, 10, kModifierShift);
  EXPECT_EQ(s.slider.raw, 527);
  s.fixture.release(113, 10);
  EXPECT_EQ(s.events, (std::vector<std::string>{"begin", "change 524", "change 527", "change 526", "change 527",
                                                "end"}));
  EXPECT_FALSE(s.slider.editing());
}

TEST(SliderInput, AltJumpsToThePointedValue) {
  SliderFixture s;
  s.fixture.press(70, 10, kModifierAlt);  // 50 of 200 pixels
  EXPECT_EQ(s.slider.raw, 250);
  s.fixture.move(170, 10, kModifierAlt);
  EXPECT_EQ(s.slider.raw, 750);
  s.fixture.release(170, 10, kModifierAlt);
  EXPECT_FALSE(s.slider.editing());
}

TEST(SliderInput, AHiddenCursorDragGoesPastTheScreensEnd) {
  SliderFixture s([](Window::ControlStyle& style) { style.slideMouseHidden = true; });
  s.slider.setRange(0.0, 100000.0, 0.0, 1.0);
  s.fixture.press(30, 10);
  for (int i = 0; i < 30; ++i) s.fixture.move(130, 10);
  EXPECT_EQ(s.slider.raw, 3000);  // 3000 pixels of one unit, far beyond the screen
  EXPECT_EQ(s.fixture.window().cursor(), Window::CursorShape::Hidden);
}

TEST(SliderInput, AClickOpensTheBoxAndADragDoesNot) {
  SliderFixture s;
  s.fixture.press(100, 10);
  s.fixture.move(105, 10);  // under the drag distance
  s.fixture.release(105, 10);
  ASSERT_TRUE(s.slider.editing());
  EXPECT_EQ(s.slider.editBox().text(), L"50.0");
  EXPECT_EQ(s.slider.editBox().selStart, 0u);
  EXPECT_EQ(s.slider.editBox().selEnd, 4u);
  EXPECT_EQ(s.fixture.service().focusControl, &s.slider.editBox());
  EXPECT_EQ(s.events, (std::vector<std::string>{"begin"}));  // the end waits for the box

  s.fixture.type(L"12.3");
  EXPECT_EQ(s.slider.raw, 123);
  s.fixture.service().wheelTurned(100, 10, 120, 0);  // a notch up: one unit down
  EXPECT_EQ(s.slider.editBox().text(), L"12.2");
  s.fixture.key(13);
  EXPECT_FALSE(s.slider.editing());
  EXPECT_TRUE(s.slider.valueArea().visible);
  EXPECT_EQ(s.events.back(), "end");
  EXPECT_EQ(s.slider.raw, 122);

  s.fixture.advance(1000);
  s.fixture.press(100, 10);
  s.fixture.move(106, 10);
  s.fixture.release(106, 10);
  EXPECT_FALSE(s.slider.editing());
}

TEST(SliderInput, PlusAndMinusStepOneUnitAndTheCursorMarkShowsTheValue) {
  SliderFixture s;
  s.fixture.click(230, 10);
  EXPECT_EQ(s.slider.raw, 501);
  s.fixture.advance(1000);
  s.fixture.click(10, 10);
  s.fixture.advance(1000);
  s.fixture.click(10, 10);
  EXPECT_EQ(s.slider.raw, 499);
  EXPECT_EQ(s.events.front(), "begin");
  EXPECT_EQ(s.events[2], "end");
  s.slider.setRaw(250);
  // The mark stands a quarter in: x 20 + 50.
  EXPECT_EQ(s.fixture.target().pixel(70, 5), s.fixture.service().style().sliderCursor);
  EXPECT_NE(s.fixture.target().pixel(90, 5), s.fixture.service().style().sliderCursor);
}

}  // namespace
