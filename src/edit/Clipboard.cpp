#include "edit/Clipboard.h"

#include <utility>

namespace Edit {

void Clipboard::set(std::vector<std::shared_ptr<Object>> copies) {
  objects_ = std::move(copies);
  extent_ = SelectionExtent::of(objects_);
}

void Clipboard::add(std::shared_ptr<Object> copy) {
  objects_.push_back(std::move(copy));
  extent_ = SelectionExtent::of(objects_);
}

void Clipboard::clear() {
  objects_.clear();
  extent_ = SelectionExtent{};
}

}  // namespace Edit
