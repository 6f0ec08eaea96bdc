#include "platform/qt/QtCanvasWindow.h"

#include <QCloseEvent>
#include <QCursor>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QMoveEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <QWheelEvent>
#include <QWidget>

#include "platform/qt/QtCursorSet.h"
#include "platform/qt/QtKeyAdapter.h"
#include "platform/qt/QtRenderTarget.h"

namespace Platform {

namespace {

std::uint32_t modifiersOf(Qt::KeyboardModifiers modifiers) {
  std::uint32_t result = 0;
  if (modifiers & Qt::ShiftModifier) result |= Window::kModifierShift;
  if (modifiers & Qt::ControlModifier) result |= Window::kModifierControl;
  if (modifiers & Qt::AltModifier) result |= Window::kModifierAlt;
  return result;
}

Window::MouseButton buttonOf(Qt::MouseButton button) {
  if (button == Qt::RightButton) return Window::MouseButton::Right;
  if (button == Qt::MiddleButton) return Window::MouseButton::Middle;
  return Window::MouseButton::Left;
}

// The widget only shows the kept image and turns Qt's events into the window's events.
class CanvasWidget : public QWidget {
 public:
  CanvasWidget(QWidget* owner, Qt::WindowFlags flags, Window::WindowEvents& events, LoopGuard guard)
      : QWidget(owner, flags),
        events_(events),
        guard_(std::move(guard)),
        target_([this](const QRect& rect) { update(rect); }) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_InputMethodEnabled);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
  }

  QtRenderTarget& target() noexcept { return target_; }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!painted_) {
      painted_ = true;
      guard_([this] { events_.paintRequested(); });
    }
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(event->rect(), target_.image(), event->rect());
  }

  void resizeEvent(QResizeEvent* event) override {
    target_.resize(event->size().width(), event->size().height());
    guard_([this, size = event->size()] {
      events_.resized(size.width(), size.height());
      reportGeometry();
    });
  }

  void moveEvent(QMoveEvent*) override {
    guard_([this] { reportGeometry(); });
  }

  void changeEvent(QEvent* event) override {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) guard_([this] { reportGeometry(); });
  }

  void closeEvent(QCloseEvent* event) override {
    // The program decides whether and when a window goes.
    event->ignore();
    guard_([this] { events_.closeRequested(); });
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    const QPoint at = event->position().toPoint();
    guard_([this, at, modifiers = modifiersOf(event->modifiers())] { events_.mouseMoved(at.x(), at.y(), modifiers); });
  }

  void mousePressEvent(QMouseEvent* event) override {
    const QPoint at = event->position().toPoint();
    guard_([this, at, button = buttonOf(event->button()), modifiers = modifiersOf(event->modifiers())] {
      events_.mousePressed(button, at.x(), at.y(), modifiers);
    });
  }

  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

  void mouseReleaseEvent(QMouseEvent* event) override {
    const QPoint at = event->position().toPoint();
    guard_([this, at, button = buttonOf(event->button()), modifiers = modifiersOf(event->modifiers())] {
      events_.mouseReleased(button, at.x(), at.y(), modifiers);
    });
    // A click may have moved the focus to or from a text box.
    QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImCursorRectangle);
  }

  void inputMethodEvent(QInputMethodEvent* event) override {
    const std::wstring preedit = event->preeditString().toStdWString();
    const std::wstring commit = event->commitString().toStdWString();
    guard_([this, preedit, commit] {
      if (!commit.empty()) {
        events_.compositionCommitted(commit);
      }
      events_.compositionChanged(preedit);
    });
    event->accept();
  }

  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool on = false;
    guard_([&] { on = events_.inputCursor(x, y, width, height); });
    if (query == Qt::ImEnabled) return on;
    if (query == Qt::ImCursorRectangle) return QRect(x, y, width, height);
    return QWidget::inputMethodQuery(query);
  }

  void leaveEvent(QEvent*) override {
    guard_([this] { events_.mouseLeft(); });
  }

  void wheelEvent(QWheelEvent* event) override {
    const QPoint at = event->position().toPoint();
    guard_([this, at, delta = event->angleDelta().y(), modifiers = modifiersOf(event->modifiers())] {
      events_.wheelTurned(at.x(), at.y(), delta, modifiers);
    });
  }

  void keyPressEvent(QKeyEvent* event) override {
    const KeyStroke stroke = translateKey(*event);
    guard_([this, stroke, repeat = event->isAutoRepeat()] {
      if (stroke.key != 0) events_.keyPressed(stroke.key, stroke.modifiers, repeat);
      if (!stroke.text.empty()) events_.textEntered(stroke.text);
    });
    QGuiApplication::inputMethod()->update(Qt::ImEnabled | Qt::ImCursorRectangle);
  }

  void keyReleaseEvent(QKeyEvent* event) override {
    const KeyStroke stroke = translateKey(*event);
    if (stroke.key == 0) return;
    guard_([this, stroke] { events_.keyReleased(stroke.key, stroke.modifiers); });
  }

  void focusOutEvent(QFocusEvent*) override {
    guard_([this] { events_.focusLost(); });
  }

  bool focusNextPrevChild(bool) override { return false; }  // Tab belongs to the controls

 private:
  void reportGeometry() {
    const QRect frameless = geometry();
    events_.geometryChanged({frameless.x(), frameless.y(), frameless.width(), frameless.height()}, isMaximized(),
                            isMinimized());
  }

  Window::WindowEvents& events_;
  LoopGuard guard_;
  QtRenderTarget target_;
  bool painted_ = false;
};

