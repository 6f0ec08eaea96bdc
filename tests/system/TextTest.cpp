#include <gtest/gtest.h>

#include <cstdarg>

#include "system/Text.h"

namespace {

std::wstring formatWide(std::size_t capacity, const wchar_t* format, ...) {
  std::va_list args;
  va_start(args, format);
  std::wstring result = System::Text::formatWideV(capacity, format, args);
  va_end(args);
  return result;
}

TEST(Text, Utf8RoundTripsEveryPlane) {
  const std::wstring text = L"Root シーン 😀 é";
  EXPECT_EQ(System::Text::fromUtf8(System::Text::toUtf8(text)), text);
  EXPECT_EQ(System::Text::toUtf8(L"\u00e9\u30b7\U0001F600"), "\xC3\xA9\xE3\x82\xB7\xF0\x9F\x98\x80");
}

TEST(Text, MalformedUtf8IsReplacedOrRefused) {
  const std::string broken = "a\xC3(b\xE3\x82";
  EXPECT_EQ(System::Text::fromUtf8(broken), L"a\uFFFD(b\uFFFD\uFFFD");
  EXPECT_FALSE(System::Text::fromUtf8Strict(broken).has_value());
  EXPECT_FALSE(System::Text::fromUtf8Strict("\xC0\xAF").has_value());  // overlong "/"
  EXPECT_FALSE(System::Text::fromUtf8Strict("\xED\xA0\x80").has_value());  // surrogate
  EXPECT_EQ(System::Text::fromUtf8Strict("ok").value(), L"ok");
}

TEST(Text, Cp932DecodesLegacyBytes) {
  EXPECT_EQ(System::Text::fromCp932("\x93\xfa\x96\x7b\x8c\xea abc"), L"日本語 abc");
  EXPECT_EQ(System::Text::fromCp932("\x82\xa0\x5c"), L"あ\\");
}

TEST(Text, FormattingCutsAtTheBuffer) {
  EXPECT_EQ(System::Text::format(8, "%s", "0123456789"), "0123456");
  EXPECT_EQ(formatWide(8, L"%ls", L"0123456789"), L"0123456");
  EXPECT_EQ(formatWide(64, L"%d:%ls", 7, L"段"), L"7:段");
}

}  // namespace
