#include "effect/movement/ScriptMovementHeader.h"

#include "system/Log.h"
#include "system/NumberText.h"
#include "system/Text.h"

namespace Effect {

namespace {

constexpr const char* kPlace = "Effect::ScriptMovement::ScriptMovement";

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

std::string_view trim(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

// The text behind "--name:" (or nothing when the colon is missing).
std::string_view argument(std::string_view line) {
  const std::size_t colon = line.find(':');
  return colon == std::string_view::npos ? std::string_view() : trim(line.substr(colon + 1));
}

}  // namespace

ScriptMovementHeader ScriptMovementHeader::parse(std::string_view text, const std::wstring& fileName) {
  ScriptMovementHeader header;
  bool inComment = false;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    const std::string_view line = trim(text.substr(start, end - start));
    start = end + 1;
    if (inComment) {
      inComment = line.find("]]") == std::string_view::npos;
      continue;
    }
    if (!startsWith(line, "--")) continue;
    if (startsWith(line, "--[[")) {
      inComment = line.find("]]", 4) == std::string_view::npos;
    } else if (startsWith(line, "--twopoint")) {
      header.twoPoint = 2;
    } else if (startsWith(line, "--timecontrol")) {
      header.timeControl = true;
    } else if (startsWith(line, "--speed")) {
      const std::string_view values = argument(line);
      const std::size_t comma = values.find(',');
      const auto a = System::NumberText::parseReal<double>(values.substr(0, comma));
      const auto b = comma == std::string_view::npos ? std::nullopt
                                                     : System::NumberText::parseReal<double>(values.substr(comma + 1));
      if (!a || !b) {
        System::Log::warn(kPlace, L"invalid speed parameter. [%ls]", fileName.c_str());
        continue;
      }
      header.acceleration = *a > 0 ? 1 : 0;
      header.deceleration = *b > 0 ? 1 : 0;
    } else if (startsWith(line, "--param")) {
      const auto value = System::NumberText::parseReal<double>(argument(line));
      if (!value) {
        System::Log::warn(kPlace, L"invalid param parameter. [%ls]", fileName.c_str());
        continue;
      }
      header.paramDefaults.push_back(*value);
    } else if (startsWith(line, "--label")) {
      header.label = System::Text::fromUtf8(argument(line));
    } else if (startsWith(line, "--information")) {
      header.information = System::Text::fromUtf8(argument(line));
    }
  }
  return header;
}

}  // namespace Effect
