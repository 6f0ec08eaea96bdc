// Numbers as text in the C locale, whatever the process locale is: the toolkit sets
// LC_NUMERIC from the environment, and a German locale must not turn "0.5" into 0.
// Reading follows strtol/strtod (leading blanks and a sign, trailing text ignored);
// hexadecimal floats, "inf" and "nan" are no numbers. Used by the ini documents and by
// the effect items, whose texts live in the same files.
#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace System::NumberText {

// Skips what strtol skips before the digits: blanks, then a '+' that from_chars does not
// take itself. A second sign after it ("+-1") is no number.
std::optional<std::string_view> numberStart(std::string_view text);

// std::errc() on success, invalid_argument when nothing converts, result_out_of_range
// when the number does not fit.
template <class T>
std::errc readInteger(std::string_view text, T& value) {
  const auto start = numberStart(text);
  if (!start) return std::errc::invalid_argument;
  return std::from_chars(start->data(), start->data() + start->size(), value, 10).ec;
}

template <class T>
std::errc readReal(std::string_view text, T& value) {
  const auto start = numberStart(text);
  if (!start) return std::errc::invalid_argument;
  const std::size_t mantissa = !start->empty() && start->front() == '-' ? 1 : 0;
  if (mantissa >= start->size()) return std::errc::invalid_argument;
  const char first = (*start)[mantissa];
  if (first != '.' && (first < '0' || first > '9')) return std::errc::invalid_argument;
  const auto error = std::from_chars(start->data(), start->data() + start->size(), value,
                                     std::chars_format::general).ec;
  if (error == std::errc() && !std::isfinite(value)) return std::errc::result_out_of_range;
  return error;
}

template <class T>
std::optional<T> parseInteger(std::string_view text) {
  T value{};
  if (readInteger(text, value) != std::errc()) return std::nullopt;
  return value;
}

template <class T>
std::optional<T> parseReal(std::string_view text) {
  T value{};
  if (readReal(text, value) != std::errc()) return std::nullopt;
  return value;
}

// What printf("%f") gives in the C locale: fixed notation, six decimals.
std::string formatFixed(double value);

// "%f" with its trailing zeros and a trailing "." removed: "15", "0.5", "-2.25".
std::string formatTrimmed(double value);

// The value of one hexadecimal digit, or -1.
int hexDigit(char c);

}  // namespace System::NumberText
