// The log lines written while an object of this class lives, as "LEVEL place: message".
#pragma once

#include <string>
#include <vector>

namespace PluginTest {

class LogLines {
 public:
  LogLines();
  ~LogLines();
  LogLines(const LogLines&) = delete;
  LogLines& operator=(const LogLines&) = delete;

  bool contains(const std::string& line) const;
  // Whether some line holds `text`.
  bool mentions(const std::string& text) const;
  const std::vector<std::string>& lines() const noexcept { return lines_; }

 private:
  std::vector<std::string> lines_;
};

}  // namespace PluginTest
