// On Qt's offscreen platform: the key adapter on real key events, and controls painted
// into the Qt drawing target.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>

#include "control/ButtonControl.h"
#include "control/EditControl.h"
#include "control/SliderInputControl.h"
#include "control/WindowMouseService.h"
#include "fakes/FakePlatform.h"
#include "platform/qt/QtCursorSet.h"
#include "platform/qt/QtKeyAdapter.h"
#include "platform/qt/QtRenderTarget.h"
#include "platform/qt/QtScreenColor.h"
#include "platform/qt/QtToolTipWindow.h"

namespace {

void application() {
  static int argc = 1;
  static char name[] = "sorvel_control_qt_tests";
  static char* argv[] = {name, nullptr};
  // Never destroyed, as Qt's globals may go first at exit.
  static QApplication* const instance = new QApplication(argc, argv);
  (void)instance;
}

Platform::KeyStroke press(int key, Qt::KeyboardModifiers modifiers, quint32 scanCode, const QString& text = {}) {
  const QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, text);
  return Platform::translateKey(event);
}

TEST(QtKeyAdapter, LettersDigitsAndPunctuationKeepTheirCodeUnderShiftAndLayout) {
  EXPECT_EQ(press(Qt::Key_A, Qt::NoModifier, 38, "a").key, 65);
  EXPECT_EQ(press(Qt::Key_A, Qt::NoModifier, 38, "a").text, L"a");
  // Shift+1 is '!' on a US keyboard: still the key 1.
  const Platform::KeyStroke exclamation = press(Qt::Key_Exclam, Qt::ShiftModifier, 10, "!");
  EXPECT_EQ(exclamation.key, 49);
  EXPECT_EQ(exclamation.text, L"!");
  // The key right of 0 is '-' on US and '-' / '=' on JIS; '=' and '+' on US.
  EXPECT_EQ(press(Qt::Key_Minus, Qt::NoModifier, 20, "-").key, 189);
  EXPECT_EQ(press(Qt::Key_Equal, Qt::ShiftModifier, 20, "=").key, 189);
  EXPECT_EQ(press(Qt::Key_Plus, Qt::ShiftModifier, 21, "+").key, 187);
  EXPECT_EQ(press(Qt::Key_AsciiCircum, Qt::NoModifier, 21, "^").key, 187);
  // JIS ':' stands where US has the apostrophe; '@' where '['.
  EXPECT_EQ(press(Qt::Key_Colon, Qt::NoModifier, 48, ":").key, 222);
  EXPECT_EQ(press(Qt::Key_At, Qt::NoModifier, 34, "@").key, 219);
  EXPECT_EQ(press(Qt::Key_Backslash, Qt::NoModifier, 97, "\\").key, 226);
  // Without a keycode punctuation still maps by key.
  EXPECT_EQ(press(Qt::Key_Comma, Qt::NoModifier, 0, ",").key, 188);
  EXPECT_EQ(press(Qt::Key_F5, Qt::NoModifier, 71).key, 116);
  EXPECT_EQ(press(Qt::Key_Home, Qt::NoModifier, 110).key, 36);
  EXPECT_EQ(press(Qt::Key_yen, Qt::NoModifier, 0).key, 0);
}

TEST(QtKeyAdapter, TheKeypadGoesByItsModifier) {
  EXPECT_EQ(press(Qt::Key_5, Qt::KeypadModifier, 84, "5").key, 101);
  EXPECT_EQ(press(Qt::Key_5, Qt::NoModifier, 14, "5").key, 53);
  EXPECT_EQ(press(Qt::Key_Plus, Qt::KeypadModifier, 86, "+").key, 107);
  EXPECT_EQ(press(Qt::Key_Minus, Qt::KeypadModifier, 82, "-").key, 109);
  EXPECT_EQ(press(Qt::Key_Asterisk, Qt::KeypadModifier, 63, "*").key, 106);
  EXPECT_EQ(press(Qt::Key_Slash, Qt::KeypadModifier, 106, "/").key, 111);
  EXPECT_EQ(press(Qt::Key_Period, Qt::KeypadModifier, 91, ".").key, 110);
  const Platform::KeyStroke enter = press(Qt::Key_Enter, Qt::KeypadModifier, 104, "\r");
  EXPECT_EQ(enter.key, 13);
  EXPECT_EQ(enter.text, L"\r");
  // Num Lock off: the keypad's 7 is Home.
  EXPECT_EQ(press(Qt::Key_Home, Qt::KeypadModifier, 79).key, 36);
}

TEST(QtKeyAdapter, TheControlCharactersAreBuiltFromTheKeys) {
  const Platform::KeyStroke copy = press(Qt::Key_C, Qt::ControlModifier, 54);
  EXPECT_EQ(copy.key, 67);
  EXPECT_EQ(copy.modifiers, Window::kModifierControl);
  EXPECT_EQ(copy.text, L"\x03");
  EXPECT_EQ(press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, 52).text, L"\x1a");
  EXPECT_EQ(press(Qt::Key_Backspace, Qt::NoModifier, 22).text, L"\b");
  EXPECT_EQ(press(Qt::Key_Escape, Qt::NoModifier, 9).text, L"\x1b");
  const Platform::KeyStroke backtab = press(Qt::Key_Backtab, Qt::ShiftModifier, 23);
  EXPECT_EQ(backtab.key, 9);
  EXPECT_EQ(backtab.text, L"\t");
  EXPECT_EQ(backtab.modifiers, Window::kModifierShift);
  // A shortcut with Ctrl types nothing else; Alt with a letter types nothing made up.
  EXPECT_TRUE(press(Qt::Key_BracketLeft, Qt::ControlModifier, 34, "\x1b").text.empty());
  EXPECT_TRUE(press(Qt::Key_Delete, Qt::NoModifier, 119, "\x7f").text.empty());
}

