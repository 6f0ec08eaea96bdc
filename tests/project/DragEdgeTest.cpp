// Dragging the left or right edges of a selection: how far an edge may go against its
// neighbours and its own section points, and what the input effects hear on release.
#include <tuple>

#include "DragTestSupport.h"
#include "effect/EffectBase.h"
#include "effect/ItemEvent.h"

namespace {

using DragTestSupport::Selection;
using Edit::DragKind;
using Edit::Object;
using Edit::ObjectDrag;

// What an effect was told: the type, the object (a plain pointer, since the object owns
// the effect) and the value.
using Heard = std::vector<std::tuple<Effect::ItemEvent::Type, const Object*, std::int32_t>>;

// An input and a filter that keep the events they are told.
template <Effect::EffectType kType>
class RecordingEffect final : public Effect::EffectInstance<RecordingEffect<kType>> {
 public:
  static inline const Effect::EffectInfo kInfo{L"記録", kType, Effect::EffectMedia::Video, Effect::EffectMedia::Video,
                                               L"", {}};
  RecordingEffect() : Effect::EffectInstance<RecordingEffect<kType>>(kInfo) {}

  bool itemEvent(Effect::ItemEvent& event) override {
    events.push_back({event.type, event.object.get(), event.value});
    event.redraw = true;
    return true;
  }

  Heard events;
};

class DragEdgeTest : public DragTestSupport::DragFixture {
 protected:
  // A whole edge drag of `objects`, grabbed at `from`, in one mouse move to `to`.
  bool dragEdge(DragKind kind, const Selection& objects, std::int32_t from, std::int32_t to) {
    begin({kind, objects.front(), 0, objects.front()->layer, from}, objects);
    return moveTo(to);
  }
};

TEST_F(DragEdgeTest, EdgesStopAtTheNeighboursAtZeroAndAtOneFrame) {
  // Each case drags an object of frames 10 to 19 on a row of its own, grabbed at its edge.
  const struct {
    DragKind kind;
    std::int32_t neighbourStart, neighbourEnd, to, start, end;
  } cases[] = {
      {DragKind::LeftEdge, -1, -1, 40, 19, 19},     // one frame
      {DragKind::LeftEdge, 0, 4, 2, 5, 19},         // the previous object's end + 1
      {DragKind::LeftEdge, -1, -1, -5, 0, 19},      // frame 0
      {DragKind::RightEdge, 30, 39, 40, 10, 29},    // the next object's start - 1
      {DragKind::RightEdge, -1, -1, 120, 10, 119},  // the last object of its row
      {DragKind::RightEdge, -1, -1, 0, 10, 10},     // one frame
  };
  for (std::int32_t row = 0; row < 6; ++row) {
    const auto& c = cases[row];
    SCOPED_TRACE(row);
    if (c.neighbourStart >= 0) add(row, c.neighbourStart, c.neighbourEnd);
    auto a = add(row, 10, 19);
    EXPECT_TRUE(dragEdge(c.kind, {a}, c.kind == DragKind::LeftEdge ? 10 : 20, c.to));
    expectAt(*a, row, c.start, c.end);
    if (row == 0) {  // at one frame the edge goes no further
      EXPECT_EQ(drag.currentFrame, 19);
      EXPECT_FALSE(moveTo(50));
    }
  }
}

TEST_F(DragEdgeTest, EdgesKeepSectionPointsInPlace) {
  auto a = add(0, 10, 29);
  a->sections = {5, 12};  // points at 15 and 22
  EXPECT_TRUE(dragEdge(DragKind::LeftEdge, {a}, 10, 20));
  expectAt(*a, 0, 14, 29);
  EXPECT_EQ(a->sections, (std::vector<std::int32_t>{1, 8}));
  EXPECT_TRUE(moveTo(7));
  expectAt(*a, 0, 7, 29);
  EXPECT_EQ(a->sections, (std::vector<std::int32_t>{8, 15}));

  // The right edge stops a frame after the last point.
  auto d = add(1, 10, 29);
  d->sections = {5, 12};
  EXPECT_TRUE(dragEdge(DragKind::RightEdge, {d}, 30, 10));
  expectAt(*d, 1, 10, 23);
  EXPECT_EQ(d->sections, (std::vector<std::int32_t>{5, 12}));
}

TEST_F(DragEdgeTest, EachSelectedObjectClampsTheFirstObjectsStep) {
  auto a = add(0, 10, 19);
  add(0, 23, 30);
  auto b = add(1, 10, 19);
  add(1, 21, 30);
  auto c = add(2, 10, 19);
  // The first object allows 3 of the 10 frames; the second only 1 of those 3; the third,
  // free itself, still takes no more than 3.
  EXPECT_TRUE(dragEdge(DragKind::RightEdge, {a, b, c}, 20, 30));
  expectAt(*a, 0, 10, 22);
  expectAt(*b, 1, 10, 20);
  expectAt(*c, 2, 10, 22);
  EXPECT_EQ(drag.currentFrame, 23);
}

TEST_F(DragEdgeTest, ControlObjectEdgeRebuildsItsRow) {
  auto a = add(0, 10, 19);
  a->control = true;
  scene.addLayers(0).needsControlRebuild = true;
  scene.update();
  EXPECT_TRUE(dragEdge(DragKind::RightEdge, {a}, 20, 25));
  ASSERT_EQ(scene.getLayer(0).controls.size(), 1u);
  EXPECT_EQ(scene.getLayer(0).controls.front().end, 24);
}

TEST_F(DragEdgeTest, ReleaseTellsInputEffectsTheirOldEdge) {
  auto input0 = std::make_shared<RecordingEffect<Effect::EffectType::Input>>();
  auto filter = std::make_shared<RecordingEffect<Effect::EffectType::Filter>>();
  auto a = add(0, 10, 19);
  a->effects = {input0};
  auto b = add(1, 30, 39);
  b->effects = {filter};
  auto c = add(2, 50, 59);
  ASSERT_TRUE(dragEdge(DragKind::LeftEdge, {a, b, c}, 10, 15));
  expectAt(*c, 2, 55, 59);
  EXPECT_TRUE(ObjectDrag::finish(drag, {a, b, c}));
  EXPECT_EQ(drag.kind, DragKind::None);
  Heard heard{{Effect::ItemEvent::LeftEdgeDragged, a.get(), 10}};
  EXPECT_EQ(input0->events, heard);
  EXPECT_EQ(filter->events, Heard{});

  ASSERT_TRUE(dragEdge(DragKind::RightEdge, {a}, 20, 25));
  EXPECT_TRUE(ObjectDrag::finish(drag, {a}));
  heard.emplace_back(Effect::ItemEvent::RightEdgeDragged, a.get(), 19);
  EXPECT_EQ(input0->events, heard);

  // A selection that changed during the drag, and a move, tell nothing.
  ASSERT_TRUE(dragEdge(DragKind::RightEdge, {a, b}, 25, 26));
  EXPECT_FALSE(ObjectDrag::finish(drag, {a}));
  ASSERT_TRUE(dragEdge(DragKind::Move, {a}, 20, 23));
  EXPECT_FALSE(ObjectDrag::finish(drag, {a}));
  EXPECT_EQ(input0->events, heard);
}

}  // namespace
