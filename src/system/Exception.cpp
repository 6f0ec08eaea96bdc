#include "system/Exception.h"

#include <cerrno>
#include <cstdarg>
#include <system_error>

#include "system/Log.h"
#include "system/Text.h"

namespace System {

namespace {

// Exception texts are built in buffers of this size on purpose: building one must be
// safe at any depth, including inside the log path.
constexpr std::size_t kTextCapacity = 1024;

constexpr const char* kLogPlace = "Exception";

}  // namespace

std::uint32_t toHResult(int error) noexcept {
  if (error <= 0) return static_cast<std::uint32_t>(error);
  return 0x80070000u | (static_cast<std::uint32_t>(error) & 0xFFFFu);
}

std::string systemMessage(int error) { return std::system_category().message(error); }

HResultException::HResultException(const char* call, const char* place, std::uint32_t hresult)
    : hresult_(hresult) {
  // The message of an HRESULT built from an errno is that errno's message.
  const int error = (hresult & 0xFFFF0000u) == 0x80070000u ? static_cast<int>(hresult & 0xFFFFu)
                                                            : static_cast<int>(hresult);
  const std::string message = systemMessage(error);
  Log::error(kLogPlace, "%s() failed in %s() [%s] (HRESULT: 0x%08X)", call, place, message.c_str(), hresult);
  setText(Text::format(kTextCapacity, "%s() failed.\n\n[Note]\nHRESULT: 0x%08X\n%s\n\n[Place]\n%s()", call,
                       hresult, message.c_str(), place));
}

PlatformCallException::PlatformCallException(const char* call, const char* place)
    : PlatformCallException(call, place, errno) {}

PlatformCallException::PlatformCallException(const char* call, const char* place, int error)
    : HResultException(call, place, toHResult(error)) {}

ErrorCodeException::ErrorCodeException(const char* place, int code) : code_(code) {
  const std::string message = systemMessage(code);
  Log::error(kLogPlace, "%s in %s()", message.c_str(), place);
  setText(Text::format(kTextCapacity, "%s\n\n[Place]\n%s()", message.c_str(), place));
}

NoteException::NoteException(const char* place, const char* text) { build(place, text, nullptr); }

NoteException::NoteException(const char* place, const char* text, const std::string& note) {
  build(place, text, &note);
}

NoteException::NoteException(const char* place, const char* text, const wchar_t* noteFormat, ...) {
  std::va_list args;
  va_start(args, noteFormat);
  const std::string note = Text::toUtf8(Text::formatWideV(kTextCapacity - 1, noteFormat, args));
  va_end(args);
  build(place, text, &note);
}

void NoteException::build(const char* place, const char* text, const std::string* note) {
  message_ = text;
  if (note) {
    Log::error(kLogPlace, "%s in %s() [%s]", text, place, note->c_str());
    setText(Text::format(kTextCapacity, "%s\n\n[Note]\n%s\n\n[Place]\n%s()", text, note->c_str(), place));
  } else {
    Log::error(kLogPlace, "%s in %s()", text, place);
    setText(Text::format(kTextCapacity, "%s\n\n[Place]\n%s()", text, place));
  }
}

StructuredException::StructuredException(const char* function, const char* place, std::uint32_t code,
                                         const void* address, const std::string& module) {
  Log::error(kLogPlace, "%s() structured exception in %s() [Code: 0x%08X Address: 0x%p Module: %s]", function,
             place, code, address, module.c_str());
  setText(Text::format(kTextCapacity,
                       "%s() structured exception\n\n[Note]\nCode: 0x%08X\nAddress 0x%p\nModule: %s\n\n[Place]\n%s()",
                       function, code, address, module.c_str(), place));
}

StructuredException::StructuredException(const char* function, const char* place, std::uint32_t code,
                                         const void* address, const std::string& module,
                                         const std::string& plugin) {
  Log::error(kLogPlace,
             "%s() structured exception in %s() [Code: 0x%08X Address: 0x%p Module: %s Plugin: %s]", function,
             place, code, address, module.c_str(), plugin.c_str());
  setText(Text::format(
      kTextCapacity,
      "%s() structured exception\n\n[Note]\nCode: 0x%08X\nAddress 0x%p\nModule: %s\n\n[Place]\n%s()\n\n[Plugin]\n%s",
      function, code, address, module.c_str(), place, plugin.c_str()));
}

}  // namespace System
