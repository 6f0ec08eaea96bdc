// The numeric item: fixed point, its string form, its legacy form and how its entries
// follow the section points.
#include <gtest/gtest.h>

#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/MovementBase.h"
#include "system/Exception.h"

namespace {

using Effect::EffectItemNumber;
using Effect::findMovement;

EffectItemNumber percent() { return EffectItemNumber(L"X", 0, -100, 100, 0.01); }

TEST(ItemNumber, FormatsByScaleWithLeadingZeroAndSign) {
  const EffectItemNumber hundredths = percent();
  EXPECT_EQ(hundredths.formatValue(12345), "123.45");
  EXPECT_EQ(hundredths.formatValue(5), "0.05");
  EXPECT_EQ(hundredths.formatValue(-100), "-1.00");
  const EffectItemNumber whole(L"n", 0, 0, 1000, 1);
  EXPECT_EQ(whole.formatValue(100), "100");
  const EffectItemNumber thousandths(L"t", 0, -10, 10, 0.001);
  EXPECT_EQ(thousandths.scale(), 1000);
  EXPECT_EQ(thousandths.formatValue(5), "0.005");
  EXPECT_EQ(thousandths.formatValue(-5), "-0.005");
}

TEST(ItemNumber, ConstructorRoundsHalvesAwayFromZero) {
  const EffectItemNumber item(L"a", -0.05, -100.15, 100.15, 0.1);
  EXPECT_EQ(item.defaultValue(), -1);  // -0.5 units rounds away from zero
  EXPECT_EQ(item.minValue(), -1002);
  EXPECT_EQ(item.maxValue(), 1002);
  EXPECT_EQ(item.values(), std::vector<std::int32_t>{-1});
  EXPECT_EQ(&item.movement(), Effect::BuiltinMovements::noMove().get());
}

TEST(ItemNumber, SetAndAddClampAndReportChange) {
  EffectItemNumber item = percent();
  item.setValue(0, 250.0);
  EXPECT_EQ(item.values()[0], 10000);
  item.setValue(0, 100.0);
  EXPECT_FALSE(item.addValue(0, 1.0));  // already at the maximum
  EXPECT_TRUE(item.addValue(0, -0.005));  // -0.5 units rounds to -1
  EXPECT_EQ(item.values()[0], 9999);
  EXPECT_FALSE(item.addValue(3, 1.0));
  item.setValue(7, 1.0);  // outside the entries: ignored
  EXPECT_DOUBLE_EQ(item.getValue(-4), 99.99);
  EXPECT_DOUBLE_EQ(item.getValue(9), 99.99);
}

TEST(ItemNumber, PlainTextReadsClampedAndWritesByScale) {
  EffectItemNumber tenths(L"t", 0, -100, 100, 0.1);
  tenths.fromString("1.234");
  EXPECT_EQ(tenths.values()[0], 12);
  EXPECT_EQ(tenths.toString(), "1.2");
  tenths.fromString("5000");
  EXPECT_EQ(tenths.toString(), "100.0");
  tenths.fromString(" -0.06");
  EXPECT_EQ(tenths.toString(), "-0.1");
}

TEST(ItemNumber, MovementTextRoundTrips) {
  for (const char* text : {"0.00,100.00,直線移動,0", "0.00,100.00,直線移動,1", "0.00,100.00,ランダム移動,4|15",
                           "-5.00,12.50,30.00,直線移動(時間制御),3|0.25,0,0.25,1",
                           "1.00,2.00,ランダム移動,4|2.5"}) {
    EffectItemNumber item = percent();
    item.fromString(text);
    EXPECT_EQ(item.toString(), text);
  }
}

TEST(ItemNumber, MovementTextSetsEverything) {
  EffectItemNumber item = percent();
  item.fromString("0.00,150.00,-20.004,補間移動,3");
  EXPECT_EQ(item.movement().name(), L"補間移動");
  EXPECT_EQ(item.flags(), 3u);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{0, 10000, -2000}));
  // Back to a plain number: the movement, the flags and the extra entries go.
  item.fromString("7.5");
  EXPECT_EQ(item.toString(), "7.50");
  EXPECT_EQ(item.flags(), 0u);
  EXPECT_EQ(item.valueCount(), 1);
}

TEST(ItemNumber, OneEntryWithMovementStillNamesIt) {
  EffectItemNumber item = percent();
  item.fromString("3.00,瞬間移動,0");
  EXPECT_EQ(item.toString(), "3.00,瞬間移動,0");
}

TEST(ItemNumber, UnknownFlagBitsAreDropped) {
  EffectItemNumber item = percent();
  item.fromString("0.00,1.00,直線移動,-4");
  EXPECT_EQ(item.flags(), 4u);
  EXPECT_EQ(item.toString(), "0.00,1.00,直線移動,4");
}

TEST(ItemNumber, MissingParametersTakeTheMovementsDefaults) {
  EffectItemNumber item = percent();
  item.fromString("0.00,100.00,ランダム移動,4");
  EXPECT_EQ(item.movementParams(), std::vector<double>{15.0});
}

TEST(ItemNumber, BadTextsThrowAndLeaveTheItem) {
  EffectItemNumber item = percent();
  item.fromString("0.00,50.00,直線移動,0");
  const std::string before = item.toString();
  const auto expectFailure = [&](const char* text, const char* message) {
    try {
      item.fromString(text);
      ADD_FAILURE() << text;
    } catch (const System::NoteException& exception) {
      EXPECT_NE(exception.text().find(message), std::string::npos) << exception.text();
    }
    EXPECT_EQ(item.toString(), before);
  };
  expectFailure("abc", "invalid stod argument");
  expectFailure("1,2", "invalid effect parameter.");
  expectFailure("0,1,存在しない移動,0", "not found movement.");
  expectFailure("0,x,直線移動,0", "invalid stod argument");
  expectFailure("0,1,直線移動,z", "invalid stoi argument");
  expectFailure("1e999", "stod argument out of range");
}

