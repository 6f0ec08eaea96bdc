// Section points and their key values: the arithmetic of positions, adding and
// deleting points, and splitting an object so that both parts show at the cut what the
// object showed there.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
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

std::shared_ptr<Object> spanning(std::int32_t start, std::int32_t end, Offsets sections = {}) {
  auto object = std::make_shared<Object>();
  object->start = start;
  object->end = end;
  object->sections = std::move(sections);
  return object;
}

TEST(SectionArithmetic, IndexAndLengthCountTheLastSectionToTheEnd) {
  // Points at 110 and 130; the end is 199.
  const auto object = spanning(100, 199, {10, 30});
  EXPECT_EQ(object->sectionIndex(50), 0);
  EXPECT_EQ(object->sectionIndex(109), 0);
  EXPECT_EQ(object->sectionIndex(110), 1);
  EXPECT_EQ(object->sectionIndex(129), 1);
  EXPECT_EQ(object->sectionIndex(130), 2);
  EXPECT_EQ(object->sectionIndex(400), 2);
  EXPECT_EQ(object->sectionLength(0), 10);
  EXPECT_EQ(object->sectionLength(1), 20);
  EXPECT_EQ(object->sectionLength(2), 69);  // 199 - 130, not 200 - 130
  EXPECT_EQ(object->sectionLength(3), 0);
  EXPECT_EQ(object->sectionLength(-1), 0);
  EXPECT_EQ(spanning(7, 20)->sectionLength(0), 13);
}

TEST(SectionArithmetic, APointStandsStrictlyInsideItsSection) {
  const auto object = spanning(100, 199, {10, 30});
  EXPECT_FALSE(object->canAddSectionExact(100));
  EXPECT_TRUE(object->canAddSectionExact(101));
  EXPECT_FALSE(object->canAddSectionExact(110));  // a point already
  EXPECT_TRUE(object->canAddSectionExact(129));
  EXPECT_TRUE(object->canAddSectionExact(198));
  EXPECT_FALSE(object->canAddSectionExact(199));  // a point must stay below the end
  EXPECT_FALSE(object->canAddSectionExact(99));
  EXPECT_FALSE(object->canAddSectionExact(250));

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
  for (std::int32_t frame = 0; frame <= 3; ++frame) EXPECT_FALSE(roomy->canAddSectionExact(frame)) << frame;
  EXPECT_TRUE(roomy->canAddSectionExact(4));

  const auto full = spanning(0, 4, {1, 2, 3});
  for (std::int32_t frame = 0; frame <= 4; ++frame) EXPECT_FALSE(full->canAddSection(frame)) << frame;
}

class SectionsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new Effect::EffectService(); }
  static void TearDownTestSuite() {
    delete service;
    service = nullptr;
  }

  // A text object with a blur whose range runs straight through `values`.
  static std::shared_ptr<Object> blurred(LayerObjectManager& rows, std::int32_t start, std::int32_t end,
                                         Offsets sections, const Values& values) {
    std::shared_ptr<Object> object = rows.createEmptyObject(0, start, end);
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
  static double rangeAt(const Object& object, std::int32_t frame) {
    return rangeOf(object).getValueAt(Effect::ItemContext::at(object, frame));
  }

  static Effect::EffectService* service;
  LayerObjectManager rows;
};

Effect::EffectService* SectionsTest::service = nullptr;

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
  std::shared_ptr<Object> object = blurred(rows, 0, 100, {}, {0, 100});
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
}

TEST_F(SectionsTest, AddSectionWalksPastSectionsTooShort) {
  const auto object = spanning(0, 10, {1, 2});
  ObjectSections::addSection(*object, 0, {});
  EXPECT_EQ(object->sections, (Offsets{1, 2, 3}));

  // Sections of 1 frame each: nowhere to go.
  const auto full = spanning(0, 2, {1});
  ObjectSections::addSection(*full, 0, {});
  EXPECT_EQ(full->sections, (Offsets{1}));
  const auto single = spanning(4, 4);
  ObjectSections::addSection(*single, 4, {});
  EXPECT_TRUE(single->sections.empty());
}

TEST_F(SectionsTest, DeleteSectionTakesThePointAndItsKey) {
  std::shared_ptr<Object> object = blurred(rows, 0, 100, {30, 60}, {0, 30, 5, 100});
  ObjectSections::deleteSection(*object, 0);
  ObjectSections::deleteSection(*object, 3);
  EXPECT_EQ(object->sections, (Offsets{30, 60}));
  ObjectSections::deleteSection(*object, 2);
  EXPECT_EQ(object->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*object).values(), (Values{0, 30, 100}));
}

