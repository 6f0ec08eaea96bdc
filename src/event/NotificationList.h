// One list of listeners of the event service. Entries are called in the order of
// subscription, on the main thread. A listener that unsubscribes (or is destroyed) while
// the list fires is skipped from then on; one added meanwhile is first called next time.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace Event {

template <class... Args>
class NotificationList {
 public:
  using Callback = std::function<void(Args...)>;

  void subscribe(const void* owner, Callback callback) { entries_.push_back({owner, std::move(callback)}); }

  void unsubscribe(const void* owner) {
    for (Entry& entry : entries_) {
      if (entry.owner == owner) entry.owner = nullptr;
    }
    if (depth_ == 0) compact();
  }

  void fire(Args... args) {
    ++depth_;
    struct Leave {
      NotificationList& list;
      ~Leave() {
        if (--list.depth_ == 0) list.compact();
      }
    } leave{*this};
    const std::size_t count = entries_.size();
    for (std::size_t index = 0; index < count; ++index) {
      // Copied: the entry may go while it runs.
      if (entries_[index].owner == nullptr) continue;
      const Callback callback = entries_[index].callback;
      callback(args...);
    }
  }

  std::size_t size() const noexcept {
    std::size_t live = 0;
    for (const Entry& entry : entries_) live += entry.owner != nullptr;
    return live;
  }

 private:
  struct Entry {
    const void* owner;
    Callback callback;
  };

  void compact() {
    std::erase_if(entries_, [](const Entry& entry) { return entry.owner == nullptr; });
  }

  std::vector<Entry> entries_;
  int depth_ = 0;
};

}  // namespace Event
