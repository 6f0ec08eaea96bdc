// Values at frames for every built-in movement, the time-control curve and TimeInfo.
// Expected values are worked out by hand from the movement definitions.
#include <gtest/gtest.h>

#include <cmath>

#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/MovementBase.h"
#include "effect/movement/MovementParams.h"
#include "effect/movement/RandomMove.h"
#include "effect/movement/ScriptMovementHeader.h"
#include "effect/movement/TimeControlCurve.h"
#include "effect/movement/TimeInfo.h"

namespace {

using Effect::EffectItemNumber;
using Effect::ItemContext;

Edit::Object& object(std::int32_t start, std::int32_t end, std::vector<std::int32_t> sections = {}) {
  static Edit::Object made;
  made.start = start;
  made.end = end;
  made.sections = std::move(sections);
  return made;
}

EffectItemNumber item(const char* text) {
  EffectItemNumber made(L"X", 0, -100000, 100000, 0.01);
  made.fromString(text);
  return made;
}

double at(const EffectItemNumber& number, const Edit::Object& of, double exactFrame) {
  ItemContext context = ItemContext::at(of, static_cast<std::int32_t>(std::floor(exactFrame)));
  context.exactFrame = exactFrame;
  return number.getValueAt(context);
}

TEST(TimeInfo, SectionsOffsetsAndLengths) {
  const Edit::Object& of = object(100, 130, {10, 25});
  Effect::TimeInfo time = Effect::TimeInfo::ofSections(of, 112, 112.5);
  EXPECT_EQ(time.section, 1);
  EXPECT_EQ(time.sectionCount, 3);
  EXPECT_DOUBLE_EQ(time.offset, 2.5);
  EXPECT_EQ(time.length, 15);
  EXPECT_DOUBLE_EQ(time.position, 12.5 / 30);
  time = Effect::TimeInfo::ofSections(of, 130, 130);
  EXPECT_EQ(time.section, 2);
  EXPECT_EQ(time.length, 5);
  EXPECT_DOUBLE_EQ(time.offset, 5);  // the last frame: offset equals length
  time = Effect::TimeInfo::ofSections(object(7, 7), 7, 7);  // one frame
  EXPECT_EQ(time.length, 1);
  EXPECT_DOUBLE_EQ(time.offset, 0);
  EXPECT_DOUBLE_EQ(time.position, 0);
}

TEST(Movement, ConstantJumpAndSpeed) {
  EXPECT_DOUBLE_EQ(at(item("42"), object(0, 20), 13), 42);
  const EffectItemNumber jump = item("0.00,100.00,50.00,瞬間移動,0");
  EXPECT_DOUBLE_EQ(at(jump, object(0, 20, {10}), 9), 0);
  EXPECT_DOUBLE_EQ(at(jump, object(0, 20, {10}), 15), 100);
  EXPECT_DOUBLE_EQ(at(jump, object(0, 20, {10}), 20), 100);  // the end value is never reached
  EffectItemNumber speed(L"X", 0, -1000, 1000, 0.01);
  speed.setMovement(Effect::findMovement(L"移動量指定"), 3);  // two-point by default
  speed.setValue(0, 10);
  speed.setValue(1, 2);
  EXPECT_DOUBLE_EQ(at(speed, object(5, 40, {10}), 8), 16);
  EXPECT_DOUBLE_EQ(at(speed, object(5, 40, {10}), 25), 50);  // counts from the object's start
}

TEST(Movement, LinearWithSectionsAndEasing) {
  const EffectItemNumber plain = item("0.00,100.00,50.00,直線移動,0");
  EXPECT_DOUBLE_EQ(at(plain, object(0, 20, {10}), 5), 50);
  EXPECT_DOUBLE_EQ(at(plain, object(0, 20, {10}), 15), 75);
  EXPECT_DOUBLE_EQ(at(plain, object(0, 20, {10}), 20), 50);
  EXPECT_DOUBLE_EQ(at(item("0.00,100.00,直線移動,0"), object(10, 30), 15), 25);
  EXPECT_DOUBLE_EQ(at(item("0.00,100.00,直線移動,0"), object(4, 4), 4), 0);  // one frame: v(section)

  // Acceleration eases only the start of the first section: c1 = 0, c2 = 50.
  const EffectItemNumber accelerated = item("0.00,100.00,直線移動,1");
  EXPECT_DOUBLE_EQ(at(accelerated, object(0, 20), 5), 8.59375);
  EXPECT_DOUBLE_EQ(at(accelerated, object(0, 20), 10), 31.25);
  EXPECT_DOUBLE_EQ(at(accelerated, object(0, 20), 20), 100);
  const EffectItemNumber threeValues = item("0.00,100.00,50.00,直線移動,1");
  EXPECT_DOUBLE_EQ(at(threeValues, object(0, 20, {10}), 5), 31.25);
  EXPECT_DOUBLE_EQ(at(threeValues, object(0, 20, {10}), 15), 75);  // second section stays straight
  // Deceleration mirrors it: c1 = 50, c2 = 100; at p = 0.75, 112.5 / 16 + (75 + 75) * 9 / 16.
  EXPECT_DOUBLE_EQ(at(item("0.00,100.00,直線移動,2"), object(0, 20), 15), 91.40625);
}

TEST(Movement, TwoPointIgnoresSections) {
  const EffectItemNumber twoPoint = item("0.00,100.00,直線移動,4");
  EXPECT_DOUBLE_EQ(at(twoPoint, object(0, 40, {10, 30}), 10), 25);
}

TEST(Movement, LinearSpeedRunsEvenlyOverTheWholePath) {
  // Segments 10 and 30 long: the value is 40 * position whatever the sections.
  const EffectItemNumber evenly = item("0.00,10.00,40.00,直線移動(時間制御),0");
  EXPECT_DOUBLE_EQ(at(evenly, object(0, 20, {10}), 5), 10);
  EXPECT_DOUBLE_EQ(at(evenly, object(0, 20, {10}), 10), 20);
  EXPECT_DOUBLE_EQ(at(evenly, object(0, 20, {10}), 15), 30);
  EXPECT_EQ(evenly.movement().getSection(evenly, Effect::TimeInfo::ofSections(object(0, 20, {10}), 12, 12)), 1);
  const std::vector<double> points = evenly.movement().getSectionPositions(evenly, object(0, 20, {10}));
  ASSERT_EQ(points.size(), 1u);
  EXPECT_DOUBLE_EQ(points[0], 0.25);

  const EffectItemNumber still = item("5.00,5.00,5.00,直線移動(時間制御),0");
  EXPECT_DOUBLE_EQ(at(still, object(0, 20, {10}), 12), 5);
  EXPECT_TRUE(still.movement().getSectionPositions(still, object(0, 20, {10})).empty());

  // With a curve that eases both ends: smoothstep of 0.25 is 0.15625.
  const EffectItemNumber curved = item("0.00,100.00,直線移動(時間制御),0|0.3333333333333333,0,0.3333333333333333,0");
  EXPECT_NEAR(at(curved, object(0, 20), 5), 15.625, 1e-6);
}

TEST(Movement, LinkedCoordinatesShareOneCurve) {
  // X runs 0 to 30 and Y 0 to 40 over 50 units in the first segment, then X stays
  // and Y runs 50 more: half the path is used at a quarter of the time, and X, Y
  // both sit at the same point of the first segment.
  EffectItemNumber x(L"X", 0, -1000, 1000, 0.01);
  EffectItemNumber y(L"Y", 0, -1000, 1000, 0.01);
  Effect::EffectItemNumberGroup group(L"Group");
  group.join(x);
  group.join(y);
  x.fromString("0.00,30.00,30.00,直線移動(時間制御),0");
  y.fromString("0.00,40.00,90.00,直線移動(時間制御),0");
  EXPECT_NEAR(at(x, object(0, 40, {20}), 10), 15, 1e-9);
  EXPECT_NEAR(at(y, object(0, 40, {20}), 10), 20, 1e-9);
  group.setLinked(false);  // alone, X's path is its own 30 units: a quarter of it by then
  EXPECT_NEAR(at(x, object(0, 40, {20}), 10), 7.5, 1e-9);
}

TEST(Movement, InterpolationThroughThreePoints) {
  // Points 0, 10, 20; the start extrapolated to -10/3, tangents 5 and 10, warp w = 0.5.
  EffectItemNumber spline = item("0.00,10.00,20.00,補間移動,0");
  EXPECT_DOUBLE_EQ(at(spline, object(0, 20, {10}), 5), 4.375);
  EXPECT_DOUBLE_EQ(at(spline, object(0, 20, {10}), 0), 0);
  EXPECT_DOUBLE_EQ(at(spline, object(0, 20, {10}), 20), 20);
  // Coinciding points: the guards keep the tangents at 0.
  EXPECT_DOUBLE_EQ(at(item("7.00,7.00,7.00,補間移動,3"), object(0, 20, {10}), 13), 7);
}

TEST(Movement, InterpolationSpeedBetweenTwoValues) {
  // Records -20/3, 0, 10, 130/9 with lengths 20/3, 10, 40/9 (times the square root of
  // three): A = 0.2, B = 3/13, w = 0.15 + 17/52, C1 = 8/3, C2 = 10 - 80/39.
  const EffectItemNumber spline = item("0.00,10.00,補間移動(時間制御),0");
  EXPECT_NEAR(at(spline, object(0, 20), 10), 4.965852456146495, 1e-9);
  EXPECT_NEAR(at(spline, object(0, 20), 0), 0, 1e-9);
  EXPECT_NEAR(at(spline, object(0, 20), 20), 10, 1e-9);
}

TEST(Movement, RandomIsAPureFunctionOfItemObjectAndFrame) {
  EffectItemNumber random(L"X", 0, -100, 100, 0.01);
  random.fromString("-50.00,50.00,ランダム移動,4|5");
  const Edit::Object& of = object(10, 100);
  // Worked out from the hash and generator definitions for the item "X" with scale
  // 100 and range -10000 to 10000, object start 10: offset 7.5, period 5.
  EXPECT_NEAR(at(random, of, 17.5), -7.528354038127137, 1e-9);
  EXPECT_DOUBLE_EQ(at(random, of, 17.5), at(random, of, 17.5));
  const std::int64_t seed = Effect::RandomMove::seed(random, ItemContext::at(of, 10));
  EXPECT_EQ(seed, 1124654322);
  EXPECT_NEAR(at(random, of, 10), static_cast<double>(Effect::RandomMove::random(seed, 0)) * 100 - 50, 1e-12);
  EXPECT_FLOAT_EQ(Effect::RandomMove::random(seed, 0), 0.44584769010543823f);

  ItemContext other = ItemContext::at(of, 17);
  other.exactFrame = 17.5;
  other.subIndex = 1;
  EXPECT_NE(random.getValueAt(other), at(random, of, 17.5));
  // A period of 0 behaves as 1.
  EffectItemNumber zero = item("-50.00,50.00,ランダム移動,4|0");
  EffectItemNumber one = item("-50.00,50.00,ランダム移動,4|1");
  EXPECT_DOUBLE_EQ(at(zero, of, 33.25), at(one, of, 33.25));
  EXPECT_FALSE(random.movement().showsPath(random));
}

TEST(TimeControlCurve, OneRecordAndNodes) {
  using Effect::TimeControlCurve::evaluate;
  const double third = 1.0 / 3.0;
  EXPECT_NEAR(evaluate({third, 0, third, 0}, 0.25), 0.15625, 1e-6);
  EXPECT_NEAR(evaluate({third, third, third, third}, 0.7), 0.7, 1e-6);
  EXPECT_DOUBLE_EQ(evaluate({0.5, 0.5, 0.5}, 0.3), 0.3);  // not a whole record
  EXPECT_NEAR(evaluate({0, 0, third, 0, 1, 1, third, 0}, 0.25), 0.15625, 1e-6);
  EXPECT_DOUBLE_EQ(evaluate({0, 0, 0.1, 0, 0.5, 0.8, 0.1, 0}, 0.7), 0.8);  // past the last node
  EXPECT_DOUBLE_EQ(Effect::TimeControlCurve::solve(0.5, 0.5, 0.5, 0.5, 0.5), 0.5);
}

TEST(MovementParams, PresetLinesAndTheirFile) {
  std::int32_t number = 10;
  Effect::MovementParamsManager manager(number);
  manager.registerText("; comment\r\nslow=0.5,0,0.5,1\r\n\nbad line\nx=1=2\nfast=0.1,0.9,0.1,0.9\nslow=1,1,1,1",
                       L"@mine");
  ASSERT_EQ(manager.presets().size(), 2u);
  const auto& first = *manager.presets().begin()->value;
  EXPECT_EQ(first.key(), L"slow@mine");
  EXPECT_EQ(first.curve(), (std::vector<double>{0.5, 0, 0.5, 1}));
  EXPECT_EQ(number, 12);
  EXPECT_EQ(Effect::MovementParamsDefine::formatParamsLine("params", {0.25, 1, -0.5}), "params=0.25,1,-0.5\r\n");
  EXPECT_EQ(Effect::MovementParamsDefine::formatParamsLine("params", {}), "params=\r\n");
}

TEST(ScriptMovementHeader, OptionsParametersAndComments) {
  const Effect::ScriptMovementHeader header = Effect::ScriptMovementHeader::parse(
      "--twopoint\n--speed: 1,0\n--param: 15\n--[[\n--param: 99\n]]\n--param:2.5\n--timecontrol\n"
      "--label: 揺れ\nlocal x = 1 --param: 3\n",
      L"test.tra2");
  EXPECT_EQ(header.twoPoint, 2);
  EXPECT_EQ(header.acceleration, 1);
  EXPECT_EQ(header.deceleration, 0);
  EXPECT_EQ(header.paramDefaults, (std::vector<double>{15, 2.5}));
  EXPECT_TRUE(header.timeControl);
  EXPECT_EQ(header.label, L"揺れ");
}

}  // namespace
