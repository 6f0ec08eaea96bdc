// How work reaches the main thread from any thread: the platform's main loop runs each
// posted function there once, in posting order.
#pragma once

#include <functional>

namespace Event {

class MainThreadPoster {
 public:
  virtual ~MainThreadPoster() = default;
  virtual void post(std::function<void()> task) = 0;
};

}  // namespace Event
