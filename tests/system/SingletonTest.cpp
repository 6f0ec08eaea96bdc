#include <gtest/gtest.h>

#include "system/Exception.h"
#include "system/Singleton.h"

namespace {

struct Counters {
  int constructed = 0;
  int destroyed = 0;
  int windowsCreated = 0;
};
Counters counters;

class ContentUnderTest {
 public:
  static constexpr const char* kClassName = "Component::EditComponent";
  ContentUnderTest() { ++counters.constructed; }
  ~ContentUnderTest() { ++counters.destroyed; }
  void createWindow(bool recreated) { counters.windowsCreated += recreated ? 1 : 100; }
};

using Content = System::Singleton<ContentUnderTest>;

TEST(Singleton, LivesWhileCounted) {
  counters = {};
  ContentUnderTest* first = Content::acquire();
  EXPECT_EQ(Content::acquire(), first);
  Content::release();
  EXPECT_EQ(Content::get(), first);
  EXPECT_EQ(counters.destroyed, 0);
  Content::release();
  EXPECT_EQ(Content::get(), nullptr);
  EXPECT_EQ(counters.constructed, 1);
  EXPECT_EQ(counters.destroyed, 1);
}

TEST(Singleton, RecreateBeforeCreationThrowsAndChangesNothing) {
  counters = {};
  try {
    Content::recreateInstance();
    FAIL() << "expected an exception";
  } catch (const System::NoteException& e) {
    EXPECT_STREQ(e.what(),
                 "singleton instance not created.\n\n[Place]\n"
                 "System::Singleton<class Component::EditComponent>::recreateInstance()");
  }
  EXPECT_EQ(Content::get(), nullptr);
  EXPECT_EQ(counters.constructed, 0);
}

TEST(Singleton, RecreateKeepsTheCountAndBuildsTheWindow) {
  counters = {};
  Content::acquire();
  Content::acquire();
  Content::recreateInstance();
  EXPECT_EQ(counters.constructed, 2);
  EXPECT_EQ(counters.destroyed, 1);
  EXPECT_EQ(counters.windowsCreated, 1);
  EXPECT_EQ(Content::count(), 2);
  Content::release();
  Content::release();
  EXPECT_EQ(Content::get(), nullptr);
}

}  // namespace
