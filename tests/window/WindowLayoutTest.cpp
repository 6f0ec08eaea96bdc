// The flat layout: normalising, assigning the areas, the pixel rectangles, painting of
// separators, frames and footer, and the values written back to the main ini.
#include <gtest/gtest.h>

#include "WindowTestSupport.h"

namespace {

using namespace TestSupport;

TEST(WindowLayout, DefaultLayoutOfA1000By600Window) {
  WindowFixture fixture;
  Window::WindowService& service = fixture.service();
  // 1000 - 2 + 4 and 600 + 4 - 20.
  EXPECT_EQ(service.clientWidth(), 1002);
  EXPECT_EQ(service.clientHeight(), 584);
  EXPECT_EQ(pixels(fixture.client(kExplorer)), (PixelBox{1, 0, 196, 404}));
  EXPECT_EQ(pixels(fixture.client(kScenes)), (PixelBox{1, 408, 196, 172}));
  EXPECT_EQ(pixels(fixture.client(kPreview)), (PixelBox{201, 0, 597, 404}));
  // The bottom area spans the whole free width while the text and time editors hide.
  EXPECT_EQ(pixels(fixture.client(kTimeline)), (PixelBox{201, 408, 597, 172}));
  // The right area fills the height: 0.3 and 0.4 of the stack become 3/7 and 4/7.
  EXPECT_EQ(pixels(fixture.client(kObjects)), (PixelBox{802, 0, 197, 246}));
  EXPECT_EQ(pixels(fixture.client(kSettings)), (PixelBox{802, 250, 197, 330}));
  for (const wchar_t* hidden : {kExplorer2, kText, kColor, kLog}) {
    EXPECT_EQ(pixels(fixture.client(hidden)), (PixelBox{0x10000, 0x10000, 0, 0})) << hidden;
  }
  EXPECT_TRUE(fixture.main().isVisible());
  EXPECT_EQ(fixture.main().options().title, L"Sorvel Vantor2");
}

TEST(WindowLayout, AHiddenAreaTakesNoRoom) {
  WindowFixture fixture;
  fixture.service().toggleClient(fixture.client(kExplorer));
  fixture.service().toggleClient(fixture.client(kScenes));
  // Without the left area the right one gets 0.2 / (0.2 + 0.6) of the width.
  EXPECT_EQ(pixels(fixture.client(kPreview)), (PixelBox{1, 0, 747, 404}));
  EXPECT_EQ(pixels(fixture.client(kObjects)).x, 752);
  EXPECT_EQ(fixture.client(kExplorer).x(), 0x10000);
}

TEST(WindowLayout, DamagedStoredRectanglesAreRepaired) {
  WindowFixture fixture(
      "[Window.edit]\r\nleft=0.7\r\nright=0.2\r\ntop=abc\r\n"
      "[Window.setting.text]\r\nhide=0\r\n"
      "[Window.log]\r\narea=9\r\n"
      "[Window.scene.list]\r\nleft=nan\r\nbottom=inf\r\n");
  const Window::Fractions timeline = fixture.client(kTimeline).fractions();
  const Window::Fractions text = fixture.client(kText).fractions();
  // right < left became zero width, which counts as 0.001 against the editor's 0.3.
  EXPECT_NEAR(text.left, 0.2f, 1e-6f);
  EXPECT_NEAR(text.right, 0.2f + 0.6f * 0.3f / 0.301f, 1e-5f);
  EXPECT_NEAR(timeline.right - timeline.left, 0.6f * 0.001f / 0.301f, 1e-5f);
  EXPECT_FLOAT_EQ(timeline.right, 0.8f);
  EXPECT_FLOAT_EQ(timeline.top, 0.7f);  // a top that is no number is the default
  EXPECT_EQ(fixture.client(kTimeline).width(), 0);
  EXPECT_EQ(fixture.client(kLog).area(), Window::Area::Centre);
  // "nan" and "inf" are no numbers: the defaults stand and the left column stacks both.
  EXPECT_EQ(pixels(fixture.client(kScenes)).x, 1);
  EXPECT_GT(fixture.client(kScenes).height(), 0);
  EXPECT_GT(fixture.client(kExplorer).height(), 0);
}

TEST(WindowLayout, PaintsSeparatorsFramesAndFooter) {
  WindowFixture fixture;
  const Window::WindowStyle style;
  RecordingRenderTarget& target = fixture.main().target();
  // The strip between the preview and the object list, with the frames beside it.
  EXPECT_EQ(target.pixel(798, 100), style.windowBorder);
  EXPECT_EQ(target.pixel(799, 100), style.windowSeparator);
  EXPECT_EQ(target.pixel(800, 100), style.windowSeparator);
  EXPECT_EQ(target.pixel(801, 100), style.windowBorder);
  // The strip below the preview.
  EXPECT_EQ(target.pixel(500, 405), style.windowSeparator);
  EXPECT_EQ(target.pixel(500, 407), style.windowBorder);
  EXPECT_EQ(target.pixel(0, 100), style.windowBorder);
  EXPECT_EQ(target.pixel(500, 590), style.footer);
  EXPECT_EQ(target.pixel(999, 599), style.footer);
  // A client without content of its own shows its title.
  const std::vector<std::wstring> texts = target.texts();
  EXPECT_NE(std::find(texts.begin(), texts.end(), kPreview), texts.end());
}

TEST(WindowLayout, WithNoClientTheFrameAndFooterStillDraw) {
  FakePlatformServices platform;
  Window::WindowStyle style;
  style.footerHeight = 20;
  Window::WindowService service(platform, style, nullptr);
  service.show();
  platform.windows().front()->resizeTo(400, 300);
  EXPECT_EQ(platform.windows().front()->target().pixel(10, 290), style.footer);
  EXPECT_EQ(platform.windows().front()->target().pixel(10, 10), style.background);
}

TEST(WindowLayout, ValuesAreWrittenBackAsTheyStand) {
  WindowFixture fixture("[Window]\r\nx=40\r\ny=30\r\nw=1000\r\nh=600\r\n");
  EXPECT_EQ(fixture.main().geometry(), (Window::WindowGeometry{40, 30, 1000, 600}));
  fixture.main().moveTo(50, 60);
  System::IniFile& ini = fixture.closeAll();
  const System::IniFile::SectionRef objects = ini.section("Window.object.list");
  std::string keys;
  for (const auto& entry : objects) keys += entry.key + "=" + entry.value.text + ";";
  EXPECT_EQ(keys,
            "left=0.800000;top=0.000000;right=1.000000;bottom=0.428571;area=1;hide=0;group=0;floating=0;"
            "x=0;y=0;w=0;h=0;zoom=0;");
  EXPECT_EQ(ini.section("Window.explorer:2")["hide"].text, "1");
  EXPECT_EQ(ini.section("Window.edit")["right"].text, "0.800000");
  const System::IniFile::SectionRef main = ini.section("Window");
  EXPECT_EQ(main["x"].text, "50");
  EXPECT_EQ(main["y"].text, "60");
  EXPECT_EQ(main["w"].text, "1000");
  EXPECT_EQ(main["h"].text, "600");
  EXPECT_EQ(main["zoom"].text, "0");
}

TEST(WindowLayout, ExplorersFollowTheirCount) {
  const std::vector<Window::ClientDefinition> definitions = Window::standardClients(3);
  ASSERT_EQ(definitions.size(), 12u);
  EXPECT_EQ(definitions[5].group, "Window.explorer:1");
  EXPECT_TRUE(definitions[5].shown);
  EXPECT_EQ(definitions[7].title, L"メディアエクスプローラー:3");
  EXPECT_FALSE(definitions[7].shown);
  EXPECT_EQ(definitions[7].kind, 0);
  const Window::ClientDefinition plugin = Window::pluginClient("Sample", L"Sample window");
  EXPECT_EQ(plugin.group, "Window.Sample");
  EXPECT_EQ(plugin.area, Window::Area::Centre);
}

TEST(WindowLayout, AClientMadeAgainKeepsItsPlaceAndItsValues) {
  FakePlatformServices platform;
  System::IniFile ini;
  Window::WindowService service(platform, Window::WindowStyle(), &ini);
  const auto definition = [](const char* group, const wchar_t* title, float left, float right) {
    return Window::ClientDefinition{group, title, 1, left, 0.0f, right, 1.0f, Window::Area::Centre, true};
  };
  auto a = std::make_unique<Window::WindowClient>(service, definition("Window.a", L"A", 0.0f, 0.3f));
  auto b = std::make_unique<Window::WindowClient>(service, definition("Window.b", L"B", 0.3f, 0.6f));
  auto c = std::make_unique<Window::WindowClient>(service, definition("Window.c", L"C", 0.6f, 1.0f));
  service.show();
  b->setFractions({0.3f, 0.0f, 0.5f, 1.0f});
  b.reset();  // stores its group
  b = std::make_unique<Window::WindowClient>(service, definition("Window.b", L"B", 0.3f, 0.6f));
  EXPECT_EQ(service.dockedClients(), (std::vector<Window::WindowClient*>{a.get(), b.get(), c.get()}));
  EXPECT_FLOAT_EQ(b->fractions().right, 0.5f);
  EXPECT_EQ(service.findClient(L"B"), b.get());
}

}  // namespace
