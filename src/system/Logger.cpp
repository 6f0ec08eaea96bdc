#include "system/Logger.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>

#include "system/FileName.h"
#include "system/LocalTime.h"
#include "system/MainIniFile.h"
#include "system/Text.h"

namespace System {

namespace {

// A level below 1 turns its output off.
bool reaches(const Log::Type& type, std::int32_t threshold) { return threshold >= 1 && type.level >= threshold; }

}  // namespace

Logger::Logger() {
  config_.setSection("Logger");
  config_.add<Config::Int>("MaxViewLine", &maxViewLine_, 200);
  config_.add<Config::Int>("MaxFileNum", &maxFileNum_, 5);
  config_.add<Config::Int>("ViewLogLevel", &viewLogLevel_, 2);
  config_.add<Config::Int>("FileLogLevel", &fileLogLevel_, 4);
  config_.add<Config::Int>("DebuggerLogLevel", &debuggerLogLevel_, 0);
  config_.load(MainIniFile::get());
  // Every run leaves its log file, rotated at start, even when nothing reaches the file
  // level: the file's presence tells when the program ran. A failure is retried later.
  if (fileLogLevel_ >= 1) {
    try {
      openFile();
    } catch (const std::exception&) {
    }
  }
  Log::setHandler([this](const Log::Type& type, const char* place, const char* message) {
    handle(type, place, message);
  });
}

Logger::~Logger() { Log::resetHandler(); }

Logger::View Logger::view() const {
  std::lock_guard lock(mutex_);
  return View{std::vector<ViewLine>(viewLines_.begin(), viewLines_.end()), viewCounter_};
}

std::uint32_t Logger::viewCounter() const {
  std::lock_guard lock(mutex_);
  return viewCounter_;
}

void Logger::handle(const Log::Type& type, const char* place, const char* message) {
  const std::thread::id self = std::this_thread::get_id();
  if (loggingThread_.load(std::memory_order_relaxed) == self) return;

  std::lock_guard lock(mutex_);
  loggingThread_.store(self, std::memory_order_relaxed);
  // Cleared before the mutex is released, whichever way this call ends.
  struct Leave {
    std::atomic<std::thread::id>& thread;
    ~Leave() { thread.store(std::thread::id(), std::memory_order_relaxed); }
  } leave{loggingThread_};
  const LocalTime now = localNow();
  // The message is cut to what the fixed buffer of a log call holds, then the whole
  // line is cut the same way; a long line thus loses its LF.
  const std::string_view text = std::string_view(message).substr(0, Log::kMessageCapacity - 1);
  const std::string line = Text::format(Log::kMessageCapacity, "[%02d/%02d %02d:%02d:%02d] [%s] [%s] %.*s\n",
                                        now.month, now.day, now.hour, now.minute, now.second, type.name, place,
                                        static_cast<int>(text.size()), text.data());

  // Where a debugger's output window would be, this system has the terminal.
  if (reaches(type, debuggerLogLevel_)) std::fputs(line.c_str(), stderr);
  try {
    if (reaches(type, viewLogLevel_)) addToView(type, line);
    if (reaches(type, fileLogLevel_)) writeToFile(line);
  } catch (const std::exception&) {
    // Logging never fails an operation. A System exception has already tried to log
    // itself, and the guard above dropped that line.
  }
}

// A line of several lines becomes several view lines: the first one bears the time
// stamp, the others are bare.
void Logger::addToView(const Log::Type& type, const std::string& line) {
  std::size_t from = 0;
  while (from < line.size()) {
    const std::size_t end = std::min(line.find_first_of(std::string_view("\0\n\r", 3), from), line.size());
    if (end > from) {
      viewLines_.push_front(ViewLine{&type, line.substr(from, end - from)});
      ++viewCounter_;
    }
    from = end + 1;
  }
  const std::size_t limit = static_cast<std::size_t>(std::max(maxViewLine_, 0));
  while (viewLines_.size() > limit) viewLines_.pop_back();
}

void Logger::writeToFile(const std::string& line) {
  if (!file_.isOpen()) openFile();
  file_.write(line);
}

// One file per process, opened when the service starts; a failed open leaves the file
// closed, and the next line that is to reach it tries again.
void Logger::openFile() {
  file_.open(FileName::timeStamped(L"%Log%/", L"sorvel2", L"log"), File::Mode::WriteShared);
  // The names hold their time stamps, so the newest come first in reverse name order,
  // the file just made among them.
  std::vector<DirectoryEntry> logs = listFiles(L"*.log", L"%Log%");
  std::reverse(logs.begin(), logs.end());
  const std::size_t keep = static_cast<std::size_t>(std::max(maxFileNum_, 0));
  for (std::size_t index = keep; index < logs.size(); ++index) File::remove(logs[index].path);
}

}  // namespace System
