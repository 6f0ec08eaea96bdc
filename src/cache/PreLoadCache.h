// The template of every cache of decoded media: results kept in memory up to a limit in
// bytes, the least recently used dropped first, and loads that run on a worker thread of
// their own, so that the render threads can ask ahead (preload) and ask again later
// (get) without loading anything twice. Any thread may call every operation; stop()
// belongs to the owner. The one mutex is never held across a load, a wait or a post.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "sync/Event.h"
#include "system/Log.h"
#include "system/OrderedMap.h"
#include "worker/WorkerThread.h"

namespace System {

template <class Key, class Value>
class PreLoadCache {
 public:
  // Delivers its result through put(); a loader that puts nothing gives an empty result.
  using Loader = std::function<void()>;

  struct Statistics {
    std::uint64_t limit = 0;   // bytes
    std::uint64_t total = 0;   // bytes held
    std::size_t count = 0;     // entries held
    std::uint64_t hits = 0;    // lookups answered from the list
    std::uint64_t misses = 0;  // lookups that were not
    std::uint64_t loads = 0;   // loaders handed to the worker
  };

  // At most `queueBound` loads wait for the worker; asking ahead beyond that blocks the
  // caller. The limit starts at 0: nothing is kept until setLimit.
  explicit PreLoadCache(std::int32_t queueBound) : worker_("PreLoadCache") { worker_.setMax(queueBound); }
  ~PreLoadCache() { stop(); }
  PreLoadCache(const PreLoadCache&) = delete;
  PreLoadCache& operator=(const PreLoadCache&) = delete;

  // The value of `key`, loading it through `loader` on the worker when it is neither listed
  // nor under way, and waiting for a load under way. With an empty loader the caller
  // promises to put() the value itself: it gets an empty pointer at once, and whoever asks
  // meanwhile waits for the put. Empty when the load failed or the cache has stopped.
  std::shared_ptr<Value> get(const Key& key, const Loader& loader) {
    std::shared_ptr<LoadTask> task;
    bool post = false;
    {
      std::lock_guard lock(mutex_);
      if (std::shared_ptr<Value> hit = touch(key)) {
        ++hits_;
        return hit;
      }
      ++misses_;
      if (stopped_) return nullptr;
      auto [entry, inserted] = tasks_.tryEmplace(key);
      if (inserted) {
        entry->value = std::make_shared<LoadTask>();
        if (!loader) return nullptr;
        post = true;
        ++loads_;
      }
      task = entry->value;
    }
    // Outside the mutex: a full queue blocks here until the worker takes a load.
    if (post) postLoad(key, task, loader);
    task->done.wait();
    return task->result;
  }

  // Starts a load unless the key is listed or under way; returns at once.
  void preload(const Key& key, Loader loader) {
    if (!loader) return;
    std::shared_ptr<LoadTask> task;
    {
      std::lock_guard lock(mutex_);
      if (stopped_ || index_.contains(key)) return;
      auto [entry, inserted] = tasks_.tryEmplace(key);
      if (!inserted) return;
      task = entry->value = std::make_shared<LoadTask>();
      ++loads_;
    }
    postLoad(key, std::move(task), std::move(loader));
  }

  // Lists `value` at the front and lets the waiters of a load of `key` go with it. A value
  // larger than the limit is dropped again at once; its waiters still get it. An empty
  // value does nothing.
  void put(const Key& key, std::shared_ptr<Value> value, std::uint64_t size) {
    if (!value) return;
    std::vector<std::shared_ptr<Value>> dropped;  // freed after the mutex is released
    std::lock_guard lock(mutex_);
    insert(key, value, size, dropped);
    if (auto* entry = tasks_.find(key)) {
      entry->value->result = std::move(value);
      entry->value->done.set();
      tasks_.erase(key);
    }
  }

  // The listed value, moved to the front; never blocks and starts nothing.
  std::shared_ptr<Value> find(const Key& key) {
    std::lock_guard lock(mutex_);
    std::shared_ptr<Value> hit = touch(key);
    ++(hit ? hits_ : misses_);
    return hit;
  }

  // The listed value, moved to the front; else the result of a load under way, waited
  // for; else empty. Unlike get it never makes a task, so it cannot leave a promise behind
  // that nobody keeps.
  std::shared_ptr<Value> await(const Key& key) {
    std::shared_ptr<LoadTask> task;
    {
      std::lock_guard lock(mutex_);
      if (std::shared_ptr<Value> hit = touch(key)) {
        ++hits_;
        return hit;
      }
      ++misses_;
      const auto* entry = tasks_.find(key);
      if (!entry) return nullptr;
      task = entry->value;
    }
    task->done.wait();
    return task->result;
  }

  // Makes a promise of `key`, as get with an empty loader does, unless the key is listed or
  // under way. True when this call made it: the caller must end it with put or abandon.
  // Never blocks.
  bool promise(const Key& key) {
    std::lock_guard lock(mutex_);
    if (stopped_ || index_.contains(key)) return false;
    auto [entry, inserted] = tasks_.tryEmplace(key);
    if (inserted) entry->value = std::make_shared<LoadTask>();
    return inserted;
  }

  // Ends a promise that will deliver nothing: its waiters get an empty pointer.
  void abandon(const Key& key) {
    std::lock_guard lock(mutex_);
    if (auto* entry = tasks_.find(key)) {
      entry->value->done.set();
      tasks_.erase(key);
    }
  }

