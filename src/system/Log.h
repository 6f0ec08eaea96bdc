// The one log call of the program. Every line goes through a process-wide handler:
// a default one that formats and drops the line until Logger installs its own.
// Any thread may log.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace System::Log {

struct Type {
  const char* name;
  std::int32_t level;
};

inline constexpr Type Verbose{"VERBOSE", 1};
inline constexpr Type Info{"INFO", 2};
inline constexpr Type Plugin{"PLUGIN", 2};
inline constexpr Type Script{"SCRIPT", 2};
inline constexpr Type Warn{"WARN", 3};
inline constexpr Type Error{"ERROR", 4};

// Formatted messages are cut at this many bytes minus one, as the fixed buffer is.
inline constexpr std::size_t kMessageCapacity = 1024;

using Handler = std::function<void(const Type& type, const char* place, const char* message)>;

// Installed by Logger at construction; resetHandler() puts the default one back.
void setHandler(Handler handler);
void resetHandler();

void write(const Type& type, const char* place, const char* message);

void verbose(const char* place, const char* format, ...) __attribute__((format(printf, 2, 3)));
void info(const char* place, const char* format, ...) __attribute__((format(printf, 2, 3)));
void warn(const char* place, const char* format, ...) __attribute__((format(printf, 2, 3)));
void error(const char* place, const char* format, ...) __attribute__((format(printf, 2, 3)));

// Wide forms: formatted wide, then written as UTF-8.
void verbose(const char* place, const wchar_t* format, ...);
void info(const char* place, const wchar_t* format, ...);
void warn(const char* place, const wchar_t* format, ...);
void error(const char* place, const wchar_t* format, ...);

// Text logged by a plug-in or a script; the place is its name.
void plugin(const std::wstring& name, const char* format, ...) __attribute__((format(printf, 2, 3)));
void script(const std::wstring& name, const char* format, ...) __attribute__((format(printf, 2, 3)));

}  // namespace System::Log
