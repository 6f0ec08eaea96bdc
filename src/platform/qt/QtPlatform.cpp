#include "platform/qt/QtPlatform.h"

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <cstdlib>
#include <map>

#include "platform/qt/QtMessagePresenter.h"
#include "platform/qt/QtWindowServices.h"
#include "system/Exception.h"
#include "system/Text.h"
#include "system/TimerBackend.h"

namespace Platform {

namespace {

QString toQString(const std::wstring& text) { return QString::fromStdWString(text); }

// A task posted from any thread; it runs when the dispatcher receives it.
class TaskEvent : public QEvent {
 public:
  static QEvent::Type eventType() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
  }
  explicit TaskEvent(std::function<void()> task) : QEvent(eventType()), task(std::move(task)) {}
  std::function<void()> task;
};

// Receives posted work on the main thread. It is not the main window, so event commands
// also work headless and before any window exists.
class MainThreadDispatcher : public QObject {
 public:
  explicit MainThreadDispatcher(std::function<void(const std::function<void()>&)> runGuarded)
      : runGuarded_(std::move(runGuarded)) {}

 protected:
  void customEvent(QEvent* event) override {
    if (event->type() == TaskEvent::eventType()) runGuarded_(static_cast<TaskEvent*>(event)->task);
  }

 private:
  std::function<void(const std::function<void()>&)> runGuarded_;
};

class QtPlatform : public App::Platform, public System::TimerBackend {
 public:
  QtPlatform(int& argc, char** argv) : application_(argc, argv) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QString name = QGuiApplication::platformName();
    hasDisplay_ = name != QLatin1String("offscreen") && name != QLatin1String("minimal");
    dispatcher_ = std::make_unique<MainThreadDispatcher>(
        [this](const std::function<void()>& task) { runGuarded(task); });
    System::setTimerBackend(this);
  }

  ~QtPlatform() override {
    System::setTimerBackend(nullptr);
    timers_.clear();
    notifiers_.clear();
    windowServices_.reset();
    dispatcher_.reset();
  }

  bool hasDisplay() const override { return hasDisplay_; }

  Window::PlatformServices& windowServices() override {
    if (!windowServices_) {
      LoopAccess loop;
      loop.guard = [this](const std::function<void()>& callback) { runGuarded(callback); };
      loop.post = [this](std::function<void()> task) { post(std::move(task)); };
      loop.watch = [this](int descriptor, std::function<void()> callback) { watch(descriptor, std::move(callback)); };
      loop.unwatch = [this](int descriptor) { unwatch(descriptor); };
      loop.presenter = [this] { return messagePresenter(); };
      windowServices_ = createWindowServices(std::move(loop));
    }
    return *windowServices_;
  }

  void beginClosing() override { closing_->store(true); }

  void run() override {
    failure_ = nullptr;
    QCoreApplication::exec();
    if (failure_) {
      std::exception_ptr failure = failure_;
      failure_ = nullptr;
      std::rethrow_exception(failure);
    }
  }

  // Every running loop ends, the nested loop of a modal box or dialog included.
  void quit() override { QCoreApplication::exit(0); }

  void post(std::function<void()> task) override {
    QCoreApplication::postEvent(dispatcher_.get(), new TaskEvent(std::move(task)));
  }

  void watch(int descriptor, std::function<void()> callback) override {
    auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated,
                     [this, callback = std::move(callback)] { runGuarded(callback); });
    notifiers_[descriptor] = std::move(notifier);
  }

  void unwatch(int descriptor) override { notifiers_.erase(descriptor); }

  std::shared_ptr<Dialog::MessagePresenter> messagePresenter() override {
    return createMessagePresenter(hasDisplay_, closing_);
  }

  std::uint32_t start(std::int32_t milliseconds, bool precise, std::function<void()> callback) override {
    auto timer = std::make_unique<QTimer>();
    timer->setTimerType(precise ? Qt::PreciseTimer : Qt::CoarseTimer);
    QObject::connect(timer.get(), &QTimer::timeout, [this, callback = std::move(callback)] { runGuarded(callback); });
    timer->start(milliseconds);
    const std::uint32_t id = ++lastTimerId_;
    timers_[id] = std::move(timer);
    return id;
  }

  void stop(std::uint32_t id) override {
    const auto found = timers_.find(id);
    if (found == timers_.end()) return;
    // A timer may be stopped from its own callback: it goes once the callback is over.
    found->second->stop();
    found->second.release()->deleteLater();
    timers_.erase(found);
  }

  void startDetached(const std::vector<std::wstring>& arguments) override {
    QStringList list;
    for (const std::wstring& argument : arguments) list << toQString(argument);
    if (!QProcess::startDetached(QCoreApplication::applicationFilePath(), list)) {
      throw System::PlatformCallException("QProcess::startDetached", "App::Application::run");
    }
  }

 private:
  // Every entry from the loop into the program comes through here: the first exception
  // ends the loop and is rethrown by run(), after the loop.
  void runGuarded(const std::function<void()>& callback) {
    if (failure_) return;
    try {
      callback();
    } catch (...) {
      failure_ = std::current_exception();
      QCoreApplication::exit(1);
    }
  }

  QApplication application_;
  bool hasDisplay_ = false;
  std::unique_ptr<MainThreadDispatcher> dispatcher_;
  std::unique_ptr<Window::PlatformServices> windowServices_;
  std::shared_ptr<std::atomic<bool>> closing_ = std::make_shared<std::atomic<bool>>(false);
  std::map<int, std::unique_ptr<QSocketNotifier>> notifiers_;
  std::map<std::uint32_t, std::unique_ptr<QTimer>> timers_;
  std::uint32_t lastTimerId_ = 0;
  std::exception_ptr failure_;
};

}  // namespace

std::unique_ptr<App::Platform> createQtPlatform(int& argc, char** argv) {
  setenv("QT_ENABLE_HIGHDPI_SCALING", "0", 1);
  const bool platformChosen = std::getenv("QT_QPA_PLATFORM") != nullptr;
  const bool displayReachable = std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
  if (!platformChosen && !displayReachable) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  return std::make_unique<QtPlatform>(argc, argv);
}

}  // namespace Platform
