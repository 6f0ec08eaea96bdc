#include "platform/qt/QtToolTipWindow.h"

#include <QLabel>

namespace Platform {

namespace {

class ToolTipLabel : public Window::ToolTipWindow {
 public:
  ToolTipLabel()
      : label_(std::make_unique<QLabel>(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                                                     Qt::WindowDoesNotAcceptFocus)) {
    label_->setAttribute(Qt::WA_ShowWithoutActivating);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    label_->setTextFormat(Qt::PlainText);
    label_->setMargin(3);
    label_->setStyleSheet(QStringLiteral("QLabel { background: #2b2d31; color: #dfe1e5; border: 1px solid #41444a; }"));
  }

  void setText(const std::wstring& text) override {
    label_->setText(QString::fromStdWString(text));
    label_->adjustSize();
  }
  Window::WindowGeometry measure() const override {
    const QSize size = label_->sizeHint();
    return {0, 0, size.width(), size.height()};
  }
  void moveTo(std::int32_t x, std::int32_t y) override { label_->move(x, y); }
  void setShown(bool shown) override { label_->setVisible(shown); }

 private:
  std::unique_ptr<QLabel> label_;
};

}  // namespace

std::unique_ptr<Window::ToolTipWindow> createToolTipWindow() { return std::make_unique<ToolTipLabel>(); }

}  // namespace Platform
