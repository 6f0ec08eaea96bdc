// Buttons, the repeat button, the scroll bar and the track bar over the fakes.
#include <gtest/gtest.h>

#include "control/ButtonControl.h"
#include "control/ButtonInputControl.h"
#include "control/ControlTestSupport.h"
#include "control/ScrollBarControl.h"
#include "control/ToolTips.h"
#include "control/TrackBarControl.h"

namespace {

using TestSupport::ControlFixture;

TEST(Buttons, AClickFiresOnlyWhenReleasedInsideAnEnabledButton) {
  ControlFixture fixture;
  Control::TextButtonControl button(&fixture.root());
  button.setLayout(10, 10, 80, 20);
  int clicks = 0;
  button.onClick = [&] { ++clicks; };
  fixture.layout();
  fixture.click(20, 20);
  EXPECT_EQ(clicks, 1);
  fixture.press(20, 20);
  EXPECT_EQ(fixture.target().pixel(20, 20), fixture.service().style().buttonBodyPress);
  fixture.move(200, 200);
  fixture.release(200, 200);  // dragged off: no click
  EXPECT_EQ(clicks, 1);
  fixture.move(201, 200);
  EXPECT_EQ(fixture.target().pixel(20, 20), fixture.service().style().buttonBody);
  button.setEnabled(false);
  fixture.click(20, 20);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(fixture.target().pixel(20, 20), fixture.service().style().buttonBodyDisable);
}

TEST(Buttons, ACheckButtonTogglesAndReportsItsState) {
  ControlFixture fixture;
  Control::CheckButtonControl check(&fixture.root());
  check.setLayout(0, 0, 50, 20);
  check.text = L"on";
  check.textOff = L"off";
  std::vector<bool> states;
  check.onChange = [&](bool on) { states.push_back(on); };
  fixture.layout();
  fixture.click(5, 5);
  fixture.advance(1000);
  fixture.click(5, 5);
  EXPECT_EQ(states, (std::vector<bool>{true, false}));
  EXPECT_EQ(fixture.target().texts().back(), L"off");
}

TEST(Buttons, ARepeatButtonFiresAtOnceThenAfterTheDelayAtThePeriod) {
  ControlFixture fixture;
  Control::RepeatClickButtonControl repeat(&fixture.root());
  repeat.setLayout(0, 0, 20, 20);
  int clicks = 0;
  repeat.onClick = [&] { ++clicks; };
  fixture.layout();
  fixture.press(5, 5);
  EXPECT_EQ(clicks, 1);
  fixture.advance(499);
  EXPECT_EQ(clicks, 1);
  fixture.advance(1);
  EXPECT_EQ(clicks, 2);
  fixture.advance(300);
  EXPECT_EQ(clicks, 5);
  fixture.release(5, 5);
  fixture.advance(1000);
  EXPECT_EQ(clicks, 5);
}

class FakeTipWindow : public Window::ToolTipWindow {
 public:
  void setText(const std::wstring& text) override { this->text = text; }
  Window::WindowGeometry measure() const override { return {0, 0, 100, 20}; }
  void moveTo(std::int32_t x, std::int32_t y) override { at = {x, y, 0, 0}; }
  void setShown(bool on) override { shown = on; }
  std::wstring text;
  Window::WindowGeometry at;
  bool shown = false;
};

TEST(Buttons, AHoverShowsTheTipInsideTheScreenAndLeavingHidesIt) {
  ControlFixture fixture;
  FakeTipWindow* tip = nullptr;
  Window::ToolTips tips(
      fixture.platform(),
      [&] {
        auto window = std::make_unique<FakeTipWindow>();
        tip = window.get();
        return window;
      },
      [](const std::wstring& text) { return L"[" + text + L"]"; });
  Control::TextButtonControl button(&fixture.root());
  button.setLayout(10, 10, 80, 20);
  button.toolTip = L"play";
  fixture.layout();
  fixture.move(20, 20);
  fixture.advance(400);
  ASSERT_NE(tip, nullptr);
  EXPECT_TRUE(tip->shown);
  EXPECT_EQ(tip->text, L"[play]");
  EXPECT_EQ(tip->at, (Window::WindowGeometry{110, 50 + 10 + 20 + 2, 0, 0}));
  fixture.move(300, 200);
  EXPECT_FALSE(tip->shown);
  // Past the screen's right edge the tip moves back in; a time-out hides it.
  tips.show(1900, 10, std::wstring(2000, L'a'), 300);
  EXPECT_EQ(tip->at.x, 1820);
  EXPECT_EQ(tip->text.size(), Window::ToolTips::kMaxText);
  fixture.advance(300);
  EXPECT_FALSE(tip->shown);
}

TEST(ScrollBar, PositionsClampAndTheThumbFollowsTheFractions) {
  ControlFixture fixture;
  Control::ScrollBarControl bar(&fixture.root(), true);
  bar.setLayout(0, 0, 16, 216);
  fixture.layout();
  bar.setRange(0, 99);
  bar.setPosition(-5, 9);
  EXPECT_EQ(bar.pos, 0);
  EXPECT_EQ(bar.posEnd, 9);
  EXPECT_DOUBLE_EQ(bar.endFraction, 0.1);
  EXPECT_EQ(bar.arrowSize(), 16);
  EXPECT_EQ(bar.thumbStart(), 16);
  EXPECT_EQ(bar.thumbEnd(), 16 + 18);
  EXPECT_FLOAT_EQ(bar.thumbRadius(), 3.2f);
  bar.setPosition(95, 200);
  EXPECT_EQ(bar.posEnd, 99);
  bar.setPosition(0, 9);
  bar.setCentre(0.5);
  EXPECT_EQ(bar.pos, 45);
  EXPECT_EQ(bar.posEnd, 54);
  bar.setCentre(1.0);
  EXPECT_EQ(bar.pos, 90);
  // A short bar's arrows shrink to leave room for the thumb.
  Control::ScrollBarControl tiny(&fixture.root(), false);
  tiny.setLayout(0, 250, 20, 16);
  fixture.layout();
  EXPECT_EQ(tiny.arrowSize(), 7);
  tiny.setLayout(0, 250, 4, 16);
  fixture.layout();
  EXPECT_EQ(tiny.arrowSize(), 0);
}

TEST(ScrollBar, ArrowsStepTheTrackPagesAndTheThumbDrags) {
  ControlFixture fixture;
  Control::ScrollBarControl bar(&fixture.root(), true);
  bar.setLayout(0, 0, 16, 216);
  fixture.layout();
  bar.setRange(0, 99);
  bar.setPosition(0, 9);
  int scrolls = 0;
  bar.onScroll = [&] { ++scrolls; };
  fixture.click(8, 210);  // the lower arrow
  EXPECT_EQ(bar.pos, 1);
  fixture.advance(1000);
  fixture.click(8, 150);  // the track below the thumb
  EXPECT_EQ(bar.pos, 11);
  fixture.advance(1000);
  const int thumb = bar.thumbStart() + 2;
  fixture.press(8, thumb);
  fixture.move(8, thumb + 36);  // 36 of 184 pixels: 19.6 units
  fixture.release(8, thumb + 36);
  EXPECT_EQ(bar.pos, 31);
  EXPECT_EQ(bar.posEnd, 40);
  fixture.service().wheelTurned(8, 100, -120, 0);
  EXPECT_EQ(bar.pos, 32);
  EXPECT_EQ(scrolls, 4);
}

TEST(TrackBar, APressJumpsTheDragFollowsAndKeysStep) {
  ControlFixture fixture;
  Control::TrackBarControl track(&fixture.root());
  track.setLayout(0, 0, 108, 20);
  fixture.layout();
  track.setRange(0, 100);
  std::vector<int> values;
  track.onChange = [&](int value) { values.push_back(value); };
  fixture.press(54, 10);
  fixture.move(79, 10);
  fixture.key(39);  // arrow keys step while dragging
  fixture.release(79, 10);
  fixture.key(36);
  fixture.service().wheelTurned(50, 10, 120, 0);
  EXPECT_EQ(values, (std::vector<int>{50, 75, 76, 0, 1}));
  EXPECT_EQ(track.valueAt(-20), 0);
  EXPECT_EQ(track.valueAt(500), 100);
}

TEST(Buttons, AButtonInputKeepsTheTypedNameOnReturnAndDropsItOnEsc) {
  ControlFixture fixture;
  Control::ButtonInputControl name(&fixture.root());
  name.setLayout(0, 0, 150, 24);
  std::vector<std::wstring> kept;
  name.onCommit = [&](const std::wstring& text) { kept.push_back(text); };
  fixture.layout();
  name.setText(L"Scene");
  fixture.click(10, 10);
  ASSERT_TRUE(name.editing());
  fixture.type(L"Intro");
  fixture.key(13);
  EXPECT_FALSE(name.editing());
  EXPECT_EQ(name.text(), L"Intro");
  fixture.advance(1000);
  fixture.click(10, 10);
  fixture.type(L"Lost");
  fixture.key(27);
  EXPECT_EQ(name.text(), L"Intro");
  fixture.advance(1000);
  fixture.click(10, 10);
  fixture.type(L"Outro");
  fixture.click(300, 200);  // a click elsewhere keeps it too
  EXPECT_EQ(kept, (std::vector<std::wstring>{L"Intro", L"Outro"}));
}

TEST(Buttons, ListRowsStackByIndexAndTheTitleTakesItsHeight) {
  ControlFixture fixture;
  Control::TitleHeaderControl title(&fixture.root());
  Control::ListItemControl first(&fixture.root(), 0);
  Control::ListItemControl third(&fixture.root(), 2);
  first.setLayout(0, 30, 0, 1);
  third.setLayout(0, 30, 0, 1);
  std::vector<int> chosen;
  third.onSelect = [&](std::int32_t index) { chosen.push_back(index); };
  fixture.layout();
  EXPECT_EQ(title.rect, (Window::ControlRect{0, 0, 400, 24}));
  EXPECT_EQ(third.rect, (Window::ControlRect{0, 70, 400, 20}));
  fixture.click(5, 75);
  EXPECT_EQ(chosen, (std::vector<int>{2}));
}

}  // namespace
