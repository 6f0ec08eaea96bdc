#include "support/LogLines.h"

#include <algorithm>

#include "system/Log.h"

namespace PluginTest {

LogLines::LogLines() {
  System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
    lines_.push_back(std::string(type.name) + " " + place + ": " + message);
  });
}

LogLines::~LogLines() { System::Log::resetHandler(); }

bool LogLines::contains(const std::string& line) const {
  return std::find(lines_.begin(), lines_.end(), line) != lines_.end();
}

bool LogLines::mentions(const std::string& text) const {
  return std::any_of(lines_.begin(), lines_.end(),
                     [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

}  // namespace PluginTest
