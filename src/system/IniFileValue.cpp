// The typed readings and writings of IniFile::VALUE.
//
// Numbers follow the accept rules of strtol/strtof/strtod in the C locale (leading
// blanks and a sign, trailing garbage ignored, nothing converted or out of range is a
// failure), but never read the process locale: the toolkit sets LC_NUMERIC from the
// environment, and a German locale must not turn "0.5" into 0. Hexadecimal floats,
// "inf" and "nan" are not accepted; "0x10" reads as 0, as strtol with base 10 reads it.
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>

#include "system/Exception.h"
#include "system/IniFile.h"
#include "system/NumberText.h"
#include "system/Text.h"

namespace System {

using NumberText::formatFixed;
using NumberText::hexDigit;
using NumberText::parseInteger;
using NumberText::parseReal;

namespace {

constexpr const char* kToIntPlace = "System::IniFile::VALUE::toInt";
constexpr const char* kToFloatPlace = "System::IniFile::VALUE::toFloat";
constexpr const char* kToDoublePlace = "System::IniFile::VALUE::toDouble";
constexpr const char* kToStringPlace = "System::IniFile::VALUE::toString";
constexpr const char* kToRGBAPlace = "System::IniFile::VALUE::toRGBA";

std::array<float, 4> parseRGBA(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  if (text.size() != 6 && text.size() != 8) throw std::invalid_argument("RGB argument is invalid.");
  std::array<float, 4> rgba{0.0f, 0.0f, 0.0f, 1.0f};
  for (std::size_t channel = 0; channel * 2 < text.size(); ++channel) {
    const int high = hexDigit(text[channel * 2]);
    const int low = hexDigit(text[channel * 2 + 1]);
    if (high < 0 || low < 0) throw std::invalid_argument("RGB argument is invalid.");
    rgba[channel] = static_cast<float>((high * 16 + low) / 255.0);
  }
  return rgba;
}

// A value of no document has nothing to say about its place, so its texts carry no
// "[Note]" block rather than an empty one.
[[noreturn]] void fail(const char* place, const char* text, const IniFile::VALUE& value) {
  const std::string note = value.note();
  if (note.empty()) throw NoteException(place, text);
  throw NoteException(place, text, note);
}

}  // namespace

std::optional<std::int32_t> IniFile::VALUE::tryInt() const { return parseInteger<std::int32_t>(text); }

std::optional<float> IniFile::VALUE::tryFloat() const { return parseReal<float>(text); }

std::optional<double> IniFile::VALUE::tryDouble() const { return parseReal<double>(text); }

std::optional<std::wstring> IniFile::VALUE::tryString() const { return Text::fromUtf8Strict(text); }

std::int32_t IniFile::VALUE::toInt() const {
  const auto value = tryInt();
  if (!value) fail(kToIntPlace, "ini file parameter invalid format(int) or undefined.", *this);
  return *value;
}

std::int32_t IniFile::VALUE::toInt(std::int32_t defaultValue) const {
  if (text.empty()) return defaultValue;
  const auto value = tryInt();
  if (!value) fail(kToIntPlace, "ini file parameter invalid format(int).", *this);
  return *value;
}

float IniFile::VALUE::toFloat() const {
  const auto value = tryFloat();
  if (!value) fail(kToFloatPlace, "ini file parameter invalid format(float) or undefined.", *this);
  return *value;
}

float IniFile::VALUE::toFloat(float defaultValue) const { return text.empty() ? defaultValue : toFloat(); }

double IniFile::VALUE::toDouble() const {
  const auto value = tryDouble();
  if (!value) {
    fail(kToDoublePlace, "ini file parameter invalid format(double) or undefined.", *this);
  }
  return *value;
}

double IniFile::VALUE::toDouble(double defaultValue) const { return text.empty() ? defaultValue : toDouble(); }

std::wstring IniFile::VALUE::toString() const {
  auto value = text.empty() ? std::nullopt : tryString();
  if (!value) fail(kToStringPlace, "ini file parameter invalid format(UTF8) or undefined.", *this);
  return std::move(*value);
}

std::wstring IniFile::VALUE::toString(const std::wstring& defaultValue) const {
  return text.empty() ? defaultValue : toString();
}

void IniFile::VALUE::toRGBA(std::array<float, 4>& rgba) const {
  try {
    rgba = parseRGBA(text);
  } catch (const std::invalid_argument&) {
    fail(kToRGBAPlace, "ini file parameter invalid format(RGB) or undefined.", *this);
  }
}

std::vector<IniFile::VALUE> IniFile::VALUE::split(std::string_view delimiter) const {
  std::vector<VALUE> parts;
  const auto add = [&](std::string_view part) {
    VALUE& element = parts.emplace_back(std::string(part), owner, line);
    element.parent = this;
  };
  const std::string_view whole = text;
  std::size_t from = 0;
  if (!delimiter.empty()) {
    for (std::size_t at = whole.find(delimiter); at != std::string_view::npos; at = whole.find(delimiter, from)) {
      add(whole.substr(from, at - from));
      from = at + delimiter.size();
    }
  }
  add(whole.substr(from));
  return parts;
}

void IniFile::VALUE::setInt(std::int32_t value) {
  char buffer[16];
  // Eleven characters always fit, so to_chars cannot fail here.
  text.assign(buffer, std::to_chars(buffer, buffer + sizeof(buffer), value).ptr);
}

void IniFile::VALUE::setFloat(float value) { text = formatFixed(value); }

void IniFile::VALUE::setDouble(double value) { text = formatFixed(value); }

void IniFile::VALUE::setString(std::wstring_view value) { text = Text::toUtf8(value); }

std::string IniFile::VALUE::note(std::string_view section, std::string_view key) const {
  if (!owner) return std::string();
  return describeFile(owner->fileName(), line) + " section=" + std::string(section) + " key=" + std::string(key);
}

std::string IniFile::VALUE::note() const {
  if (!owner) return std::string();
  const std::string file = describeFile(owner->fileName(), line);
  // An element of a split is not in the document; its place is the place of the value
  // it came from.
  const VALUE* stored = this;
  while (stored->parent) stored = stored->parent;
  if (stored->sectionName && stored->keyName) return note(*stored->sectionName, *stored->keyName);
  for (const auto& section : owner->sections()) {
    for (const auto& entry : section.value) {
      if (&entry.value == stored) return file + " section=" + section.key + " key=" + entry.key;
    }
  }
  return file;
}

}  // namespace System