// A window that is only a Qt drawing target.
class ImageWindow : public Window::PlatformWindow {
 public:
  ImageWindow() { target.resize(300, 100); }
  Media::RenderTarget& renderTarget() override { return target; }
  std::int32_t clientWidth() const override { return 300; }
  std::int32_t clientHeight() const override { return 100; }
  void setTitle(const std::wstring&) override {}
  void show(bool) override {}
  void hide() override {}
  bool isVisible() const override { return true; }
  void raise() override {}
  Window::WindowGeometry geometry() const override { return {0, 0, 300, 100}; }
  bool isMaximized() const override { return false; }
  void setCursor(Window::CursorShape) override {}
  void captureMouse(bool) override {}
  Platform::QtRenderTarget target;
};

QColor colorOf(const Media::ColorF& color) { return QColor::fromRgbF(color.r, color.g, color.b, color.a); }

bool near(QRgb pixel, const QColor& expected) {
  const QColor got = QColor::fromRgb(pixel);
  return std::abs(got.red() - expected.red()) <= 2 && std::abs(got.green() - expected.green()) <= 2 &&
         std::abs(got.blue() - expected.blue()) <= 2;
}

TEST(QtControlPainting, BodiesMarksAndSelectionsLandOnTheirPixels) {
  application();
  TestSupport::FakePlatformServices platform;
  ImageWindow window;
  Window::ControlStyle style;
  style.font.family = L"DejaVu Sans";
  Window::WindowMouseService service(platform, window, style);
  Control::TextButtonControl button(&service.root());
  button.setLayout(0, 0, 60, 20);
  button.text = L"OK";
  Control::SliderInputControl slider(&service.root());
  slider.setLayout(0, 30, 240, 20);
  Control::EditControl box(&service.root());
  box.setLayout(0, 60, 200, 24);
  service.setBounds({0, 0, 300, 100});
  slider.setRange(0.0, 100.0, 25.0, 1.0);
  box.setText(L"ab          ");
  service.setFocus(&box);
  box.setSelection(4, 12);
  service.paint();

  const QImage& image = window.target.image();
  EXPECT_TRUE(near(image.pixel(3, 3), colorOf(style.buttonBody)));
  EXPECT_TRUE(near(image.pixel(0, 10), colorOf(style.border)));
  EXPECT_TRUE(near(image.pixel(59, 10), colorOf(style.border)));
  // The value area runs from 20 to 220: a quarter is x 70.
  EXPECT_TRUE(near(image.pixel(70, 32), colorOf(style.sliderCursor)));
  EXPECT_TRUE(near(image.pixel(60, 32), colorOf(style.buttonBody)));
  // The selected spaces show the selection colour; the box's corner its focus frame.
  const int selectedX = static_cast<int>(box.caretRect().left) - 3;
  EXPECT_TRUE(near(image.pixel(selectedX, 72), colorOf(style.selection)));
  EXPECT_TRUE(near(image.pixel(0, 72), colorOf(style.borderFocus)));
}

TEST(QtCursorSet, TheProgramsOwnCursorsAreDrawnFromTheirFilesOrFallBack) {
  application();
  const QString folder = QStringLiteral(SORVEL_CURSOR_DIR);
  for (Window::CursorShape shape : {Window::CursorShape::SliderHover, Window::CursorShape::SliderDrag,
                                    Window::CursorShape::Move, Window::CursorShape::PanAll,
                                    Window::CursorShape::PanEastWest, Window::CursorShape::PanNorthSouth}) {
    const QCursor cursor = Platform::loadCursor(shape, folder);
    ASSERT_EQ(cursor.shape(), Qt::BitmapCursor);
    EXPECT_EQ(cursor.hotSpot(), QPoint(16, 16));
    const QImage image = cursor.pixmap().toImage();
    EXPECT_EQ(image.size(), QSize(32, 32));
    EXPECT_GT(qAlpha(image.pixel(16, 16)), 200);  // every one is drawn through its hot spot
  }
  EXPECT_EQ(Platform::loadCursor(Window::CursorShape::SliderDrag, QStringLiteral("/nonexistent")).shape(),
            Qt::SizeHorCursor);
  EXPECT_EQ(Platform::loadCursor(Window::CursorShape::IBeam, folder).shape(), Qt::IBeamCursor);
}

TEST(QtToolTipWindow, TheTipMeasuresItsTextAndShowsWhereItIsPut) {
  application();
  TestSupport::FakePlatformServices platform;
  Window::ToolTips tips(platform, &Platform::createToolTipWindow);
  std::unique_ptr<Window::ToolTipWindow> probe = Platform::createToolTipWindow();
  probe->setText(L"short");
  const std::int32_t shortWidth = probe->measure().width;
  probe->setText(L"a much longer tool tip text");
  EXPECT_GT(probe->measure().width, shortWidth);
  EXPECT_GT(shortWidth, 0);
  tips.show(100, 200, L"再生", 0);
  EXPECT_TRUE(tips.shown());
  tips.hide();
  EXPECT_FALSE(tips.shown());
}

TEST(QtScreenColor, APointOffEveryScreenReadsOpaqueBlack) {
  application();
  EXPECT_EQ(Platform::screenColorAt(-100000, -100000), (Media::ColorF{0.0f, 0.0f, 0.0f, 1.0f}));
  EXPECT_EQ(Platform::screenColorAt(10, 10).a, 1.0f);
}

}  // namespace
