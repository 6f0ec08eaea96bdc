// The lists through which services tell the window contents what changed, and the
// typed commands by which other threads get work done on the main thread. Lists are
// fired and subscribed on the main thread; the post and send functions may be called
// from any thread.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <variant>

#include "event/MainThreadPoster.h"
#include "event/NotificationList.h"

namespace Edit {
class Object;
}

namespace Event {

enum class EventCommandType : std::int32_t {
  PreviewFrameReady = 0,
  AudioLevelReady = 1,
  CacheChanged = 2,
  PluginRequest = 3,
  Exception = 4,
  ExceptionDialog = 5,
  ErrorDialog = 6,
  Relayout = 7,
  CopyImage = 8,
  ExportEnded = 9,
};

// A command's payload: a number, an exception, a text or work for the main thread.
using EventPayload =
    std::variant<std::monostate, std::int32_t, std::exception_ptr, std::wstring, std::function<void()>>;

class EventService {
 public:
  using ObjectPointer = const std::shared_ptr<Edit::Object>&;

  EventService() = default;
  EventService(const EventService&) = delete;
  EventService& operator=(const EventService&) = delete;

  // The lists, in their order.
  NotificationList<std::int32_t> frameChanged;
  NotificationList<std::int32_t, std::int32_t> viewRangeChanged;       // start, length
  NotificationList<std::int32_t, std::int32_t> selectionRangeChanged;  // start, end
  NotificationList<ObjectPointer> focusChanged;
  NotificationList<> spareList;
  NotificationList<std::int32_t> sceneChanged;
  NotificationList<std::int32_t, std::int32_t> previewFrameReady;  // frame, status
  NotificationList<std::int32_t, std::int32_t> audioLevelReady;    // value, status
  NotificationList<> cacheChanged;
  NotificationList<ObjectPointer> objectChanged;
  NotificationList<> timelineChanged;
  NotificationList<> selectionChanged;
  NotificationList<> bookmarksChanged;
  NotificationList<bool> playStateChanged;
  NotificationList<> applicationBegin;
  NotificationList<> applicationEnd;
  NotificationList<> projectReplaced;
  NotificationList<> beforeSave;

  // The main loop that commands travel through; set by the entry point.
  void setPoster(MainThreadPoster* poster) noexcept { poster_ = poster; }
  // The thread that fires lists and runs commands; sends from it run at once.
  void setMainThread(std::thread::id id) noexcept { mainThread_ = id; }

  // Where commands 7 and 9 go; the window and output services install them.
  void setRelayoutHandler(std::function<void()> handler) { relayoutHandler_ = std::move(handler); }
  void setExportEndedHandler(std::function<void()> handler) { exportEndedHandler_ = std::move(handler); }

  // Posted commands: the caller goes on at once.
  void postPreviewFrameReady(std::int32_t frame) { postCommand(EventCommandType::PreviewFrameReady, frame); }
  void postAudioLevel(std::int32_t value) { postCommand(EventCommandType::AudioLevelReady, value); }
  void postCacheChanged() { postCommand(EventCommandType::CacheChanged, std::monostate{}); }
  // Ends the program by its exit path: the exception is rethrown on the main thread.
  void postException(std::exception_ptr exception) { postCommand(EventCommandType::Exception, exception); }
  void postExceptionDialog(std::exception_ptr exception) { postCommand(EventCommandType::ExceptionDialog, exception); }
  void postErrorDialog(std::wstring text) { postCommand(EventCommandType::ErrorDialog, std::move(text)); }
  void postRelayout() { postCommand(EventCommandType::Relayout, std::monostate{}); }
  void postExportEnded() { postCommand(EventCommandType::ExportEnded, std::monostate{}); }

  // Sent commands: the caller waits until the main thread has run `work`, and gets back
  // what it threw. A caller that holds a scene reader must release it first, since the
  // main thread may be waiting for the exclusive lock. From the main thread, and where
  // no main loop was set (tests of other services), the work runs at once on the
  // caller's thread.
  void sendPluginRequest(std::function<void()> work) { sendCommand(EventCommandType::PluginRequest, std::move(work)); }
  void sendCopyImage(std::function<void()> work) { sendCommand(EventCommandType::CopyImage, std::move(work)); }

  // Main thread: the action of one command. Unknown types are logged and ignored.
  void processEventCommandMessage(std::int32_t type, EventPayload payload);

 private:
  void postCommand(EventCommandType type, EventPayload payload);
  void sendCommand(EventCommandType type, std::function<void()> work);

  MainThreadPoster* poster_ = nullptr;
  std::thread::id mainThread_;
  std::function<void()> relayoutHandler_;
  std::function<void()> exportEndedHandler_;
};

}  // namespace Event
