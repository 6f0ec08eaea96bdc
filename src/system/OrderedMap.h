// A hash map that iterates in insertion order, which is the order of the files the
// program reads and writes: ini sections and keys, scenes, plug-in data. Entries never
// move, so pointers to them stay valid while the map lives; erasing keeps the order of
// the rest. String keys are looked up through views, without building a string.
// Not synchronised: its owner guards it.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace System {

template <class Key, class Value>
class OrderedMap {
 public:
  struct Entry {
    template <class... Args>
    explicit Entry(const auto& key, Args&&... args) : key(key), value(std::forward<Args>(args)...) {}
    const Key key;
    Value value;
  };
  // What lookups take: a view for string keys, the key itself otherwise.
  using KeyView = std::conditional_t<std::is_same_v<Key, std::string>, std::string_view,
                                     std::conditional_t<std::is_same_v<Key, std::wstring>, std::wstring_view, Key>>;

  OrderedMap() = default;
  OrderedMap(const OrderedMap&) = delete;
  OrderedMap& operator=(const OrderedMap&) = delete;

  Entry* find(KeyView key) {
    const auto found = index_.find(key);
    return found == index_.end() ? nullptr : &*found->second;
  }
  const Entry* find(KeyView key) const { return const_cast<OrderedMap*>(this)->find(key); }
  bool contains(KeyView key) const { return index_.contains(key); }

  // An existing key keeps its entry and its value; `inserted` tells which happened.
  template <class... Args>
  std::pair<Entry*, bool> tryEmplace(KeyView key, Args&&... args) {
    if (Entry* existing = find(key)) return {existing, false};
    entries_.emplace_back(key, std::forward<Args>(args)...);
    const auto entry = std::prev(entries_.end());
    index_.emplace(KeyView(entry->key), entry);
    return {&*entry, true};
  }

  bool erase(KeyView key) {
    const auto found = index_.find(key);
    if (found == index_.end()) return false;
    const auto entry = found->second;
    index_.erase(found);  // first: its key is a view into the entry
    entries_.erase(entry);
    return true;
  }

  void clear() noexcept {
    index_.clear();
    entries_.clear();
  }

  std::size_t size() const noexcept { return entries_.size(); }
  bool empty() const noexcept { return entries_.empty(); }
  auto begin() noexcept { return entries_.begin(); }
  auto end() noexcept { return entries_.end(); }
  auto begin() const noexcept { return entries_.begin(); }
  auto end() const noexcept { return entries_.end(); }

 private:
  std::list<Entry> entries_;
  // Keys are views into `entries_` for string keys, which a list never moves.
  std::unordered_map<KeyView, typename std::list<Entry>::iterator> index_;
};

}  // namespace System
