#include "event/EventService.h"

#include <exception>
#include <memory>

#include "dialog/MessageBox.h"
#include "sync/Event.h"
#include "system/Log.h"

namespace Event {

namespace {

constexpr const char* kPlace = "Event::EventService::processEventCommandMessage";

template <class T>
const T* payloadAs(const EventPayload& payload) {
  return std::get_if<T>(&payload);
}

std::string exceptionText(const std::exception_ptr& exception) {
  try {
    std::rethrow_exception(exception);
  } catch (const std::exception& e) {
    return e.what();
  } catch (...) {
    return "unknown exception.";
  }
}

void runHandler(const std::function<void()>& handler, const char* what) {
  if (handler) {
    handler();
  } else {
    System::Log::warn(kPlace, "no handler for %s.", what);
  }
}

}  // namespace

void EventService::postCommand(EventCommandType type, EventPayload payload) {
  if (!poster_) {
    System::Log::warn("Event::EventService::post", "no main loop for EventCommandType %d.", static_cast<int>(type));
    return;
  }
  poster_->post([this, type, payload = std::move(payload)]() mutable {
    processEventCommandMessage(static_cast<std::int32_t>(type), std::move(payload));
  });
}

void EventService::sendCommand(EventCommandType type, std::function<void()> work) {
  if (std::this_thread::get_id() == mainThread_ || !poster_) {
    processEventCommandMessage(static_cast<std::int32_t>(type), std::move(work));
    return;
  }
  // The sender waits for the main thread; whatever the work throws travels back to it.
  // The sender is let go when the posted function is destroyed, which follows its run
  // and also happens when a main loop on its way down discards it unrun: a worker that
  // sends during shutdown must not hang its own stop().
  Sync::Event done;
  std::exception_ptr failure;
  bool ran = false;
  std::shared_ptr<Sync::Event> signal(&done, [](Sync::Event* event) { event->set(); });
  poster_->post([this, type, &work, &failure, &ran, signal = std::move(signal)] {
    ran = true;
    try {
      processEventCommandMessage(static_cast<std::int32_t>(type), std::move(work));
    } catch (...) {
      failure = std::current_exception();
    }
  });
  done.wait();
  if (failure) std::rethrow_exception(failure);
  if (!ran) {
    System::Log::warn("Event::EventService::sendCommand", "the main loop dropped EventCommandType %d.",
                      static_cast<int>(type));
  }
}

void EventService::processEventCommandMessage(std::int32_t type, EventPayload payload) {
  switch (static_cast<EventCommandType>(type)) {
    case EventCommandType::PreviewFrameReady:
      if (const auto* frame = payloadAs<std::int32_t>(payload)) previewFrameReady.fire(*frame, 1);
      return;
    case EventCommandType::AudioLevelReady:
      if (const auto* value = payloadAs<std::int32_t>(payload)) audioLevelReady.fire(*value, 1);
      return;
    case EventCommandType::CacheChanged:
      cacheChanged.fire();
      return;
    case EventCommandType::PluginRequest:
    case EventCommandType::CopyImage:
      if (const auto* work = payloadAs<std::function<void()>>(payload)) runHandler(*work, "a sent command");
      return;
    case EventCommandType::Exception:
      // Leaves the main loop and reaches the inner handler of the entry point.
      if (const auto* exception = payloadAs<std::exception_ptr>(payload)) std::rethrow_exception(*exception);
      return;
    case EventCommandType::ExceptionDialog:
      if (const auto* exception = payloadAs<std::exception_ptr>(payload)) {
        Dialog::showExceptionText(exceptionText(*exception));
      }
      return;
    case EventCommandType::ErrorDialog:
      if (const auto* text = payloadAs<std::wstring>(payload)) Dialog::showError(L"%ls", text->c_str());
      return;
    case EventCommandType::Relayout:
      runHandler(relayoutHandler_, "relayout");
      return;
    case EventCommandType::ExportEnded:
      runHandler(exportEndedHandler_, "export ended");
      return;
  }
  System::Log::warn(kPlace, "unknown EventCommandType.");
}

}  // namespace Event
