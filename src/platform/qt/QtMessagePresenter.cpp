#include "platform/qt/QtMessagePresenter.h"

#include <QApplication>
#include <QMessageBox>
#include <QWidget>

#include <cstdio>
#include <vector>

#include "system/Text.h"

namespace Platform {

namespace {

class QtMessagePresenter : public Dialog::MessagePresenter {
 public:
  explicit QtMessagePresenter(std::shared_ptr<std::atomic<bool>> closing) : closing_(std::move(closing)) {}

  std::optional<bool> show(const std::wstring& text, const std::wstring& caption, Dialog::MessageKind kind) override {
    if (closing_ && closing_->load()) return std::nullopt;
    QWidget* owner = QApplication::activeWindow();
    // Other top-level windows of the program are disabled around the box and enabled
    // again afterwards; the owner comes back to the front.
    std::vector<QWidget*> disabled;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window != owner && window->isVisible() && window->isEnabled()) {
        window->setEnabled(false);
        disabled.push_back(window);
      }
    }
    const bool question = kind == Dialog::MessageKind::Confirmation;
    QMessageBox box(kind == Dialog::MessageKind::Error ? QMessageBox::Critical : QMessageBox::Warning,
                    QString::fromStdWString(caption), QString::fromStdWString(text),
                    question ? QMessageBox::Ok | QMessageBox::Cancel : QMessageBox::Ok, owner);
    const int answer = box.exec();
    for (QWidget* window : disabled) window->setEnabled(true);
    if (owner) owner->activateWindow();
    // A box that the way down closed answers nothing.
    if (closing_ && closing_->load()) return std::nullopt;
    return answer == QMessageBox::Ok;
  }

 private:
  std::shared_ptr<std::atomic<bool>> closing_;
};

class StandardErrorPresenter : public Dialog::MessagePresenter {
 public:
  std::optional<bool> show(const std::wstring& text, const std::wstring& caption, Dialog::MessageKind) override {
    const std::string line = System::Text::toUtf8(caption) + ": " + System::Text::toUtf8(text) + "\n";
    std::fputs(line.c_str(), stderr);
    return std::nullopt;
  }
};

}  // namespace

std::shared_ptr<Dialog::MessagePresenter> createMessagePresenter(bool hasDisplay,
                                                                 std::shared_ptr<std::atomic<bool>> closing) {
  if (hasDisplay) return std::make_shared<QtMessagePresenter>(std::move(closing));
  return std::make_shared<StandardErrorPresenter>();
}

}  // namespace Platform
