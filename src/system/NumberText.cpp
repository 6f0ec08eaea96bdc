#include "system/NumberText.h"

namespace System::NumberText {

namespace {
bool isCBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r'; }
}  // namespace

std::optional<std::string_view> numberStart(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && isCBlank(text[at])) ++at;
  if (at < text.size() && text[at] == '+') {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) return std::nullopt;
  }
  return text.substr(at);
}

// The largest double takes 309 digits before the point, so the buffer always suffices.
std::string formatFixed(double value) {
  char buffer[400];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, 6).ptr);
}

std::string formatTrimmed(double value) {
  std::string text = formatFixed(value);
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return text;
  std::size_t end = text.size();
  while (end > point + 1 && text[end - 1] == '0') --end;
  if (end == point + 1) end = point;
  text.resize(end);
  return text;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace System::NumberText
