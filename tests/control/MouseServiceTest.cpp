// The control tree's layout rule, the hit test, and the mouse service's handling of
// presses, drags, double clicks, hover, the wheel, the modal pick, keys and focus.
#include <gtest/gtest.h>

#include "control/ControlTestSupport.h"
#include "control/LayoutControl.h"

namespace {

using TestSupport::ControlFixture;
using TestSupport::ProbeControl;
using Window::ControlRect;
using Window::WindowMouseService;
using Strings = std::vector<std::string>;

TEST(ControlLayout, EdgesCountFromTheFarSideAndSizesFromTheNear) {
  const ControlRect parent{10, 20, 100, 50};
  // right 0: up to the parent's right edge; right 1: a width of 1.
  EXPECT_EQ(Window::applyLayout(parent, {5, 5, 0, 0}), (ControlRect{15, 25, 95, 45}));
  EXPECT_EQ(Window::applyLayout(parent, {5, 5, 1, 1}), (ControlRect{15, 25, 1, 1}));
  // Negative left and top count from the far edges; a right below 1 is an inset.
  EXPECT_EQ(Window::applyLayout(parent, {-30, -10, -4, 0}), (ControlRect{80, 60, 26, 10}));
  EXPECT_EQ(Window::applyLayout(parent, {0, 0, 40, 12}), (ControlRect{10, 20, 40, 12}));
}

TEST(ControlLayout, ChildrenAreClippedToTheParentAndFractionsSplitTheBox) {
  ControlFixture fixture;
  ProbeControl outer(&fixture.root(), {10, 10, 100, 100});
  ProbeControl inner(&outer, {50, 50, 200, 200});
  Control::LayoutControl row(&fixture.root());
  row.setLayout(0, 200, 0, 40);
  row.setFractions(0.25f, 0.0f, 0.75f, 1.0f);
  ProbeControl cell(&row, {0, 0, 0, 0});
  fixture.layout();
  EXPECT_EQ(inner.rect, (ControlRect{60, 60, 200, 200}));
  EXPECT_EQ(inner.clipRect, (ControlRect{60, 60, 50, 50}));
  EXPECT_EQ(row.rect, (ControlRect{100, 200, 200, 40}));
  EXPECT_EQ(cell.rect, (ControlRect{100, 200, 200, 40}));
}

TEST(MouseService, TheDeepestUsableControlIsHitAndTheLaterOfEqualDepth) {
  ControlFixture fixture;
  ProbeControl panel(&fixture.root(), {0, 0, 200, 200});
  ProbeControl first(&panel, {10, 10, 50, 50});
  ProbeControl second(&panel, {30, 30, 50, 50});
  fixture.layout();
  WindowMouseService& service = fixture.service();
  EXPECT_EQ(service.hitTest(35, 35), &second);
  EXPECT_EQ(service.hitTest(15, 15), &first);
  EXPECT_EQ(service.hitTest(150, 150), &panel);
  second.enabled = false;
  EXPECT_EQ(service.hitTest(35, 35), &first);
  panel.visible = false;
  EXPECT_EQ(service.hitTest(15, 15), nullptr);
  panel.visible = true;
  // The opt-in cases pass over controls that did not ask.
  EXPECT_EQ(service.hitTest(15, 15, WindowMouseService::Want::Wheel), nullptr);
  panel.acceptsWheel = true;
  EXPECT_EQ(service.hitTest(15, 15, WindowMouseService::Want::Wheel), &panel);
}

TEST(MouseService, APressCapturesAndSmallMovesAreNoDrag) {
  ControlFixture fixture;
  ProbeControl probe(&fixture.root(), {100, 100, 100, 50});
  fixture.layout();
  fixture.press(110, 120);
  EXPECT_TRUE(probe.pressed);
  EXPECT_TRUE(fixture.window().captured());
  fixture.move(115, 124);  // under the drag distance of 6
  fixture.move(115, 124);
  fixture.release(115, 124);
  EXPECT_EQ(probe.log, (Strings{"enter", "down 10,20", "up 15,24", "lost"}));
  EXPECT_FALSE(probe.pressed);
  EXPECT_FALSE(fixture.window().captured());

  // A distance of 6 is a drag, as is any move once the double-click time is over.
  probe.log.clear();
  fixture.press(110, 120);
  fixture.move(116, 120);
  fixture.move(120, 130);
  fixture.release(120, 130);
  EXPECT_EQ(probe.log, (Strings{"down 10,20", "drag 6,0", "drag 10,10", "up 20,30", "dragend", "lost"}));
  probe.log.clear();
  fixture.advance(1000);
  probe.log.clear();
  fixture.press(150, 120);
  fixture.advance(600);
  fixture.move(151, 120);
  fixture.release(151, 120);
  EXPECT_EQ(probe.log, (Strings{"down 50,20", "drag 1,0", "up 51,20", "dragend", "lost"}));
}

TEST(MouseService, DoubleClickNeedsTheSameButtonPlaceAndTime) {
  ControlFixture fixture;
  ProbeControl probe(&fixture.root(), {0, 0, 0, 0});
  fixture.layout();
  WindowMouseService& service = fixture.service();
  fixture.click(50, 50);
  EXPECT_FALSE(service.doubleClick);
  fixture.advance(499);
  fixture.click(50, 50);
  EXPECT_TRUE(service.doubleClick);
  fixture.advance(100);
  fixture.click(51, 50);
  EXPECT_FALSE(service.doubleClick);
  fixture.advance(500);
  fixture.click(51, 50);
  EXPECT_FALSE(service.doubleClick);
  fixture.advance(10);
  fixture.press(51, 50, 0, Window::MouseButton::Right);
  EXPECT_FALSE(service.doubleClick);
}

TEST(MouseService, AHiddenCursorDragRunsPastTheScreensEdge) {
  ControlFixture fixture;
  ProbeControl probe(&fixture.root(), {0, 0, 0, 0});
  probe.cursor = WindowMouseService::kCursorNone;
  fixture.layout();
  fixture.press(200, 100);
  EXPECT_EQ(fixture.window().cursor(), Window::CursorShape::Hidden);
  fixture.move(210, 100);  // past the threshold: the drag starts, nothing is turned back yet
  for (int i = 0; i < 40; ++i) fixture.move(260, 100);
  EXPECT_EQ(probe.log.back(), "drag 2410,0");
  std::int32_t x = 0;
  std::int32_t y = 0;
  fixture.platform().cursorPosition(x, y);
  EXPECT_EQ(x, 100 + 200);  // the window's screen origin plus the saved point
  EXPECT_EQ(y, 50 + 100);
  fixture.release(200, 100);
  EXPECT_EQ(fixture.window().cursor(), Window::CursorShape::Arrow);
}

TEST(MouseService, HoverEntersLeavesAndRestsOnlyWhenNotPressed) {
  ControlFixture fixture;
  ProbeControl a(&fixture.root(), {0, 0, 100, 100});
  ProbeControl b(&fixture.root(), {100, 0, 100, 100});
  fixture.layout();
  fixture.move(10, 10);
  EXPECT_TRUE(a.hovered);
  fixture.advance(400);
  fixture.move(110, 10);
  fixture.advance(399);
  fixture.service().mouseLeft();
  fixture.advance(10);
  EXPECT_EQ(a.log, (Strings{"enter", "hover", "leave"}));
  EXPECT_EQ(b.log, (Strings{"enter", "leave"}));
  EXPECT_FALSE(b.hovered);
  fixture.press(10, 10);
  fixture.advance(1000);
  EXPECT_EQ(a.log.back(), "down 10,10");
}

TEST(MouseService, TheWheelStaysWithItsTargetForTheDoubleClickTime) {
  ControlFixture fixture;
  ProbeControl list(&fixture.root(), {0, 0, 100, 100});
  ProbeControl other(&fixture.root(), {0, 100, 100, 100});
  ProbeControl deaf(&fixture.root(), {0, 200, 100, 100});
  list.acceptsWheel = other.acceptsWheel = true;
  fixture.layout();
  WindowMouseService& service = fixture.service();
  service.wheelTurned(10, 10, 120, 0);
  fixture.advance(300);
  service.wheelTurned(10, 150, -120, 0);  // the list keeps it
  fixture.advance(500);
  service.wheelTurned(10, 150, -120, 0);
  fixture.advance(600);
  service.wheelTurned(10, 250, 120, 0);  // nothing there takes the wheel
  EXPECT_EQ(list.log, (Strings{"wheel 120", "wheel -120"}));
  EXPECT_EQ(other.log, (Strings{"wheel -120"}));
  EXPECT_TRUE(deaf.log.empty());
}

TEST(MouseService, AModalPickTakesTheNextClickAnywhere) {
  ControlFixture fixture;
  ProbeControl picker(&fixture.root(), {0, 0, 100, 100});
  ProbeControl other(&fixture.root(), {200, 0, 100, 100});
  fixture.layout();
  fixture.service().setColorReader([](std::int32_t x, std::int32_t) { return Media::ColorF{x / 1000.0f, 0, 0, 1}; });
  fixture.service().setModal(&picker);
  fixture.move(250, 50);
  fixture.service().mousePressed(Window::MouseButton::Left, 250, 50, 0);
  EXPECT_EQ(picker.log, (Strings{"picked 0.250000"}));
  EXPECT_TRUE(other.log.empty());  // neither the move nor the press reached it
  fixture.service().setModal(&picker);
  fixture.service().mousePressed(Window::MouseButton::Left, 50, 50, 0);
  EXPECT_EQ(picker.log.back(), "cancel");
  EXPECT_EQ(fixture.service().modalControl, nullptr);
}

TEST(MouseService, KeysGoToTheDragThenTheFocusThenTheShortcuts) {
  ControlFixture fixture;
  ProbeControl box(&fixture.root(), {0, 0, 100, 100}, false);
  ProbeControl slider(&fixture.root(), {200, 0, 100, 100});
  fixture.layout();
  Strings shortcuts;
  fixture.service().setShortcutHandler([&](std::int32_t key, std::uint32_t) {
    shortcuts.push_back(std::to_string(key));
    return true;
  });
  fixture.service().setFocus(&box);
  fixture.key(65);
  fixture.type(L"a");
  box.takeKeys = true;
  fixture.key(66);
  fixture.press(250, 50);  // the box loses the focus to a press elsewhere
  slider.takeDragKeys = true;
  fixture.key(37);
  EXPECT_TRUE(fixture.service().moved);  // an arrow key counts as a move
  EXPECT_EQ(box.log, (Strings{"key 65", "char 97", "key 66", "unfocus"}));
  EXPECT_EQ(slider.log.back(), "dragkey 37");
  EXPECT_EQ(shortcuts, (Strings{"65"}));
  EXPECT_FALSE(box.focused);
}

TEST(MouseService, AHoldKeyFiresOnItsReleaseOrOnTheLossOfFocus) {
  ControlFixture fixture;
  ProbeControl a(&fixture.root(), {0, 0, 100, 100}, false);
  fixture.layout();
  WindowMouseService& service = fixture.service();
  service.setHoldKey(&a, Window::kKeyControl);
  service.keyReleased(16, 0);
  service.keyReleased(Window::kKeyControl, 0);
  service.keyReleased(Window::kKeyControl, 0);
  service.setFocus(&a);
  service.setHoldKey(&a, Window::kHoldKeyFocusLoss);
  service.focusLost();
  EXPECT_EQ(a.log, (Strings{"holdup", "unfocus", "holdup"}));
}

TEST(MouseService, ARightClickWithoutMoveOpensTheContextMenu) {
  ControlFixture fixture;
  ProbeControl a(&fixture.root(), {0, 0, 100, 100}, false);
  ProbeControl dragged(&fixture.root(), {200, 0, 100, 100});
  a.acceptsContextMenu = true;
  fixture.layout();
  fixture.press(210, 10);  // a drag before leaves nothing behind
  fixture.move(250, 10);
  fixture.release(250, 10);
  a.log.clear();
  fixture.move(10, 10);
  fixture.press(10, 10, 0, Window::MouseButton::Right);
  fixture.release(10, 10, 0, Window::MouseButton::Right);
  EXPECT_EQ(a.log, (Strings{"enter", "rdown", "menu"}));
}

}  // namespace
