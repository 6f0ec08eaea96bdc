// The log service: takes over the process-wide log handler for its lifetime and sends
// each line to the log window's view, the log file and stderr by the levels of section
// `Logger` of the main ini. Any thread may log; the log window reads view() on the main
// thread. Acquired and released on the main thread through System::Singleton<Logger>.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "system/ConfigGroup.h"
#include "system/File.h"
#include "system/Log.h"

namespace System {

class Logger {
 public:
  struct ViewLine {
    const Log::Type* type;
    std::string text;
  };
  struct View {
    std::vector<ViewLine> lines;  // newest first
    std::uint32_t counter;
  };

  Logger();
  ~Logger();
  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;

  // A copy of the view lines, taken under the logger's mutex.
  View view() const;
  // Starts at 1 and rises by one for each view line; the log window compares it to see
  // whether there is something new.
  std::uint32_t viewCounter() const;

 private:
  void handle(const Log::Type& type, const char* place, const char* message);
  void addToView(const Log::Type& type, const std::string& line);
  void writeToFile(const std::string& line);
  void openFile();

  std::int32_t maxViewLine_ = 0;
  std::int32_t maxFileNum_ = 0;
  std::int32_t viewLogLevel_ = 0;
  std::int32_t fileLogLevel_ = 0;
  std::int32_t debuggerLogLevel_ = 0;
  // Declared after the members it is bound to: it stores them as it is destroyed.
  Config::Group config_;

  File file_;
  std::deque<ViewLine> viewLines_;
  std::uint32_t viewCounter_ = 1;
  mutable std::mutex mutex_;
  // The thread inside handle(); a line that this same thread logs meanwhile (an
  // exception built while writing the file, say) is dropped instead of deadlocking.
  std::atomic<std::thread::id> loggingThread_{};
};

}  // namespace System
