// The window menu's operations: areas, order in an area, tab groups, floating windows
// and docking back, and the menu they are offered in.
#include <gtest/gtest.h>

#include "WindowTestSupport.h"

namespace {

using namespace TestSupport;

TEST(WindowMenu, OffersThePlacementOfTheClient) {
  WindowFixture fixture;
  FakeWindow& main = fixture.main();
  main.press(900, 100, Window::MouseButton::Right);  // on the object list
  const Window::PopupMenu& menu = fixture.platform().lastMenu();
  ASSERT_NE(menu.find(L"右側エリア"), nullptr);
  EXPECT_TRUE(menu.find(L"右側エリア")->checked);
  EXPECT_TRUE(menu.find(L"右側エリア")->radio);
  EXPECT_FALSE(menu.find(L"左側エリア")->checked);
  // First of two in its area: it can only go down.
  EXPECT_FALSE(menu.find(L"上に移動")->enabled);
  EXPECT_FALSE(menu.find(L"先頭に移動")->enabled);
  EXPECT_TRUE(menu.find(L"下に移動")->enabled);
  EXPECT_NE(menu.find(L"ウィンドウを分離"), nullptr);
  EXPECT_FALSE(menu.find(L"ウィンドウのグループ化")->checked);
  EXPECT_EQ(menu.items.back().text, L"ウィンドウを閉じる");
  EXPECT_TRUE(menu.items[menu.items.size() - 2].isSeparator());
  // An explorer cannot leave the main window.
  main.press(100, 100, Window::MouseButton::Right);
  EXPECT_EQ(fixture.platform().lastMenu().find(L"ウィンドウを分離"), nullptr);
}

TEST(WindowMenu, MovesInTheAreaAndToAnotherArea) {
  WindowFixture fixture;
  Window::WindowService& service = fixture.service();
  fixture.platform().chooseNext(L"最後に移動");
  fixture.main().press(900, 100, Window::MouseButton::Right);
  EXPECT_EQ(pixels(fixture.client(kSettings)).y, 0);
  EXPECT_GT(pixels(fixture.client(kObjects)).y, 0);
  service.moveUp(fixture.client(kObjects));
  EXPECT_EQ(pixels(fixture.client(kObjects)).y, 0);

  // The preview joins the left column, below the scene list by its old place.
  service.setArea(fixture.client(kPreview), Window::Area::Left);
  EXPECT_EQ(pixels(fixture.client(kPreview)).x, 1);
  EXPECT_EQ(pixels(fixture.client(kTimeline)).y, 0);  // the bottom area takes the height
  service.toggleClient(fixture.client(kObjects));
  EXPECT_EQ(fixture.client(kObjects).x(), 0x10000);
  // Shown again, it makes room for itself among the clients of its area.
  service.toggleClient(fixture.client(kObjects));
  EXPECT_LT(fixture.client(kObjects).y(), fixture.client(kSettings).y());
  EXPECT_GT(fixture.client(kSettings).height(), 0);
}

TEST(WindowMenu, GroupTabsShowOneMemberAtATime) {
  WindowFixture fixture;
  Window::WindowService& service = fixture.service();
  Window::WindowClient& timeline = fixture.client(kTimeline);
  Window::WindowClient& text = fixture.client(kText);
  service.setGrouped(timeline, true);
  EXPECT_EQ(timeline.group(), 1);
  ASSERT_NE(timeline.groupTab(), nullptr);
  // The strip takes min(172 / 2, 20) from the top.
  EXPECT_EQ(pixels(timeline), (PixelBox{201, 428, 597, 152}));
  service.setGrouped(text, true);
  EXPECT_EQ(text.group(), 2);
  EXPECT_TRUE(timeline.hidden());
  EXPECT_EQ(pixels(text), (PixelBox{201, 428, 597, 152}));
  EXPECT_EQ(timeline.fractions(), text.fractions());
  const std::vector<std::wstring> tabs = fixture.main().target().texts();
  EXPECT_NE(std::find(tabs.begin(), tabs.end(), kTimeline), tabs.end());

  // A click on the first tab shows its client; dragging it to the right swaps places.
  FakeWindow& main = fixture.main();
  main.press(250, 415);
  EXPECT_FALSE(timeline.hidden());
  EXPECT_TRUE(text.hidden());
  main.move(700, 415);
  main.release(700, 415);
  EXPECT_EQ(timeline.group(), 2);
  EXPECT_EQ(text.group(), 1);

  // Leaving the group shows the client on its own; the group keeps one member shown.
  service.setGrouped(timeline, false);
  EXPECT_EQ(timeline.group(), 0);
  EXPECT_FALSE(text.hidden());
  EXPECT_EQ(text.group(), 1);
  System::IniFile& ini = fixture.closeAll();
  EXPECT_EQ(ini.section("Window.setting.text")["group"].text, "1");
  EXPECT_EQ(ini.section("Window.setting.text")["hide"].text, "0");
}

TEST(WindowMenu, FloatingWindowsAndDockingBack) {
  WindowFixture fixture("[Window]\r\nx=100\r\ny=50\r\n");
  FakePlatformServices& platform = fixture.platform();
  Window::WindowService& service = fixture.service();
  Window::WindowClient& settings = fixture.client(kSettings);
  service.setFloating(settings, true);
  platform.runPosted();
  ASSERT_EQ(platform.windows().size(), 2u);
  FakeWindow& floating = *platform.windows().back();
  EXPECT_EQ(floating.options().owner, &fixture.main());
  EXPECT_FALSE(floating.options().minimizeButton);
  EXPECT_FALSE(floating.options().toolWindow);
  EXPECT_EQ(floating.options().minimumWidth, 256);
  // Where the client stood on the screen, and at least 256 wide.
  EXPECT_EQ(floating.geometry(), (Window::WindowGeometry{902, 300, 256, 330}));
  EXPECT_TRUE(floating.isVisible());
  EXPECT_EQ(pixels(settings), (PixelBox{0, 0, 256, 330}));
  // The object list fills the right area alone.
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 0, 197, 580}));

  floating.resizeTo(300, 400);
  EXPECT_EQ(pixels(settings), (PixelBox{0, 0, 300, 400}));
  floating.moveTo(40, 20);
  // Its close button hides the client; the menu shows it again.
  floating.close();
  EXPECT_FALSE(floating.isVisible());
  EXPECT_TRUE(settings.hidden());
  service.toggleClient(settings);
  EXPECT_TRUE(floating.isVisible());

  // Docking back comes from the floating client's own menu.
  platform.chooseNext(L"ウィンドウを統合");
  floating.press(10, 10, Window::MouseButton::Right);
  platform.runPosted();
  EXPECT_EQ(platform.windows().size(), 1u);
  EXPECT_FALSE(settings.floating());
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 0, 197, 246}));
  EXPECT_EQ(pixels(settings), (PixelBox{802, 250, 197, 330}));
  System::IniFile& ini = fixture.closeAll();
  const System::IniFile::SectionRef stored = ini.section("Window.setting");
  EXPECT_EQ(stored["floating"].text, "0");
  EXPECT_EQ(stored["x"].text, "40");
  EXPECT_EQ(stored["y"].text, "20");
  EXPECT_EQ(stored["w"].text, "300");
  EXPECT_EQ(stored["h"].text, "400");
}

