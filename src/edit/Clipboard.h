// The objects that copy and cut took, with their extent, waiting to be pasted. Its
// copies stand on no row and it never leaves the process; the edit service keeps one,
// which a new or loaded project empties and a change of scene keeps. Main thread only.
#pragma once

#include <memory>
#include <vector>

#include "edit/SelectionExtent.h"

namespace Edit {

class Object;

class Clipboard {
 public:
  const std::vector<std::shared_ptr<Object>>& objects() const noexcept { return objects_; }
  // The copies reduced to one span per row, as the paste tests them.
  const SelectionExtent& extent() const noexcept { return extent_; }
  bool empty() const noexcept { return objects_.empty(); }

  // A copy replaces the whole content; a range cut adds its pieces one by one.
  void set(std::vector<std::shared_ptr<Object>> copies);
  void add(std::shared_ptr<Object> copy);
  void clear();

 private:
  std::vector<std::shared_ptr<Object>> objects_;
  SelectionExtent extent_;
};

}  // namespace Edit
