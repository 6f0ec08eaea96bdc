// The text box: caret movement by character, word and line, selection by keys, drag and
// double click, the clipboard, filters, undo of typing, Tab and the input method.
#include <gtest/gtest.h>

#include "control/ControlTestSupport.h"
#include "control/EditControl.h"

namespace {

using TestSupport::ControlFixture;
using Window::kModifierControl;
using Window::kModifierShift;

// A box at (0, 0), 200 x 100, focused: characters 10 pixels, lines 20, padding 3.
struct EditFixture {
  explicit EditFixture(bool multiline = false) : box(&fixture.root(), multiline) {
    box.setLayout(0, 0, 200, 100);
    fixture.layout();
    fixture.service().setFocus(&box);
  }
  void key(int vk, std::uint32_t modifiers = 0) {
    fixture.service().setModifiers(modifiers);
    fixture.key(vk, modifiers);
  }
  void type(const std::wstring& text, std::uint32_t modifiers = 0) {
    fixture.service().setModifiers(modifiers);
    fixture.type(text);
  }
  ControlFixture fixture;
  Control::EditControl box;
};

TEST(EditControl, CaretMovesByCharacterAndWordAndShiftSelects) {
  EditFixture e;
  e.type(L"one two, three");
  EXPECT_EQ(e.box.caret, 14u);
  e.key(37, kModifierControl);
  EXPECT_EQ(e.box.caret, 9u);
  e.key(37, kModifierControl);
  EXPECT_EQ(e.box.caret, 7u);  // the comma is a word of its own
  e.key(37, kModifierControl);
  EXPECT_EQ(e.box.caret, 4u);
  e.key(39, kModifierControl | kModifierShift);
  EXPECT_EQ(e.box.selectedText(), L"two");
  e.key(39);  // collapses to the selection's end
  EXPECT_EQ(e.box.caret, 7u);
  EXPECT_EQ(e.box.selStart, e.box.selEnd);
  e.key(36, kModifierShift);
  EXPECT_EQ(e.box.selectedText(), L"one two");
  e.key(35);
  EXPECT_EQ(e.box.caret, 14u);
}

TEST(EditControl, ArrowsPassASurrogatePairAtOnce) {
  EditFixture e;
  e.box.setText(std::wstring(L"a") + wchar_t(0xD83D) + wchar_t(0xDE00) + L"b");
  e.key(36);
  e.key(39);
  e.key(39);
  EXPECT_EQ(e.box.caret, 3u);
  e.key(37);
  EXPECT_EQ(e.box.caret, 1u);
  e.key(46);
  EXPECT_EQ(e.box.text(), L"ab");
}

TEST(EditControl, LinesKeepTheirColumnAndPagesMoveByTheBoxHeight) {
  EditFixture e(true);
  e.box.setText(L"first line\nab\nthird line\n4\n5\n6\n7\n8\n9");
  e.key(36, kModifierControl);
  e.key(39, kModifierControl);  // after "first ": column 6
  e.key(40);
  EXPECT_EQ(e.box.caret, 13u);  // the short line's end
  e.key(40);
  EXPECT_EQ(e.box.caret, 20u);  // column 6 again
  e.key(38, kModifierShift);
  e.key(38, kModifierShift);
  EXPECT_EQ(e.box.caret, 6u);
  EXPECT_EQ(e.box.selectedText(), L"line\nab\nthird ");
  e.key(34);  // (100 - 8) / 20: four lines
  EXPECT_EQ(e.box.caret, 28u);
  e.key(35, kModifierControl);
  EXPECT_EQ(e.box.caret, e.box.text().size());
  e.type(L"\r");
  EXPECT_EQ(e.box.text().back(), L'\n');
}

TEST(EditControl, APressSetsTheCaretADragExtendsADoubleClickTakesTheWord) {
  EditFixture e;
  e.box.setText(L"alpha beta gamma");
  e.fixture.press(3 + 72, 10);  // on the leading half of the 'e' of beta
  EXPECT_EQ(e.box.caret, 7u);
  e.fixture.move(3 + 158, 10);  // the trailing half of the last 'a'
  e.fixture.release(3 + 158, 10);
  EXPECT_EQ(e.box.selectedText(), L"eta gamma");
  e.fixture.advance(1000);
  e.fixture.click(3 + 82, 10);
  e.fixture.advance(100);
  e.fixture.click(3 + 82, 10);
  EXPECT_EQ(e.box.selectedText(), L"beta");
}

TEST(EditControl, TheClipboardCommandsAndTheirKeys) {
  EditFixture e;
  e.box.setText(L"copy me");
  e.type(L"\x01");
  e.type(L"\x03");
  EXPECT_EQ(e.fixture.platform().clipboardText(), L"copy me");
  e.fixture.platform().setClipboardText(L"two\r\nlines");
  e.key(45, kModifierShift);  // Shift+Insert pastes; a one-line box makes spaces
  EXPECT_EQ(e.box.text(), L"two lines");
  e.key(37, kModifierControl | kModifierShift);
  e.key(46, kModifierShift);  // Shift+Delete cuts the selection
  EXPECT_EQ(e.box.text(), L"two ");
  EXPECT_EQ(e.fixture.platform().clipboardText(), L"lines");
  e.key(46, kModifierShift);  // and deletes backwards without one
  EXPECT_EQ(e.box.text(), L"two");
  e.key(36);
  e.type(L"\x7f", kModifierControl);  // to the next word boundary
  EXPECT_EQ(e.box.text(), L"");
}

TEST(EditControl, UndoTakesBackARunOfTypingAtOnce) {
  EditFixture e;
  int changes = 0;
  e.box.onChange = [&] { ++changes; };
  e.type(L"hello");
  e.type(L"\b");
  e.type(L" x");
  EXPECT_EQ(e.box.text(), L"hell x");
  e.type(L"\x1a");
  EXPECT_EQ(e.box.text(), L"hell");
  e.type(L"\x1a");
  EXPECT_EQ(e.box.text(), L"hello");
  e.type(L"\x1a");
  EXPECT_EQ(e.box.text(), L"");
  EXPECT_FALSE(e.box.undo());
  EXPECT_EQ(changes, 11);
}

TEST(EditControl, FiltersDropCharactersAndRefuseTexts) {
  EditFixture e;
  e.box.setFilter(L"[0-9.\\-]");
  e.box.setWholeTextPattern(L"-?[0-9]*\\.?[0-9]*");
  e.type(L"1a2.5.3-");
  EXPECT_EQ(e.box.text(), L"12.53");
  e.type(L"\x02\x1b");  // other control characters do nothing
  EXPECT_EQ(e.box.text(), L"12.53");
}

TEST(EditControl, TabWalksTheFocusListSkippingRefusers) {
  ControlFixture fixture;
  auto list = std::make_shared<std::vector<Control::EditControl*>>();
  std::vector<std::unique_ptr<Control::EditControl>> boxes;
  for (int i = 0; i < 3; ++i) {
    boxes.push_back(std::make_unique<Control::EditControl>(&fixture.root()));
    boxes.back()->setLayout(0, i * 30, 100, 20);
    boxes.back()->focusList = list;
    list->push_back(boxes.back().get());
  }
  fixture.layout();
  boxes[1]->setEnabled(false);
  fixture.service().setFocus(boxes[0].get());
  fixture.type(L"\t");
  EXPECT_EQ(fixture.service().focusControl, boxes[2].get());
  fixture.type(L"\t");
  EXPECT_EQ(fixture.service().focusControl, boxes[0].get());
  fixture.service().setModifiers(kModifierShift);
  fixture.type(L"\t");
  EXPECT_EQ(fixture.service().focusControl, boxes[2].get());
  // Alone, a box leaves Tab to others.
  list->resize(1);
  EXPECT_FALSE(boxes[0]->charInput(9));
}

TEST(EditControl, TheCompositionStandsInlineUnderlinedUntilCommitted) {
  EditFixture e;
  e.type(L"ab");
  e.key(37);
  e.fixture.service().compositionChanged(L"かな");
  e.fixture.target().clearOperations();
  e.box.paint();
  std::vector<Media::PointF> underline;  // the last stroke; the first is the frame
  for (const auto& operation : e.fixture.target().operations()) {
    if (operation.kind == TestSupport::RecordingRenderTarget::Kind::Text) {
      EXPECT_EQ(operation.text, L"aかなb");
    }
    if (operation.kind == TestSupport::RecordingRenderTarget::Kind::Stroke) underline = operation.points;
  }
  ASSERT_EQ(underline.size(), 2u);
  EXPECT_FLOAT_EQ(underline.front().x, 3.0f + 10.0f);
  EXPECT_FLOAT_EQ(underline.back().x, 3.0f + 30.0f);
  EXPECT_FLOAT_EQ(underline.front().y, 3.0f + 19.0f);
  std::int32_t x = 0, y = 0, width = 0, height = 0;
  ASSERT_TRUE(e.fixture.service().inputCursor(x, y, width, height));
  EXPECT_EQ((std::vector<int>{x, y, width, height}), (std::vector<int>{13, 3, 1, 20}));
  e.fixture.service().compositionCommitted(L"仮名");
  EXPECT_EQ(e.box.text(), L"a仮名b");
  EXPECT_TRUE(e.box.preedit().empty());
  EXPECT_TRUE(e.box.imeStart());
  e.box.numeric = true;
  EXPECT_FALSE(e.box.imeStart());
  EXPECT_FALSE(e.fixture.service().inputCursor(x, y, width, height));
  e.fixture.service().setFocus(nullptr);
  EXPECT_FALSE(e.fixture.service().inputCursor(x, y, width, height));
}

}  // namespace
