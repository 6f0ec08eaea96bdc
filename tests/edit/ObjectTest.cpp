#include <gtest/gtest.h>

#include <memory>

#include "edit/Group.h"
#include "edit/Object.h"

namespace {

using Edit::Group;
using Edit::Object;

TEST(Object, SectionBeginsAreOffsetsFromStartUpToEndPlusOne) {
  Object object;
  object.start = 10;
  object.end = 29;
  object.sections = {5, 12};
  EXPECT_EQ(object.sectionCount(), 3);
  EXPECT_EQ(object.sectionBegin(0), 10);
  EXPECT_EQ(object.sectionBegin(2), 22);
  EXPECT_EQ(object.sectionBegin(3), 30);
  EXPECT_GT(Object().id(), object.id());
}

TEST(Group, ObjectBelongsToOneGroupAndLeavesItWhenDestroyed) {
  auto first = std::make_shared<Group>();
  std::weak_ptr<Group> second;
  Object kept;
  {
    auto group = std::make_shared<Group>();
    second = group;
    auto doomed = std::make_shared<Object>();
    Group::join(first, kept);
    Group::join(group, *doomed);
    Group::join(group, kept);  // leaves `first`
  }
  EXPECT_EQ(first->size(), 0u);
  ASSERT_FALSE(second.expired());  // its last member holds it
  EXPECT_EQ(second.lock()->size(), 1u);
  EXPECT_TRUE(second.lock()->contains(kept));
  Group::leave(kept);
  EXPECT_TRUE(second.expired());
}

}  // namespace
