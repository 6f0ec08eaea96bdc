// The labels of a choice: keys in order, and the way back from a label to its key.
// Lists made at run time (scripts, the figure folder) are shared by the items that show
// them, which keeps them alive as long as an item needs them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Effect {

class SelectList {
 public:
  SelectList() = default;
  // Keys 0, 1, 2, ... in the order of `labels`.
  explicit SelectList(const std::vector<std::wstring>& labels);
  static std::shared_ptr<const SelectList> make(const std::vector<std::wstring>& labels) {
    return std::make_shared<const SelectList>(labels);
  }

  void add(std::int32_t key, std::wstring label);

  bool empty() const noexcept { return labels_.empty(); }
  std::size_t size() const noexcept { return labels_.size(); }
  const std::map<std::int32_t, std::wstring>& labels() const noexcept { return labels_; }
  bool contains(std::int32_t key) const { return labels_.count(key) != 0; }
  // Empty for a key the list does not hold.
  std::optional<std::wstring> label(std::int32_t key) const;
  std::optional<std::int32_t> key(std::wstring_view label) const;
  // The smallest key, or 0 for an empty list.
  std::int32_t firstKey() const noexcept { return labels_.empty() ? 0 : labels_.begin()->first; }

 private:
  std::map<std::int32_t, std::wstring> labels_;
  std::unordered_map<std::wstring, std::int32_t> keys_;
};

}  // namespace Effect