  // How many loads are under way or promised.
  std::size_t pending() const {
    std::lock_guard lock(mutex_);
    return tasks_.size();
  }

  // Whether the key is listed or under way; moves nothing.
  bool holds(const Key& key) const {
    std::lock_guard lock(mutex_);
    return index_.contains(key) || tasks_.contains(key);
  }

  void setLimit(std::int32_t megabytes) {
    std::vector<std::shared_ptr<Value>> dropped;
    std::lock_guard lock(mutex_);
    limit_ = megabytes > 0 ? static_cast<std::uint64_t>(megabytes) << 20 : 0;
    trim(dropped);
  }

  // Drops every listed entry whose key `predicate` accepts. Loads under way stay.
  template <class Predicate>
  void eraseIf(Predicate predicate) {
    std::vector<std::shared_ptr<Value>> dropped;
    std::lock_guard lock(mutex_);
    for (auto entry = index_.begin(); entry != index_.end();) {
      if (!predicate(entry->first)) {
        ++entry;
        continue;
      }
      total_ -= entry->second->size;
      dropped.push_back(std::move(entry->second->value));
      list_.erase(entry->second);
      entry = index_.erase(entry);
    }
  }

  // Returns when every load posted before it has run. Not after stop().
  void wait() { worker_.wait(); }

  // Stops the worker (a load that runs finishes, queued loads are dropped) and lets every
  // waiter go with what its task holds, usually nothing. From then on nothing is loaded;
  // what is listed stays listed.
  void stop() {
    {
      std::lock_guard lock(mutex_);
      stopped_ = true;
    }
    worker_.stop();
    std::lock_guard lock(mutex_);
    for (auto& entry : tasks_) entry.value->done.set();
    tasks_.clear();
  }

  std::uint64_t limit() const {
    std::lock_guard lock(mutex_);
    return limit_;
  }
  std::uint64_t total() const {
    std::lock_guard lock(mutex_);
    return total_;
  }
  std::size_t count() const {
    std::lock_guard lock(mutex_);
    return list_.size();
  }
  Statistics statistics() const {
    std::lock_guard lock(mutex_);
    return {limit_, total_, list_.size(), hits_, misses_, loads_};
  }

 private:
  struct LoadTask {
    Sync::Event done;
    // Written under the mutex before `done` is set, read only after it.
    std::shared_ptr<Value> result;
  };
  struct Record {
    std::uint64_t size;
    std::shared_ptr<Value> value;
    Key key;
  };
  using List = std::list<Record>;

  void postLoad(const Key& key, std::shared_ptr<LoadTask> task, Loader loader) {
    worker_.post(0, [this, key, task = std::move(task), loader = std::move(loader)] { loadTask(key, task, loader); });
  }

  // On the worker. A loader that throws is a failed load and no more: the caller of get
  // draws nothing, as for a file that cannot be read.
  void loadTask(const Key& key, const std::shared_ptr<LoadTask>& task, const Loader& loader) {
    try {
      loader();
    } catch (const std::exception& failure) {
      Log::warn("System::PreLoadCache::loadTask", "load failed.\n%s", failure.what());
    } catch (...) {
      Log::warn("System::PreLoadCache::loadTask", "load failed.");
    }
    // Whoever sets the event also removes the task, in one hold of the mutex: a load that
    // delivered is done here without taking the mutex again from the caller it just woke.
    if (task->done.isSet()) return;
    std::lock_guard lock(mutex_);
    // A new task of the key may stand in this one's place by now: only this load's own
    // task is ended here.
    const auto* entry = tasks_.find(key);
    if (entry && entry->value == task) {
      task->done.set();
      tasks_.erase(key);
    }
  }

  // Under the mutex: the listed value, moved to the front.
  std::shared_ptr<Value> touch(const Key& key) {
    const auto found = index_.find(key);
    if (found == index_.end()) return nullptr;
    list_.splice(list_.begin(), list_, found->second);
    return found->second->value;
  }

  void insert(const Key& key, std::shared_ptr<Value> value, std::uint64_t size,
              std::vector<std::shared_ptr<Value>>& dropped) {
    if (const auto found = index_.find(key); found != index_.end()) {
      total_ -= found->second->size;
      dropped.push_back(std::move(found->second->value));
      list_.erase(found->second);
      index_.erase(found);
    }
    list_.push_front(Record{size, std::move(value), key});
    index_.emplace(key, list_.begin());
    total_ += size;
    trim(dropped);
  }

  // A value in use lives on through its shared pointer: the limit bounds what the cache
  // holds, not what exists.
  void trim(std::vector<std::shared_ptr<Value>>& dropped) {
    while (total_ > limit_ && !list_.empty()) {
      Record& last = list_.back();
      total_ -= last.size;
      index_.erase(last.key);
      dropped.push_back(std::move(last.value));
      list_.pop_back();
    }
  }

  Worker::WorkerThread worker_;
  mutable std::mutex mutex_;
  // Loads under way or promised, in the order they were asked for.
  OrderedMap<Key, std::shared_ptr<LoadTask>> tasks_;
  List list_;  // most recently used first
  std::unordered_map<Key, typename List::iterator> index_;
  std::uint64_t limit_ = 0;
  std::uint64_t total_ = 0;
  bool stopped_ = false;
  std::uint64_t hits_ = 0;
  std::uint64_t misses_ = 0;
  std::uint64_t loads_ = 0;
};

}  // namespace System
