// Conversions between the wide strings of the model and UI and the UTF-8 of files,
// logs and Lua. Every conversion in the program goes through these few functions.
#pragma once

#include <cstdarg>
#include <optional>
#include <string>
#include <string_view>

namespace System::Text {

// Invalid code points are replaced by U+FFFD; use it where text must not be lost.
std::string toUtf8(std::wstring_view wide);

// Malformed UTF-8 sequences become U+FFFD.
std::wstring fromUtf8(std::string_view utf8);

// Empty optional when the bytes are not well-formed UTF-8.
std::optional<std::wstring> fromUtf8Strict(std::string_view utf8);

// Legacy files in the old ANSI encoding are CP932; bytes that do not decode become U+FFFD.
std::wstring fromCp932(std::string_view bytes);

// vsnprintf into a string, cut at capacity - 1 characters as the fixed buffers of the
// log and the exception texts are.
std::string formatV(std::size_t capacity, const char* format, std::va_list args);
std::string format(std::size_t capacity, const char* format, ...) __attribute__((format(printf, 2, 3)));
std::wstring formatWideV(std::size_t capacity, const wchar_t* format, std::va_list args);

// The text with each run of line ends made one blank, for lists that keep one message
// to a line (an exception's text holds its place and note on lines of their own).
std::string singleLine(std::string_view text);

// ASCII lower-casing; path extensions are compared this way.
std::wstring toLowerAscii(std::wstring_view text);

}  // namespace System::Text
