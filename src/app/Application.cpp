#include "app/Application.h"

#include <algorithm>
#include <exception>
#include <thread>

#include "app/CommandLine.h"
#include "app/Platform.h"
#include "cache/CacheInstance.h"
#include "dialog/MessageBox.h"
#include "edit/EditService.h"
#include "edit/ProjectOpener.h"
#include "effect/EffectService.h"
#include "effect/item/ItemEnvironment.h"
#include "media/GraphicsService.h"
#include "media/figure/FigureResource.h"
#include "media/font/FontManager.h"
#include "media/image/ImageService.h"
#include "event/EventService.h"
#include "setting/SettingService.h"
#include "system/Log.h"
#include "system/Logger.h"
#include "system/MainIniFile.h"
#include "system/ProcessFlags.h"
#include "system/Singleton.h"
#include "system/TerminationSignals.h"
#include "system/ThreadPriority.h"
#include "system/Text.h"
#include "system/Version.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "platform/qt/QtFigureRasterizer.h"
#include "platform/qt/QtFontSource.h"
#include "platform/qt/QtImageCodec.h"
#include "plugin/InputService.h"
#include "render/RenderService.h"
#include "undo/UndoService.h"
#include "window/ClientTable.h"
#include "window/WindowClient.h"
#include "window/WindowService.h"
#include "window/WindowStyle.h"
#include "worker/WorkerThread.h"

