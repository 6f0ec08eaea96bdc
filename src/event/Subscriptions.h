// The subscriptions of one owner (a service or window content). Destroying it removes
// all of them at once, so no list ever calls into a destroyed owner. Main thread only.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "event/NotificationList.h"

namespace Event {

class Subscriptions {
 public:
  Subscriptions() = default;
  ~Subscriptions() { clear(); }
  Subscriptions(const Subscriptions&) = delete;
  Subscriptions& operator=(const Subscriptions&) = delete;

  // The list must outlive this object, as the event service outlives its listeners.
  template <class... Args, class Callback>
  void add(NotificationList<Args...>& list, Callback&& callback) {
    list.subscribe(this, std::forward<Callback>(callback));
    removers_.push_back([this, &list] { list.unsubscribe(this); });
  }

  void clear() {
    for (const auto& remove : removers_) remove();
    removers_.clear();
  }

 private:
  std::vector<std::function<void()>> removers_;
};

}  // namespace Event
