#include "effect/item/SelectList.h"

namespace Effect {

SelectList::SelectList(const std::vector<std::wstring>& labels) {
  for (std::size_t i = 0; i < labels.size(); ++i) add(static_cast<std::int32_t>(i), labels[i]);
}

void SelectList::add(std::int32_t key, std::wstring label) {
  keys_.emplace(label, key);
  labels_[key] = std::move(label);
}

std::optional<std::wstring> SelectList::label(std::int32_t key) const {
  const auto found = labels_.find(key);
  if (found == labels_.end()) return std::nullopt;
  return found->second;
}

std::optional<std::int32_t> SelectList::key(std::wstring_view label) const {
  const auto found = keys_.find(std::wstring(label));
  if (found == keys_.end()) return std::nullopt;
  return found->second;
}

}  // namespace Effect