class CanvasWindow : public Window::PlatformWindow {
 public:
  CanvasWindow(const Window::WindowOptions& options, Window::WindowEvents& events, LoopGuard guard) {
    QWidget* owner = options.owner ? static_cast<QWidget*>(canvasWidget(*options.owner)) : nullptr;
    Qt::WindowFlags flags = options.toolWindow ? Qt::Tool : Qt::Window;
    if (!options.minimizeButton) {
      flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
               Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint;
    }
    // A top-level widget with a parent is transient for it: it stays above its owner.
    widget_ = new CanvasWidget(owner, flags, events, std::move(guard));
    widget_->setWindowTitle(QString::fromStdWString(options.title));
    widget_->setMinimumSize(options.minimumWidth, options.minimumHeight);
    const Window::WindowGeometry& geometry = options.geometry;
    widget_->setGeometry(geometry.x, geometry.y, std::max(geometry.width, options.minimumWidth),
                         std::max(geometry.height, options.minimumHeight));
    widget_->target().resize(widget_->width(), widget_->height());
  }

  // The owner may have taken the widget with it already.
  ~CanvasWindow() override { delete widget_.data(); }

  Media::RenderTarget& renderTarget() override { return widget_->target(); }
  std::int32_t clientWidth() const override { return widget_->width(); }
  std::int32_t clientHeight() const override { return widget_->height(); }
  void setTitle(const std::wstring& title) override { widget_->setWindowTitle(QString::fromStdWString(title)); }
  void show(bool maximized) override {
    if (maximized) {
      widget_->showMaximized();
    } else {
      widget_->show();
    }
  }
  void hide() override { widget_->hide(); }
  bool isVisible() const override { return widget_->isVisible(); }
  void raise() override {
    widget_->raise();
    widget_->activateWindow();
  }
  Window::WindowGeometry geometry() const override {
    const QRect rect = widget_->geometry();
    return {rect.x(), rect.y(), rect.width(), rect.height()};
  }
  bool isMaximized() const override { return widget_->isMaximized(); }
  void setCursor(Window::CursorShape shape) override { widget_->setCursor(cursorFor(shape)); }
  // Qt keeps the mouse with the widget while a button is held; nothing more is needed.
  void captureMouse(bool) override {}

  CanvasWidget* widget() const noexcept { return widget_.data(); }

 private:
  QPointer<CanvasWidget> widget_;
};

}  // namespace

std::unique_ptr<Window::PlatformWindow> createCanvasWindow(const Window::WindowOptions& options,
                                                           Window::WindowEvents& events, LoopGuard guard) {
  return std::make_unique<CanvasWindow>(options, events, std::move(guard));
}

void* canvasWidget(Window::PlatformWindow& window) {
  auto* canvas = dynamic_cast<CanvasWindow*>(&window);
  return canvas ? canvas->widget() : nullptr;
}

}  // namespace Platform
