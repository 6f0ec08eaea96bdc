#include "edit/Group.h"

#include "edit/Object.h"

namespace Edit {

void Group::join(const std::shared_ptr<Group>& group, Object& object) {
  if (object.group == group) return;
  leave(object);
  if (!group) return;
  group->members_.insert(&object);
  object.group = group;
}

void Group::leave(Object& object) {
  if (!object.group) return;
  // The object may hold the last reference to its group: keep it alive until the
  // member set has been changed.
  const std::shared_ptr<Group> group = std::move(object.group);
  group->members_.erase(&object);
}

}  // namespace Edit
