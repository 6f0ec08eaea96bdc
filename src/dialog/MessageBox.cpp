#include "dialog/MessageBox.h"

#include <cstdarg>

#include "system/IniFile.h"
#include "system/Log.h"
#include "system/Text.h"
#include "system/Version.h"
#include "translate/Translate.h"

namespace Dialog {

namespace {

constexpr std::size_t kTextCapacity = 1024;

std::shared_ptr<MessagePresenter>& presenter() {
  static std::shared_ptr<MessagePresenter> current;
  return current;
}

bool present(const std::wstring& text, const std::wstring& caption, MessageKind kind, bool answerWithoutDisplay) {
  const std::shared_ptr<MessagePresenter> shown = presenter();
  if (!shown) return answerWithoutDisplay;
  return shown->show(text, caption, kind).value_or(answerWithoutDisplay);
}

void showErrorText(const std::string& utf8) {
  System::Log::error("Dialog::showError", "show error dialog.\n%s", utf8.c_str());
  present(System::Text::fromUtf8(utf8), System::Text::fromUtf8(System::kProductName), MessageKind::Error, true);
}

}  // namespace

void setPresenter(std::shared_ptr<MessagePresenter> newPresenter) { presenter() = std::move(newPresenter); }

std::wstring exceptionCaption() {
  return System::Text::fromUtf8(std::string(System::kProductName) + " [" + System::kVersion +
                                "] : Application Exception");
}

void showError(const char* format, ...) {
  std::va_list args;
  va_start(args, format);
  const std::string text = System::Text::formatV(kTextCapacity, format, args);
  va_end(args);
  showErrorText(text);
}

void showError(const wchar_t* format, ...) {
  const std::wstring translated = Translate::translate("Message", format);
  std::va_list args;
  va_start(args, format);
  const std::wstring text = System::Text::formatWideV(kTextCapacity, translated.c_str(), args);
  va_end(args);
  showErrorText(System::Text::toUtf8(text));
}

void showException(const std::exception& exception) {
  System::Log::error("Dialog::showException", "show exception dialog.\n%s", exception.what());
  const std::wstring text = System::Text::fromUtf8(exception.what()) +
                            L"\n\nプロジェクトをバックアップしてアプリケーションを終了します";
  present(text, exceptionCaption(), MessageKind::Error, true);
}

void showExceptionText(const std::string& text) {
  System::Log::error("Dialog::showException", "show exception dialog.\n%s", text.c_str());
  present(System::Text::fromUtf8(text), exceptionCaption(), MessageKind::Error, true);
}

void showWarning(const std::wstring& text) {
  present(Translate::translate("Message", text), System::Text::fromUtf8(System::kProductName), MessageKind::Warning,
          true);
}

void showWarningOnce(const std::wstring& text, System::IniFile* memory, std::string_view section,
                     std::string_view key, const std::string& value) {
  if (memory) {
    System::IniFile::VALUE& seen = memory->value(section, key);
    if (seen.text == value) return;
    seen.text = value;
  }
  showWarning(text);
}

bool confirm(const std::wstring& text, bool answerWithoutDisplay) {
  return present(Translate::translate("Message", text), System::Text::fromUtf8(System::kProductName),
                 MessageKind::Confirmation, answerWithoutDisplay);
}

}  // namespace Dialog
