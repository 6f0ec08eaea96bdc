#include "system/Text.h"

#include <cstdio>
#include <cwchar>
#include <vector>

namespace System::Text {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t c) {
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = kReplacement;
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

// Decodes one sequence at `pos`; returns false for a malformed one and advances by one byte.
bool decodeOne(std::string_view in, std::size_t& pos, char32_t& out) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(in[i]); };
  const unsigned char lead = byte(pos);
  if (lead < 0x80) {
    out = lead;
    ++pos;
    return true;
  }
  int length = 0;
  char32_t value = 0;
  char32_t minimum = 0;
  if ((lead & 0xE0) == 0xC0) {
    length = 2, value = lead & 0x1F, minimum = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    length = 3, value = lead & 0x0F, minimum = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    length = 4, value = lead & 0x07, minimum = 0x10000;
  } else {
    ++pos;
    return false;
  }
  if (pos + length > in.size()) {
    ++pos;
    return false;
  }
  for (int i = 1; i < length; ++i) {
    const unsigned char next = byte(pos + i);
    if ((next & 0xC0) != 0x80) {
      ++pos;
      return false;
    }
    value = (value << 6) | (next & 0x3F);
  }
  if (value < minimum || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
    ++pos;
    return false;
  }
  pos += length;
  out = value;
  return true;
}

}  // namespace

std::string toUtf8(std::wstring_view wide) {
  std::string out;
  out.reserve(wide.size());
  for (wchar_t c : wide) appendUtf8(out, static_cast<char32_t>(c));
  return out;
}

std::wstring fromUtf8(std::string_view utf8) {
  std::wstring out;
  out.reserve(utf8.size());
  std::size_t pos = 0;
  while (pos < utf8.size()) {
    char32_t c = 0;
    out.push_back(static_cast<wchar_t>(decodeOne(utf8, pos, c) ? c : kReplacement));
  }
  return out;
}

std::optional<std::wstring> fromUtf8Strict(std::string_view utf8) {
  std::wstring out;
  out.reserve(utf8.size());
  std::size_t pos = 0;
  while (pos < utf8.size()) {
    char32_t c = 0;
    if (!decodeOne(utf8, pos, c)) return std::nullopt;
    out.push_back(static_cast<wchar_t>(c));
  }
  return out;
}

std::string formatV(std::size_t capacity, const char* format, std::va_list args) {
  std::vector<char> buffer(capacity);
  const int written = std::vsnprintf(buffer.data(), capacity, format, args);
  if (written < 0) return {};
  return std::string(buffer.data());
}

std::string format(std::size_t capacity, const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  std::string result = formatV(capacity, format, args);
  va_end(args);
  return result;
}

std::wstring formatWideV(std::size_t capacity, const wchar_t* format, std::va_list args) {
  std::vector<wchar_t> buffer(capacity);
  // vswprintf returns -1 when the text does not fit; the buffer then holds the cut text.
  std::vswprintf(buffer.data(), capacity, format, args);
  buffer[capacity - 1] = L'\0';
  return std::wstring(buffer.data());
}

std::wstring toLowerAscii(std::wstring_view text) {
  std::wstring out(text);
  for (wchar_t& c : out) {
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  }
  return out;
}

std::string singleLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (const char c : text) {
    if (c != '\n' && c != '\r') {
      line += c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  return line;
}

}  // namespace System::Text
