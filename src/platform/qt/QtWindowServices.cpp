#include "platform/qt/QtWindowServices.h"

#include <QAction>
#include <QActionGroup>
#include <QClipboard>
#include <QCoreApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMenu>
#include <QMetaObject>
#include <QScreen>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <map>

#include "system/Exception.h"

namespace Platform {

namespace {

// Fills a QMenu from the menu's items; each action remembers its item.
void fill(QMenu& menu, const std::vector<Window::PopupMenuItem>& items,
          std::map<QAction*, const Window::PopupMenuItem*>& actions) {
  QActionGroup* radios = nullptr;
  for (const Window::PopupMenuItem& item : items) {
    if (item.isSeparator()) {
      menu.addSeparator();
      radios = nullptr;
      continue;
    }
    if (!item.children.empty()) {
      QMenu* sub = menu.addMenu(QString::fromStdWString(item.text));
      sub->setEnabled(item.enabled);
      fill(*sub, item.children, actions);
      radios = nullptr;
      continue;
    }
    QAction* action = menu.addAction(QString::fromStdWString(item.text));
    action->setEnabled(item.enabled);
    if (item.checked || item.radio) {
      action->setCheckable(true);
      action->setChecked(item.checked);
    }
    if (item.radio) {
      if (!radios) radios = new QActionGroup(&menu);
      radios->addAction(action);
    } else {
      radios = nullptr;
    }
    actions[action] = &item;
  }
}

class QtWindowServices : public Window::PlatformServices {
 public:
  explicit QtWindowServices(LoopAccess loop) : loop_(std::move(loop)) {}

  ~QtWindowServices() override { timers_.clear(); }

  std::unique_ptr<Window::PlatformWindow> createWindow(const Window::WindowOptions& options,
                                                       Window::WindowEvents& events) override {
    return createCanvasWindow(options, events, loop_.guard);
  }

  void showPopupMenu(Window::PlatformWindow& window, std::int32_t x, std::int32_t y,
                     const Window::PopupMenu& menu) override {
    QMenu popup(static_cast<QWidget*>(canvasWidget(window)));
    std::map<QAction*, const Window::PopupMenuItem*> actions;
    fill(popup, menu.items, actions);
    QAction* chosen = popup.exec(QPoint(x, y));
    if (!chosen) return;
    const auto found = actions.find(chosen);
    // The action runs once the menu is gone.
    if (found != actions.end() && found->second->action) found->second->action();
  }

  std::shared_ptr<Dialog::MessagePresenter> messagePresenter() override { return loop_.presenter(); }

  void post(std::function<void()> task) override { loop_.post(std::move(task)); }

  void send(const std::function<void()>& task) override {
    if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
      task();
      return;
    }
    std::exception_ptr failure;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&] {
          try {
            task();
          } catch (...) {
            failure = std::current_exception();
          }
        },
        Qt::BlockingQueuedConnection);
    if (failure) std::rethrow_exception(failure);
  }

  std::uint32_t startTimer(std::int32_t milliseconds, std::function<void()> callback) override {
    auto timer = std::make_unique<QTimer>();
    QObject::connect(timer.get(), &QTimer::timeout,
                     [guard = loop_.guard, callback = std::move(callback)] { guard(callback); });
    timer->start(milliseconds);
    const std::uint32_t id = ++lastTimer_;
    timers_[id] = std::move(timer);
    return id;
  }

  void stopTimer(std::uint32_t id) override {
    const auto found = timers_.find(id);
    if (found == timers_.end()) return;
    // A timer may be stopped from its own callback: it goes once the callback is over.
    found->second->stop();
    found->second.release()->deleteLater();
    timers_.erase(found);
  }

  void addWaitHandle(int descriptor, std::function<void()> callback) override {
    loop_.watch(descriptor, std::move(callback));
  }

  void removeWaitHandle(int descriptor) override { loop_.unwatch(descriptor); }

  std::wstring clipboardText() override { return QGuiApplication::clipboard()->text().toStdWString(); }

  void setClipboardText(const std::wstring& text) override {
    QGuiApplication::clipboard()->setText(QString::fromStdWString(text));
  }

  void cursorPosition(std::int32_t& x, std::int32_t& y) override {
    const QPoint at = QCursor::pos();
    x = at.x();
    y = at.y();
  }

  void setCursorPosition(std::int32_t x, std::int32_t y) override { QCursor::setPos(x, y); }

  Window::WindowGeometry screenArea(std::int32_t x, std::int32_t y) override {
    const QScreen* screen = QGuiApplication::screenAt(QPoint(x, y));
    if (!screen) screen = QGuiApplication::primaryScreen();
    if (!screen) return {0, 0, 1920, 1080};
    const QRect area = screen->availableGeometry();
    return {area.x(), area.y(), area.width(), area.height()};
  }

  bool openPath(const std::wstring& path) override {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdWString(path)));
  }

 private:
  LoopAccess loop_;
  std::map<std::uint32_t, std::unique_ptr<QTimer>> timers_;
  std::uint32_t lastTimer_ = 0;
};

}  // namespace

std::unique_ptr<Window::PlatformServices> createWindowServices(LoopAccess loop) {
  return std::make_unique<QtWindowServices>(std::move(loop));
}

}  // namespace Platform
