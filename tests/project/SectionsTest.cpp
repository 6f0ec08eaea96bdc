// Section points and their key values: the arithmetic of positions, adding and
// deleting points, and splitting an object so that both parts show at the cut what the
// object showed there.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/EditService.h"
#include "edit/EffectManager.h"
#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "edit/ObjectSections.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "system/IniFile.h"

namespace {

using Edit::LayerObjectManager;
using Edit::Object;
using Edit::ObjectSections;
using Effect::EffectItemNumber;
using Values = std::vector<std::int32_t>;
using Offsets = std::vector<std::int32_t>;
using Span = std::pair<std::int32_t, std::int32_t>;
// A frame or index and what a query answers there.
template <class T>
using Answers = std::vector<std::pair<std::int32_t, T>>;

std::shared_ptr<Object> spanning(std::int32_t start, std::int32_t end, Offsets sections = {}) {
  auto object = std::make_shared<Object>();
  object->start = start;
  object->end = end;
  object->sections = std::move(sections);
  return object;
}

TEST(SectionArithmetic, IndexLengthAndRoomOfAnObjectWithTwoPoints) {
  // Points at 110 and 130; the end is 199.
  const auto object = spanning(100, 199, {10, 30});
  for (const auto& [frame, index] : Answers<std::int32_t>{{50, 0}, {109, 0}, {110, 1}, {129, 1}, {130, 2}, {400, 2}}) {
    EXPECT_EQ(object->sectionIndex(frame), index) << "frame " << frame;
  }
  // The last section counts to the end: 199 - 130, not 200 - 130.
  for (const auto& [index, length] : Answers<std::int32_t>{{0, 10}, {1, 20}, {2, 69}, {3, 0}, {-1, 0}}) {
    EXPECT_EQ(object->sectionLength(index), length) << "section " << index;
  }
  EXPECT_EQ(spanning(7, 20)->sectionLength(0), 13);
  // A point stands strictly inside its section: not on a point (110), not on the start
  // or the end (199), nor outside the object.
  for (const auto& [frame, can] : Answers<bool>{{100, false},
                                                {101, true},
                                                {110, false},
                                                {129, true},
                                                {198, true},
                                                {199, false},
                                                {99, false},
                                                {250, false}}) {
    EXPECT_EQ(object->canAddSectionExact(frame), can) << "frame " << frame;
  }

  // One frame: no section has room for a point.
  const auto single = spanning(5, 5);
  EXPECT_EQ(single->sectionLength(0), 0);
  EXPECT_FALSE(single->canAddSection(5));
  EXPECT_FALSE(single->canAddSectionExact(5));
}

TEST(SectionArithmetic, CanAddSectionLooksOnToLaterSections) {
  // Sections of length 1, 1, 1 and 2: only the last takes a point, at frame 4.
  const auto roomy = spanning(0, 5, {1, 2, 3});
  EXPECT_TRUE(roomy->canAddSection(0));
  EXPECT_TRUE(roomy->canAddSection(3));
  for (std::int32_t frame = 0; frame <= 4; ++frame) EXPECT_EQ(roomy->canAddSectionExact(frame), frame == 4) << frame;

  const auto full = spanning(0, 4, {1, 2, 3});
  for (std::int32_t frame = 0; frame <= 4; ++frame) EXPECT_FALSE(full->canAddSection(frame)) << frame;
}

class SectionsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new Effect::EffectService(); }
  static void TearDownTestSuite() { delete std::exchange(service, nullptr); }

  // A text object with a blur whose range runs straight through `values`.
  std::shared_ptr<Object> blurred(Span span, Offsets sections, const Values& values) {
    std::shared_ptr<Object> object = rows.createEmptyObject(0, span.first, span.second);
    object->sections = std::move(sections);
    Edit::EffectManager chain(*object, *service);
    chain.addEffect(L"テキスト");
    chain.addEffect(L"ぼかし");
    EffectItemNumber& range = rangeOf(*object);
    range.setMovement(Effect::findMovement(L"直線移動"), static_cast<std::int32_t>(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i) range.setValue(static_cast<std::int32_t>(i), values[i]);
    return object;
  }

  static EffectItemNumber& rangeOf(const Object& object) {
    return object.effects.at(2)->item<EffectItemNumber>(L"範囲");
  }

  static inline Effect::EffectService* service = nullptr;
  LayerObjectManager rows;
};

TEST_F(SectionsTest, ExactTestAgreesWithTheProjectReader) {
  // The reader takes a further point at `frame` into an object 10..40 with points at 20
  // and 25 exactly when the object could take one there.
  const auto object = spanning(10, 40, {10, 15});
  for (std::int32_t frame = 5; frame <= 45; ++frame) {
    System::IniFile ini;
    ini.loadMemory(
        "[project]\r\n[scene.0]\r\nscene=0\r\nvideo.width=64\r\nvideo.height=64\r\nvideo.rate=30\r\n"
        "video.scale=1\r\n[0]\r\nlayer=0\r\nframe=10,20,25," +
        std::to_string(frame) + ",40\r\n[0.0]\r\neffect.name=テキスト\r\n");
    Edit::EditService edit;
    Edit::ProjectFile::LoadResult result;
    edit.replaceProject([&](Edit::Project& project) { Edit::ProjectFile::read(project, ini, {}, *service, result); });
    const bool loaded = result.outcome == Edit::ProjectFile::LoadResult::Outcome::Loaded;
    EXPECT_EQ(loaded, object->canAddSectionExact(frame)) << "frame " << frame;
  }
}