TEST_F(SectionsTest, SplitKeepsTheValuesAtTheCut) {
  // Points at 30 and 60 and values that make the range show the frame number.
  std::shared_ptr<Object> object = blurred(rows, 0, 100, {30, 60}, {0, 30, 60, 100});
  object->clipping = true;
  object->camera = false;
  auto left = rows.createEmptyObject(0, 0, 0);
  auto right = rows.createEmptyObject(0, 0, 0);
  ASSERT_TRUE(ObjectSections::split(*object, 59, *left, *right, rows, *service));

  EXPECT_EQ(left->start, 0);
  EXPECT_EQ(left->end, 58);
  EXPECT_EQ(left->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*left).values(), (Values{0, 30, 58}));
  // The point at 60 stays with the right part, one frame after its new start.
  EXPECT_EQ(right->start, 59);
  EXPECT_EQ(right->end, 100);
  EXPECT_EQ(right->sections, (Offsets{1}));
  EXPECT_EQ(rangeOf(*right).values(), (Values{59, 60, 100}));
  for (std::int32_t frame = 0; frame <= 58; ++frame) EXPECT_DOUBLE_EQ(rangeAt(*left, frame), frame);
  for (std::int32_t frame = 59; frame <= 100; ++frame) EXPECT_DOUBLE_EQ(rangeAt(*right, frame), frame);

  for (const auto& part : {left, right}) {
    EXPECT_EQ(part->layer, 0);
    EXPECT_TRUE(part->clipping);
    EXPECT_FALSE(part->camera);
    ASSERT_EQ(part->effects.size(), 3u);
    EXPECT_NE(part->effects[2], object->effects[2]);
  }
  // The object itself is left as it was.
  EXPECT_EQ(object->sections, (Offsets{30, 60}));
  EXPECT_EQ(rangeOf(*object).values(), (Values{0, 30, 60, 100}));
}

TEST_F(SectionsTest, SplitDropsAPointAtTheCutFromBothParts) {
  std::shared_ptr<Object> object = blurred(rows, 0, 100, {30, 60}, {0, 30, 60, 100});
  auto left = rows.createEmptyObject(0, 0, 0);
  auto right = rows.createEmptyObject(0, 0, 0);
  // The point at 60 would be the left part's end and is the right part's start.
  ASSERT_TRUE(ObjectSections::split(*object, 60, *left, *right, rows, *service));
  EXPECT_EQ(left->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*left).values(), (Values{0, 30, 59}));
  EXPECT_TRUE(right->sections.empty());
  EXPECT_EQ(rangeOf(*right).values(), (Values{60, 100}));

  auto left2 = rows.createEmptyObject(0, 0, 0);
  auto right2 = rows.createEmptyObject(0, 0, 0);
  ASSERT_TRUE(ObjectSections::split(*object, 61, *left2, *right2, rows, *service));
  EXPECT_EQ(left2->end, 60);
  EXPECT_EQ(left2->sections, (Offsets{30}));
  EXPECT_EQ(rangeOf(*left2).values(), (Values{0, 30, 60}));
}

TEST_F(SectionsTest, SplitAtTheEdges) {
  std::shared_ptr<Object> object = blurred(rows, 10, 110, {20}, {10, 30, 110});
  auto left = rows.createEmptyObject(0, 0, 0);
  auto right = rows.createEmptyObject(0, 0, 0);
  EXPECT_FALSE(ObjectSections::split(*object, 10, *left, *right, rows, *service));
  EXPECT_FALSE(ObjectSections::split(*object, 111, *left, *right, rows, *service));
  EXPECT_TRUE(left->effects.empty());
  EXPECT_EQ(left->end, 0);

  // At the end the right part is one frame long and shows what the last frame showed.
  ASSERT_TRUE(ObjectSections::split(*object, 110, *left, *right, rows, *service));
  EXPECT_EQ(left->start, 10);
  EXPECT_EQ(left->end, 109);
  EXPECT_EQ(left->sections, (Offsets{20}));
  EXPECT_EQ(rangeOf(*left).values(), (Values{10, 30, 109}));
  EXPECT_EQ(right->start, 110);
  EXPECT_EQ(right->end, 110);
  EXPECT_TRUE(right->sections.empty());
  EXPECT_EQ(rangeOf(*right).values(), (Values{110, 110}));
  EXPECT_DOUBLE_EQ(rangeAt(*right, 110), 110);
}

}  // namespace