namespace App {

namespace {

template <class T>
using Service = System::Singleton<T>;

}  // namespace

Application::Application(Platform& platform, std::vector<std::wstring> arguments)
    : platform_(platform), arguments_(std::move(arguments)) {}

// Here, where the project opener's type is complete.
Application::~Application() = default;

int Application::run() {
  // Outer handler: a failure outside the main loop (above all during start-up) is shown
  // once and the process ends at once. Services that are up stay up, so nothing is
  // written on the way out: no ini file after a failed start.
  try {
    start();
    runMainLoop();
    shutdown();
  } catch (const std::exception& exception) {
    Dialog::showExceptionText(exception.what());
  }
  relaunchIfRequested();
  return 0;
}

// Start-up, in this exact order. The numbers are the steps of the start sequence; a
// step without code names the service that takes its slot when it is built. There is no
// COM, OLE or per-monitor DPI call here (steps 1 to 3): the toolkit works in device
// pixels and the program applies its own scaling.
void Application::start() {
  Dialog::setPresenter(platform_.messagePresenter());
  // SIGTERM and SIGINT close the program as the main window's close button does, from
  // the first step on: a box that start-up opens does not keep them out.
  terminationDescriptor_ = System::TerminationSignals::install();
  platform_.watch(terminationDescriptor_, [this] {
    if (System::TerminationSignals::drain()) requestClose();
  });

  // 4. The settings come first, with the main ini. The first path expansion creates the
  //    data directory tree. Nothing may read configuration before this step.
  Setting::SettingService* settings = Service<Setting::SettingService>::acquire();
  // 5. Main thread priority.
  System::Process::setThreadPriority(settings->config()["MainThreadPriority"].toInt(0));
  Worker::WorkerThread::setThreadPriority(settings->config()["WorkerThreadPriority"].toInt(0));
  // 6. The log: from here on lines reach the file and the view.
  Service<System::Logger>::acquire();
  System::Log::info("App::Application::start", "%s %s start", System::kProductName, System::kVersion);
  // 7. Translation service.  8. Module trust list.
  // 9. Image files, through Qt's image readers and writers.
  Media::ImageService::setCodecFactory(::Platform::createQtImageCodec);
  Service<Media::ImageService>::acquire();
  // 10. Paint service: the figures, painted by Qt's raster engine.
  Resource::FigureResource::setRasterizerFactory(::Platform::createQtFigureRasterizer);
  Service<Resource::FigureResource>::acquire();
  //     The installed fonts, which the font items list.
  Media::FontManager::setSourceFactory(::Platform::createQtFontSource);
  Service<Media::FontManager>::acquire();
  Effect::ItemEnvironment::get().installedFonts = [] { return Service<Media::FontManager>::get()->getFontList(); };
  // 11. The graphics device: OpenGL through EGL, on a GPU where one is present.
  Media::GraphicsService::setBackendFactory(::Platform::createGlBackend);
  Media::GraphicsService* graphics = Service<Media::GraphicsService>::acquire();
  // 12. Audio output.
  // 13. Shared GPU resources: the frame passes, on the path this device runs faster for
  //     a frame of the project's default size.
  graphics->createSharedResources(static_cast<std::uint32_t>(settings->sceneDefaults().width),
                                  static_cast<std::uint32_t>(settings->sceneDefaults().height));
  // 14. The event service: its commands travel through the main loop, and a failing
  //     worker task comes back to the main thread as command 4.
  Event::EventService* events = Service<Event::EventService>::acquire();
  events->setPoster(&platform_);
  events->setMainThread(std::this_thread::get_id());
  Worker::WorkerThread::setExceptionReporter([events](std::exception_ptr failure) { events->postException(failure); });
  // 15. Keyboard shortcuts.  16. Window mouse service.
  // 17. Window service: the main window, not yet shown.
  windows_ = std::make_unique<Window::WindowService>(
      platform_.windowServices(), Window::WindowStyle::fromSettings(*settings), System::MainIniFile::get());
  windows_->setCloseHandler([this] { requestClose(); });
  events->setRelayoutHandler([this] { windows_->relayout(); });
  // 18. Status line "Initializing...".
  // 19. Input, output, script, filter plug-in, script module and common plug-in services:
  //     for now the input service with the built-in readers.
  Service<Plugin::InputService>::acquire();
  // 20. The cache of decoded media.
  Service<Cache::CacheInstance>::acquire();
  // 21. The effect registry: movements, built-in effects, aliases, time-control presets.
  Effect::EffectService* effects = Service<Effect::EffectService>::acquire();
  // 22. The undo service; it attaches to the edit service once that exists.
  Undo::UndoService* undo = Service<Undo::UndoService>::acquire();
  // 23. The edit service, with the empty project and scene 0. Its part of application
  //     begin is the first listener: it reads the command line and opens the project
  //     named there.
  Edit::EditService* edit = Service<Edit::EditService>::acquire();
  edit->setSceneDefaults(settings->sceneDefaults());
  edit->newProject();
  undo->attach(*edit);
  projectOpener_ = std::make_unique<Edit::ProjectOpener>(*edit, *effects);
  subscriptions_.add(events->applicationBegin, [this] {
    const CommandLineMap commandLine = parseCommandLine(arguments_);
    const auto project = commandLine.find(CommandLineKey::Project);
    projectOpener_->beginApplication(project == commandLine.end() ? std::wstring() : project->second);
  });
  // 24. The render front: its worker threads start and wait for work.
  Service<Render::RenderService>::acquire();
  // 25. Window contents: each client reads its group and, if floating, opens its
  //     window. Those whose content is not built yet show their title.
  const std::int32_t explorers = std::clamp(settings->config()["ExplorerWindowNum"].tryInt().value_or(2), 1, 16);
  for (const Window::ClientDefinition& definition : Window::standardClients(explorers)) {
    clients_.push_back(std::make_unique<Window::WindowClient>(*windows_, definition));
  }
  // 26. Menus.  27. Trust list saved.
  // 28. Layout shown.
  windows_->show();
  // 29. Status line cleared.
  // 30. Application begin: every listener in subscription order.
  events->applicationBegin.fire();
}

// 31. The main loop, under the inner handler: an exception that leaves the loop (most of
// all one that a worker sent to the main thread) is shown, and the program still goes
// down in order.
void Application::runMainLoop() {
  try {
    // A close asked for during start-up (a signal while a box was open) skips the loop.
    if (!closeRequested_) platform_.run();
  } catch (const std::exception& exception) {
    System::exceptionOccurred = true;
    // The project life cycle clears its auto-backup timer and saves the emergency
    // backup here.
    Dialog::showException(exception);
  }
}

// Shutdown, the reverse of start-up. Each service that owns a configuration group
// writes it back into the main ini as it is destroyed; the last release of the main ini
// writes sorvel2.ini, so the file is written only on an orderly way down.
void Application::shutdown() {
  platform_.unwatch(terminationDescriptor_);
  // 1. The cache's loads stop, and whoever waits for one is let go.
  Service<Cache::CacheInstance>::get()->stop();
  // 2. Application end list.
  Service<Event::EventService>::get()->applicationEnd.fire();
  // 3. Player stopped.  4. Render front workers stopped.
  Service<Render::RenderService>::get()->stop();
  // 5. Releases, in reverse order of creation. The window contents write their groups.
  subscriptions_.clear();
  clients_.clear();
  Service<Render::RenderService>::release();
  projectOpener_.reset();
  // The undo service lets go of the edit service's sections before that goes.
  Service<Undo::UndoService>::get()->detach();
  Service<Edit::EditService>::release();
  Service<Undo::UndoService>::release();
  Service<Effect::EffectService>::release();
  Service<Cache::CacheInstance>::release();
  Service<Plugin::InputService>::release();
  Service<Event::EventService>::get()->setRelayoutHandler(nullptr);
  windows_.reset();
  Worker::WorkerThread::setExceptionReporter(nullptr);
  Service<Event::EventService>::release();
  Service<Media::GraphicsService>::release();
  Service<Media::FontManager>::release();
  Service<Resource::FigureResource>::release();
  Service<Media::ImageService>::release();
  System::Log::info("App::Application::shutdown", "%s end", System::kProductName);
  Service<System::Logger>::release();
  Dialog::setPresenter(nullptr);
  // 6. The settings go last; the main ini is written here.
  Service<Setting::SettingService>::release();
}

// 7. A module installation asked for a restart: start anew with "-restart".
void Application::relaunchIfRequested() {
  if (!System::restartRequested) return;
  try {
    platform_.startDetached({L"-restart"});
  } catch (const std::exception& exception) {
    Dialog::showExceptionText(exception.what());
  }
}

// Closing the main window, SIGTERM and SIGINT all end here. The project life cycle will
// ask its discard question first and keep the window when the user says no.
void Application::requestClose() {
  closeRequested_ = true;
  platform_.beginClosing();
  platform_.quit();
}

}  // namespace App