TEST_F(SectionsTest, AddSectionPutsThePointWhereASectionHasRoom) {
  // The range runs 0..100 over 0..100, so it shows the frame number.
  std::shared_ptr<Object> object = blurred({0, 100}, {}, {0, 100});
  ObjectSections::addSection(*object, 30, ObjectSections::keyValuesAt(*object, 30));
  EXPECT_EQ(object->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*object).values(), (Values{0, 30, 100}));

  // Without a value the key is the item's default (5); a number that does not move
  // keeps its one value.
  ObjectSections::addSection(*object, 60, {});
  EXPECT_EQ(object->sections, (Offsets{30, 60}));
  EXPECT_EQ(rangeOf(*object).values(), (Values{0, 30, 5, 100}));
  EXPECT_EQ(object->effects.at(2)->item<EffectItemNumber>(L"縦横比").valueCount(), 1);

  // On a point the new one goes one frame further.
  ObjectSections::addSection(*object, 30, {});
  EXPECT_EQ(object->sections, (Offsets{30, 31, 60}));
  // At the end it goes one frame back, since a point stays below the end.
  ObjectSections::addSection(*object, 100, {});
  EXPECT_EQ(object->sections, (Offsets{30, 31, 60, 99}));
  EXPECT_EQ(rangeOf(*object).valueCount(), 6);

  // Past sections too short, or nowhere when every section is one frame long.
  const struct {
    Span span;
    Offsets sections;
    Offsets expected;
  } plain[] = {{{0, 10}, {1, 2}, {1, 2, 3}}, {{0, 2}, {1}, {1}}, {{4, 4}, {}, {}}};
  for (const auto& c : plain) {
    const auto target = spanning(c.span.first, c.span.second, c.sections);
    ObjectSections::addSection(*target, c.span.first, {});
    EXPECT_EQ(target->sections, c.expected) << c.span.first << ".." << c.span.second;
  }
}

TEST_F(SectionsTest, DeleteSectionTakesThePointAndItsKey) {
  std::shared_ptr<Object> object = blurred({0, 100}, {30, 60}, {0, 30, 5, 100});
  ObjectSections::deleteSection(*object, 0);
  ObjectSections::deleteSection(*object, 3);
  EXPECT_EQ(object->sections, (Offsets{30, 60}));
  ObjectSections::deleteSection(*object, 2);
  EXPECT_EQ(object->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*object).values(), (Values{0, 30, 100}));
}

TEST_F(SectionsTest, SplitKeepsTheValuesAtTheCut) {
  struct Part {
    Span span;
    Offsets sections;
    Values values;
  };
  // Each object's range shows the frame number, and so must each part's.
  const struct {
    Part object;
    std::int32_t cut;
    Part left, right;
  } cases[] = {
      // The point at 60 stays with the right part, one frame after its new start.
      {{{0, 100}, {30, 60}, {0, 30, 60, 100}}, 59, {{0, 58}, {30}, {0, 30, 58}}, {{59, 100}, {1}, {59, 60, 100}}},
      // A point at the cut would be the left part's end and is the right part's start.
      {{{0, 100}, {30, 60}, {0, 30, 60, 100}}, 60, {{0, 59}, {30}, {0, 30, 59}}, {{60, 100}, {}, {60, 100}}},
      {{{0, 100}, {30, 60}, {0, 30, 60, 100}}, 61, {{0, 60}, {30}, {0, 30, 60}}, {{61, 100}, {}, {61, 100}}},
      // At the end the right part is one frame long and shows what the last frame showed.
      {{{10, 110}, {20}, {10, 30, 110}}, 110, {{10, 109}, {20}, {10, 30, 109}}, {{110, 110}, {}, {110, 110}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "cut at " << c.cut);
    std::shared_ptr<Object> object = blurred(c.object.span, c.object.sections, c.object.values);
    object->clipping = true;
    object->camera = false;
    auto left = rows.createEmptyObject(0, 0, 0);
    auto right = rows.createEmptyObject(0, 0, 0);
    ASSERT_TRUE(ObjectSections::split(*object, c.cut, *left, *right, rows, *service));
    for (const auto& [part, expected] : {std::pair{left, c.left}, std::pair{right, c.right}}) {
      EXPECT_EQ((Span{part->start, part->end}), expected.span);
      EXPECT_EQ(part->sections, expected.sections);
      EXPECT_EQ(rangeOf(*part).values(), expected.values);
      for (std::int32_t frame = part->start; frame <= part->end; ++frame) {
        EXPECT_DOUBLE_EQ(rangeOf(*part).getValueAt(Effect::ItemContext::at(*part, frame)), frame) << frame;
      }
      EXPECT_EQ(part->layer, 0);
      EXPECT_TRUE(part->clipping);
      EXPECT_FALSE(part->camera);
      ASSERT_EQ(part->effects.size(), 3u);
      EXPECT_NE(part->effects[2], object->effects[2]);
    }
    // The object itself is left as it was.
    EXPECT_EQ(object->sections, c.object.sections);
    EXPECT_EQ(rangeOf(*object).values(), c.object.values);
  }
}

TEST_F(SectionsTest, SplitNeedsACutAfterTheStartAndNotPastTheEnd) {
  std::shared_ptr<Object> object = blurred({10, 110}, {20}, {10, 30, 110});
  auto left = rows.createEmptyObject(0, 0, 0);
  auto right = rows.createEmptyObject(0, 0, 0);
  EXPECT_FALSE(ObjectSections::split(*object, 10, *left, *right, rows, *service));
  EXPECT_FALSE(ObjectSections::split(*object, 111, *left, *right, rows, *service));
  EXPECT_TRUE(left->effects.empty());
  EXPECT_EQ(left->end, 0);
}

}  // namespace
