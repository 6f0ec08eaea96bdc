#include "edit/Object.h"

#include <algorithm>
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

std::int32_t Object::sectionIndex(std::int32_t frame) const noexcept {
  // In 64 bits: a frame far before the start must not wrap around to a large offset.
  const std::int64_t offset = std::int64_t{frame} - start;
  const auto found = std::upper_bound(sections.begin(), sections.end(), offset,
                                      [](std::int64_t wanted, std::int32_t point) { return wanted < point; });
  return static_cast<std::int32_t>(found - sections.begin());
}

std::int32_t Object::sectionLength(std::int32_t index) const noexcept {
  const auto last = static_cast<std::int32_t>(sections.size());
  if (index < 0 || index > last) return 0;
  if (last == 0) return end - start;
  if (index == 0) return sections.front();
  if (index == last) return end - sections.back() - start;
  return sections[static_cast<std::size_t>(index)] - sections[static_cast<std::size_t>(index - 1)];
}

bool Object::canAddSection(std::int32_t frame) const noexcept {
  const auto last = static_cast<std::int32_t>(sections.size());
  for (std::int32_t index = sectionIndex(frame); index <= last; ++index) {
    if (sectionLength(index) >= 2) return true;
  }
  return false;
}

bool Object::canAddSectionExact(std::int32_t frame) const noexcept {
  const std::int32_t index = sectionIndex(frame);
  const std::int64_t into = std::int64_t{frame} - sectionBegin(index);
  return into >= 1 && into < sectionLength(index);
}

std::int32_t Object::controlRange() const {
  const ControlRangeReader& reader = controlRangeReader();
  return reader ? reader(*this) : 0;
}

void Object::setControlRangeReader(ControlRangeReader reader) { controlRangeReader() = std::move(reader); }

}  // namespace Edit
