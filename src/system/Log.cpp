#include "system/Log.h"

#include <cstdarg>
#include <utility>

#include "system/Text.h"

namespace System::Log {

namespace {

void defaultHandler(const Type& type, const char* place, const char* message) {
  // Formatted like a real line so that the cost is the same, then dropped: nothing
  // may reach a file before Logger exists.
  const std::string line = Text::format(kMessageCapacity, "[%s] [%s] %s\n", type.name, place, message);
  (void)line;
}

Handler& handler() {
  static Handler current = defaultHandler;
  return current;
}

void writeNarrow(const Type& type, const char* place, const char* format, std::va_list args) {
  const std::string message = Text::formatV(kMessageCapacity, format, args);
  write(type, place, message.c_str());
}

void writeWide(const Type& type, const char* place, const wchar_t* format, std::va_list args) {
  const std::string message = Text::toUtf8(Text::formatWideV(kMessageCapacity, format, args));
  write(type, place, message.c_str());
}

}  // namespace

void setHandler(Handler newHandler) { handler() = std::move(newHandler); }

void resetHandler() { handler() = defaultHandler; }

void write(const Type& type, const char* place, const char* message) { handler()(type, place, message); }

#define SORVEL_LOG_FORWARD(function, type, charType, writer) \
  void function(const char* place, const charType* format, ...) { \
    std::va_list args;                                            \
    va_start(args, format);                                       \
    writer(type, place, format, args);                            \
    va_end(args);                                                 \
  }

SORVEL_LOG_FORWARD(verbose, Verbose, char, writeNarrow)
SORVEL_LOG_FORWARD(info, Info, char, writeNarrow)
SORVEL_LOG_FORWARD(warn, Warn, char, writeNarrow)
SORVEL_LOG_FORWARD(error, Error, char, writeNarrow)
SORVEL_LOG_FORWARD(verbose, Verbose, wchar_t, writeWide)
SORVEL_LOG_FORWARD(info, Info, wchar_t, writeWide)
SORVEL_LOG_FORWARD(warn, Warn, wchar_t, writeWide)
SORVEL_LOG_FORWARD(error, Error, wchar_t, writeWide)
#undef SORVEL_LOG_FORWARD

void plugin(const std::wstring& name, const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  const std::string place = Text::toUtf8(name);
  writeNarrow(Plugin, place.c_str(), format, args);
  va_end(args);
}

void script(const std::wstring& name, const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  const std::string place = Text::toUtf8(name);
  writeNarrow(Script, place.c_str(), format, args);
  va_end(args);
}

}  // namespace System::Log
