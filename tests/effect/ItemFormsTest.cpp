// The string forms of the items other than numbers, and their legacy forms.
#include <gtest/gtest.h>

#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemColor.h"
#include "effect/item/EffectItemComboFile.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemMaskSelect.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/item/EffectItemText.h"
#include "effect/item/EffectItemYUV.h"
#include "effect/item/ItemEnvironment.h"
#include "system/Exception.h"

namespace {

using namespace Effect;

std::shared_ptr<const SelectList> shapes() { return SelectList::make({L"線形", L"円形", L"矩形"}); }

TEST(ItemText, EscapesBackslashesAndEveryLineEnd) {
  EffectItemText item(L"テキスト");
  item.setValue(L"a\r\nb\rc\nd\\n\\e");
  EXPECT_EQ(item.toString(), "a\\nb\\nc\\nd\\\\n\\\\e");
  EffectItemText back(L"テキスト");
  back.fromString(item.toString());
  EXPECT_EQ(back.value(), L"a\nb\nc\nd\\n\\e");
  back.fromString("x\\ty\\");  // unknown pairs and a lone backslash stay
  EXPECT_EQ(back.value(), L"x\\ty\\");
}

TEST(ItemText, LegacyTextIsUtf16InHexLowByteFirst) {
  EffectItemText item(L"テキスト");
  // "あA" then padding; あ is U+3042, an emoji needs a surrogate pair.
  item.fromLegacy("423041003dd800de0000000000", "text", L"テキスト", false);
  EXPECT_EQ(item.value(), L"あA\U0001F600");
  item.fromLegacy("plain\\ntext", "other", L"テキスト", false);
  EXPECT_EQ(item.value(), L"plain\ntext");
}

TEST(ItemColor, HexFormUnsetAndErrors) {
  EffectItemColor color(L"色", 0xff8001);
  EXPECT_EQ(color.toString(), "ff8001");
  color.fromString("");
  EXPECT_TRUE(color.unset());
  EXPECT_EQ(color.toString(), "");
  color.fromString("  0A0b0C");
  EXPECT_FALSE(color.unset());
  EXPECT_EQ(color.rgb(), 0x0a0b0cu);
  EXPECT_THROW(color.fromString("xyz"), System::NoteException);
  EXPECT_EQ(color.rgb(), 0x0a0b0cu);
  EffectItemColor pick(L"基準色", 0, true, ItemKind::PickColor);
  EXPECT_EQ(pick.toString(), "");
}

TEST(ItemColor, ScriptDefaultsAndLegacyKeys) {
  EffectItemColor color(L"色", 0);
  color.fromScriptDefault("0xff0000");
  EXPECT_EQ(color.rgb(), 0xff0000u);
  color.fromScriptDefault("255");
  EXPECT_EQ(color.rgb(), 0x0000ffu);
  color.fromScriptDefault("");
  EXPECT_TRUE(color.unset());
  color.fromLegacy("00ff00", "color", L"単色化", false);
  EXPECT_EQ(color.toString(), "00ff00");
  color.fromLegacy("1", "no_color", L"単色化", false);
  EXPECT_TRUE(color.unset());
  // Y 4096, Cb 0, Cr 0: grey, 4096 * 0.06225586 = 255.0
  color.fromLegacy("001000000000", "color_yc", L"単色化", false);
  EXPECT_EQ(color.rgb(), 0xffffffu);
  // Y 2048, Cb -1024 (0xfc00), Cr 512: R = 2765.8 k, G = 2035.0 k, B = 233.5 k
  color.fromLegacy("000800fc0002", "color_yc", L"単色化", false);
  EXPECT_EQ(color.r(), 172);
  EXPECT_EQ(color.g(), 127);
  EXPECT_EQ(color.b(), 15);
}

TEST(ItemSelect, LabelsKeysAndLegacy) {
  EffectItemSelect select(L"形状", shapes(), 1);
  EXPECT_EQ(select.toString(), "円形");
  select.fromString("矩形");
  EXPECT_EQ(select.value(), 2);
  select.fromString("もう無い形");  // a label dropped from the list keeps the value
  EXPECT_EQ(select.value(), 2);
  select.setValue(42);
  EXPECT_EQ(select.value(), 0);
  select.fromLegacy("1", "type", L"グラデーション", false);
  EXPECT_EQ(select.value(), 1);
  select.fromLegacy("線形", "type", L"グラデーション", false);
  EXPECT_EQ(select.value(), 0);
}

TEST(ItemSelect, FontsNotInstalledAreKeptByName) {
  ItemEnvironment::get().installedFonts = [] { return std::vector<std::wstring>{L"Noto Sans", L"DejaVu Sans"}; };
  EffectItemFontSelect::resetFontList();
  EffectItemFontSelect font(L"フォント");
  font.fromString("DejaVu Sans");
  EXPECT_EQ(font.value(), 1);
  font.fromString("他の機械のフォント");
  EXPECT_EQ(font.toString(), "他の機械のフォント");
  EffectItemFontSelect other(L"フォント");
  other.fromString("他の機械のフォント");
  EXPECT_EQ(other.value(), font.value());
  ItemEnvironment::reset();
  EffectItemFontSelect::resetFontList();
}

TEST(ItemComboFile, ListEntryOrFile) {
  EffectItemComboFile figure(ItemKind::FigureSelect, L"図形の種類", shapes(), 1, L"");
  EXPECT_EQ(figure.toString(), "円形");
  figure.fromString("C:\\figures\\..\\star.svg");
  EXPECT_EQ(figure.value(), -1);
  EXPECT_EQ(figure.toString(), "C:/star.svg");
  figure.fromString("no dot here");  // neither a label nor a file
  EXPECT_EQ(figure.toString(), "C:/star.svg");
  figure.fromString("矩形");
  EXPECT_EQ(figure.value(), 2);
  EXPECT_EQ(figure.getFilePath(), std::wstring());
  figure.setFilePath(L"");
  EXPECT_EQ(figure.value(), 2);
}

TEST(ItemMaskSelect, FigureSceneOrFile) {
  ItemEnvironment::get().findSceneByName = [](std::wstring_view name) -> std::optional<std::int32_t> {
    if (name == L"Intro") return 3;
    return std::nullopt;
  };
  ItemEnvironment::get().sceneName = [](std::int32_t id) -> std::optional<std::wstring> {
    if (id == 3) return L"Intro";
    return std::nullopt;
  };
  EffectItemMaskSelect mask(L"マスクの種類");
  EXPECT_EQ(mask.toString(), "円");
  mask.fromString("Intro");
  EXPECT_EQ(mask.sceneIndex(), 3);
  EXPECT_EQ(mask.value(), -1);
  EXPECT_EQ(mask.toString(), "Intro");
  mask.fromString("masks/heart.png");
  EXPECT_EQ(mask.sceneIndex(), -1);
  EXPECT_EQ(mask.toString(), "masks/heart.png");
  mask.fromString("星型");
  EXPECT_EQ(mask.toString(), "星型");
  EXPECT_EQ(mask.getFilePath(), std::wstring());
  ItemEnvironment::reset();
}

TEST(ItemYUV, PluginNameAndNumber) {
  ItemEnvironment::get().inputPluginNames = [] { return std::vector<std::wstring>{L"AVI File Reader", L"FFmpeg"}; };
  EffectItemYUV yuv(L"YUV");
  EXPECT_EQ(yuv.toString(), "");
  yuv.set(2, 0);
  EXPECT_EQ(yuv.toString(), "FFmpeg");
  yuv.set(0, 5);
  EXPECT_EQ(yuv.toString(), "自動,5");
  yuv.set(9, 1);  // out of the table
  EXPECT_EQ(yuv.toString(), "自動,1");
  yuv.fromString("AVI File Reader,3");
  EXPECT_EQ(yuv.decoder(), 1);
  EXPECT_EQ(yuv.number(), 3);
  yuv.fromString("Removed Plugin");
  EXPECT_EQ(yuv.decoder(), 0);
  EXPECT_EQ(yuv.number(), 0);
  ItemEnvironment::reset();
}

TEST(ItemSimpleForms, ChecksIntegersGroupsAndFiles) {
  EffectItemCheck check(L"飽和する", true);
  EXPECT_EQ(check.toString(), "1");
  check.fromString("0");
  EXPECT_FALSE(check.value());
  check.fromString("-3");
  EXPECT_TRUE(check.value());
  EXPECT_THROW(check.fromString("yes"), System::NoteException);

  EffectItemInteger integer(L"波紋数", 0, 0, 100);
  integer.fromString("42");
  EXPECT_EQ(integer.toString(), "42");
  EXPECT_THROW(integer.fromString("99999999999"), System::NoteException);

  EffectItemNumberGroup group(L"Group");
  EXPECT_EQ(group.toString(), "1");
  group.fromString("0");
  EXPECT_FALSE(group.linked());

  EffectItemFile file(L"ファイル", L"MovieFile");
  file.fromString("video\\clip.mp4");
  EXPECT_EQ(file.toString(), "video/clip.mp4");
  EXPECT_EQ(file.getFilePath(), std::wstring(L"video/clip.mp4"));
}

}  // namespace