TEST(ItemNumber, LegacyModeMapsFlagsAndKeepsTheParameter) {
  EffectItemNumber item = percent();
  // No settings service: the mode number has no mapping, the name behind "@" is used.
  item.fromLegacy("0,100,96@直線移動", "x", L"座標", false);  // bits 6 and 5
  EXPECT_EQ(item.toString(), "0.00,100.00,直線移動,3");
  item.fromLegacy("-10,10,7@ランダム移動,30", "x", L"座標", false);
  EXPECT_EQ(item.toString(), "-10.00,10.00,ランダム移動,0|30");
  item.fromLegacy("12.5", "x", L"座標", false);
  EXPECT_EQ(item.toString(), "12.50");
}

TEST(ItemNumber, ResizeKeepsTheLastValueAndRepeatsIt) {
  EffectItemNumber item = percent();
  item.fromString("1.00,2.00,3.00,4.00,直線移動,0");
  item.resizeValues(2);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{100, 400}));
  item.resizeValues(4);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{100, 400, 400, 400}));
}

TEST(ItemNumber, SectionPointsInsertDefaultsOrOverrides) {
  EffectItemNumber item = percent();
  item.fromString("10.00,20.00,直線移動,0");
  item.insertSectionPoint(0);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{1000, 0, 2000}));
  EffectItemNumber::Overrides overrides{{&item, {15.0, 1}}};
  item.insertSectionPoint(0, &overrides);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{1000, 0, 1500, 2000}));
  item.removeSectionPoint(1);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{1000, 1500, 2000}));
  item.setSectionPointValue(1);
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{1000, 0, 2000}));

  EffectItemNumber fixed = percent();  // no movement: one value whatever the sections
  fixed.insertSectionPoint(0);
  EXPECT_EQ(fixed.valueCount(), 1);
}

TEST(ItemNumber, MovementDefaultsAndSynchronising) {
  EffectItemNumber item = percent();
  item.setMovement(findMovement(L"補間移動"), 3);
  EXPECT_EQ(item.flags(), 3u);  // acceleration and deceleration on by default
  EXPECT_EQ(item.valueCount(), 3);
  item.setFlag(EffectItemNumber::Acceleration, false, 3);
  item.syncWithMovement(4);  // the user's choice on an offered flag stays
  EXPECT_EQ(item.flags(), 2u);
  EXPECT_EQ(item.valueCount(), 4);

  item.setMovement(findMovement(L"ランダム移動"), 4);
  EXPECT_EQ(item.flags(), 4u);  // two-point on by default
  EXPECT_EQ(item.valueCount(), 2);
  EXPECT_EQ(item.movementParams(), std::vector<double>{15.0});

  item.setMovement(findMovement(L"瞬間移動"), 4);
  item.fromString("1.00,2.00,3.00,瞬間移動,7");  // flags the movement doesn't offer
  item.syncWithMovement(3);
  EXPECT_EQ(item.flags(), 0u);
}

TEST(ItemNumber, LinkedGroupTakesTheMovementTogether) {
  EffectItemNumber x = percent();
  EffectItemNumber y(L"Y", 0, -100, 100, 0.01);
  Effect::EffectItemNumberGroup group(L"Group");
  group.join(x);
  group.join(y);
  y.setMovement(findMovement(L"直線移動"), 2);
  EXPECT_EQ(x.movement().name(), L"直線移動");
  EXPECT_EQ(y.valueCount(), 2);
  group.setLinked(false);
  x.setMovement(findMovement(L"瞬間移動"), 2);
  EXPECT_EQ(y.movement().name(), L"直線移動");
}

TEST(ItemNumber, SectionEditsSelectTheirEntry) {
  EffectItemNumber item = percent();
  item.fromString("0.00,0.00,0.00,瞬間移動,0");  // two sections
  EXPECT_TRUE(item.setValueAtSection(1, 2, 5.0));
  EXPECT_TRUE(item.setValueAtSection(2, 2, 7.0));  // the count itself: the last entry
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{0, 500, 700}));
  EXPECT_FALSE(item.isEditable(2, 2));  // a jump never reaches its last value
  EXPECT_TRUE(item.addValueAtSection(EffectItemNumber::kAllSections, 2, 1.0));
  EXPECT_EQ(item.values(), (std::vector<std::int32_t>{100, 600, 700}));
  EXPECT_FALSE(item.setValueAtSection(1, 3, 9.0));  // entries don't follow 3 sections
}

TEST(ItemNumber, CloneCopiesValueButNotTheGroup) {
  EffectItemNumber x = percent();
  Effect::EffectItemNumberGroup group(L"Group");
  group.join(x);
  x.fromString("1.00,2.00,直線移動,0");
  const std::unique_ptr<Effect::EffectItem> copy = x.clone();
  EXPECT_TRUE(copy->equals(x));
  EXPECT_EQ(static_cast<EffectItemNumber&>(*copy).group(), nullptr);
  EffectItemNumber other = percent();
  other.assign(*copy);
  EXPECT_EQ(other.toString(), "1.00,2.00,直線移動,0");
}

}  // namespace
