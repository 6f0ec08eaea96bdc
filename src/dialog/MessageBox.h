// The message boxes of the system: errors, exceptions and the OK/Cancel question.
// Main thread only; off the main thread the deferred forms of the event service post
// the same text. Before a presenter is installed (or with no display) a box is logged
// and does not block.
#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace System {
class IniFile;
}

namespace Dialog {

enum class MessageKind {
  Error,         // stop icon, OK
  Warning,       // exclamation icon, OK: the program goes on
  Confirmation,  // exclamation icon, OK and Cancel
};

// The platform's modal box. Returns true for OK, or nothing when no one could be asked
// (no display): the caller's answer for that case holds.
class MessagePresenter {
 public:
  virtual ~MessagePresenter() = default;
  virtual std::optional<bool> show(const std::wstring& text, const std::wstring& caption, MessageKind kind) = 0;
};

// Installed by the entry point once the platform exists; nullptr removes it.
void setPresenter(std::shared_ptr<MessagePresenter> presenter);

// "Sorvel Vantor2 [<version>] : Application Exception"
std::wstring exceptionCaption();

// Formatted into 1,024 characters; the wide form is translated through "Message" first.
void showError(const char* format, ...) __attribute__((format(printf, 1, 2)));
void showError(const wchar_t* format, ...);

// The exception text followed by the backup sentence: the program is about to go down.
void showException(const std::exception& exception);

// The exception text unchanged, with the exception caption: the outer handler and the
// deferred exception box, after which the program goes on.
void showExceptionText(const std::string& text);

// A translated warning with the program's title; the program goes on after it.
void showWarning(const std::wstring& text);

// The warning, unless `memory` already holds `value` under `section` and `key`; the
// value is remembered there when the warning is shown. A null memory always shows it.
void showWarningOnce(const std::wstring& text, System::IniFile* memory, std::string_view section,
                     std::string_view key, const std::string& value);

// Translated question, OK means yes. With no presenter the answer is
// `answerWithoutDisplay`, chosen by the caller so that a headless run keeps the user's work.
bool confirm(const std::wstring& text, bool answerWithoutDisplay);

}  // namespace Dialog