TEST(WindowMenu, AFloatingClientComesBackInItsWindow) {
  WindowFixture fixture(
      "[Window.setting.color]\r\nfloating=1\r\nhide=0\r\nx=10\r\ny=20\r\nw=300\r\nh=100\r\nzoom=1\r\n"
      "[Window.explorer:1]\r\nfloating=1\r\n");
  const auto& windows = fixture.platform().windows();
  ASSERT_EQ(windows.size(), 2u);
  // Kind 2 is a tool window; kind 0 never floats, whatever the file says.
  EXPECT_TRUE(windows[1]->options().toolWindow);
  EXPECT_EQ(windows[1]->geometry(), (Window::WindowGeometry{10, 20, 300, 256}));
  EXPECT_TRUE(windows[1]->isMaximized());
  EXPECT_FALSE(fixture.client(kExplorer).floating());
  EXPECT_EQ(pixels(fixture.client(kExplorer)).x, 1);
}

TEST(WindowMenu, WhileInputIsDisabledNothingTheUserDoesArrives) {
  WindowFixture fixture("[Window.setting.color]\r\nfloating=1\r\nhide=0\r\n");
  Window::WindowService& service = fixture.service();
  bool closeAsked = false;
  service.setCloseHandler([&] { closeAsked = true; });
  FakeWindow& floating = *fixture.platform().windows().back();
  service.setInputDisabled(true);
  fixture.main().drag(199, 100, 299, 100);
  fixture.main().press(900, 100, Window::MouseButton::Right);
  fixture.main().close();
  floating.close();
  EXPECT_EQ(pixels(fixture.client(kPreview)).x, 201);
  EXPECT_EQ(fixture.platform().menusShown(), 0);
  EXPECT_FALSE(closeAsked);
  EXPECT_FALSE(fixture.client(kColor).hidden());
  service.setInputDisabled(false);
  fixture.main().close();
  EXPECT_TRUE(closeAsked);
  fixture.main().drag(199, 100, 299, 100);
  EXPECT_EQ(pixels(fixture.client(kPreview)).x, 301);
}

}  // namespace
