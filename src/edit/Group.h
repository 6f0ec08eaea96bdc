// A set of objects that are selected and moved together. The group knows its members
// by plain pointer and each member holds the group by shared_ptr, so a group lives as
// long as one member does. Main thread only; render workers never look at groups.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_set>

namespace Edit {

class Object;

class Group {
 public:
  // An object belongs to at most one group: joining takes it out of the one it was in.
  static void join(const std::shared_ptr<Group>& group, Object& object);
  static void leave(Object& object);

  const std::unordered_set<Object*>& members() const noexcept { return members_; }
  bool contains(const Object& object) const { return members_.contains(const_cast<Object*>(&object)); }
  std::size_t size() const noexcept { return members_.size(); }

 private:
  std::unordered_set<Object*> members_;
};

}  // namespace Edit
