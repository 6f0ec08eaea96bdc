// The failure forms of the program. Each form logs one ERROR line with the place
// "Exception" as it is built and keeps the text that a dialog shows as it stands.
// Exceptions that cross threads travel as std::exception_ptr, never as copies.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace System {

class Exception : public std::exception {
 public:
  const char* what() const noexcept override { return text_.c_str(); }
  const std::string& text() const noexcept { return text_; }

 protected:
  Exception() = default;
  void setText(std::string text) { text_ = std::move(text); }

 private:
  std::string text_;
};

// A failed call that reports an HRESULT-like status value.
class HResultException : public Exception {
 public:
  HResultException(const char* call, const char* place, std::uint32_t hresult);
  std::uint32_t hresult() const noexcept { return hresult_; }

 private:
  std::uint32_t hresult_;
};

// A failed platform call; the error is the thread's errno at construction, reported as
// 0x80070000 | errno in the HRESULT slot of the text.
class PlatformCallException : public HResultException {
 public:
  PlatformCallException(const char* call, const char* place);
  PlatformCallException(const char* call, const char* place, int error);
};

// A failure known by an error code (errno values here, e.g. EIO for a short write).
class ErrorCodeException : public Exception {
 public:
  ErrorCodeException(const char* place, int code);
  int code() const noexcept { return code_; }

 private:
  int code_;
};

// The system's own texts, with an optional note (a file name, a key, a value).
class NoteException : public Exception {
 public:
  NoteException(const char* place, const char* text);
  NoteException(const char* place, const char* text, const std::string& note);
  // The note is formatted wide into 1,023 characters, then converted to UTF-8.
  NoteException(const char* place, const char* text, const wchar_t* noteFormat, ...);

  const std::string& message() const noexcept { return message_; }

 private:
  void build(const char* place, const char* text, const std::string* note);
  std::string message_;
};

// A processor fault caught inside a call into a library (plug-in guard).
class StructuredException : public Exception {
 public:
  StructuredException(const char* function, const char* place, std::uint32_t code, const void* address,
                      const std::string& module);
  StructuredException(const char* function, const char* place, std::uint32_t code, const void* address,
                      const std::string& module, const std::string& plugin);
};

// The HRESULT that a positive error number stands for; zero and negatives pass through.
std::uint32_t toHResult(int error) noexcept;

// The system's message for an error number.
std::string systemMessage(int error);

}  // namespace System
