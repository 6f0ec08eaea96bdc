#include "edit/Object.h"

#include <atomic>
#include <utility>

#include "edit/Group.h"

namespace Edit {

namespace {

// Objects are made on the main thread; the counter is atomic only so that a stray
// construction elsewhere can never hand out an id twice.
std::atomic<std::uint64_t> lastObjectId{0};

ControlRangeReader& controlRangeReader() {
  static ControlRangeReader reader;
  return reader;
}

}  // namespace

Object::Object() : id_(lastObjectId.fetch_add(1, std::memory_order_relaxed) + 1) {}

// A group holds plain pointers to its members, so a member that goes takes itself out.
Object::~Object() { Group::leave(*this); }

std::int32_t Object::sectionBegin(std::int32_t index) const noexcept {
  if (index <= 0) return start;
  if (index > static_cast<std::int32_t>(sections.size())) return end + 1;
  return start + sections[static_cast<std::size_t>(index - 1)];
}

std::int32_t Object::controlRange() const {
  const ControlRangeReader& reader = controlRangeReader();
  return reader ? reader(*this) : 0;
}

void Object::setControlRangeReader(ControlRangeReader reader) { controlRangeReader() = std::move(reader); }

}  // namespace Edit
