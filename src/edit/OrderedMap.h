// A hash map that iterates in insertion order, for the project's scenes and plug-in
// data, whose order of insertion is the order of the file. Erasing keeps the order of
// the rest. Not synchronised: the model's lock guards it like any other field.
#pragma once

#include <cstddef>
#include <iterator>
#include <list>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace Edit {

template <class Key, class Value>
class OrderedMap {
 public:
  using Entry = std::pair<const Key, Value>;

  OrderedMap() = default;
  OrderedMap(const OrderedMap&) = delete;
  OrderedMap& operator=(const OrderedMap&) = delete;

  Value* find(const Key& key) {
    const auto found = index_.find(key);
    return found == index_.end() ? nullptr : &found->second->second;
  }
  const Value* find(const Key& key) const { return const_cast<OrderedMap*>(this)->find(key); }
  bool contains(const Key& key) const { return index_.contains(key); }

  // An existing key keeps its value; the flag tells whether the entry is new.
  template <class... Args>
  std::pair<Value*, bool> tryEmplace(const Key& key, Args&&... args) {
    if (Value* existing = find(key)) return {existing, false};
    entries_.emplace_back(std::piecewise_construct, std::forward_as_tuple(key),
                          std::forward_as_tuple(std::forward<Args>(args)...));
    const auto entry = std::prev(entries_.end());
    index_.emplace(key, entry);
    return {&entry->second, true};
  }

  bool erase(const Key& key) {
    const auto found = index_.find(key);
    if (found == index_.end()) return false;
    entries_.erase(found->second);
    index_.erase(found);
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
  std::unordered_map<Key, typename std::list<Entry>::iterator> index_;
};

}  // namespace Edit
