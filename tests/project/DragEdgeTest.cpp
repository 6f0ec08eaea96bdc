// Dragging the left or right edges of a selection: how far an edge may go against its
// neighbours and its own section points, and what the input effects hear on release.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "edit/DragState.h"
#include "edit/Object.h"
#include "edit/ObjectDrag.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/ItemEvent.h"

namespace {

using Edit::DragInput;
using Edit::DragKind;
using Edit::DragState;
using Edit::Object;
using Edit::ObjectDrag;
using Edit::Scene;
using Selection = std::vector<std::shared_ptr<Object>>;

// What an effect was told; the object is kept as a plain pointer, since the object owns
// the effect.
struct Heard {
  Effect::ItemEvent::Type type;
  const Object* object;
  std::int32_t value;
};

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

  std::vector<Heard> events;
};
using RecordingInput = RecordingEffect<Effect::EffectType::Input>;
using RecordingFilter = RecordingEffect<Effect::EffectType::Filter>;

class DragEdgeTest : public ::testing::Test {
 protected:
  DragEdgeTest() : scene(1, 0, Edit::SceneDefaults{}) {
    scene.visibleFrames = 1000;
    scene.cursorFrame = 100000;
    input.snap = false;
  }

  std::shared_ptr<Object> add(std::int32_t layer, std::int32_t start, std::int32_t end) {
    auto object = scene.createEmptyObject(layer, start, end);
    scene.update();
    return object;
  }

  // A whole edge drag of the selection, grabbed at `from`, in one mouse move to `to`.
  bool drag(DragKind kind, const Selection& selection, std::int32_t from, std::int32_t to) {
    for (const auto& object : selection) object->selected = true;
    state = ObjectDrag::begin({kind, selection.front(), 0, selection.front()->layer, from}, selection, nullptr);
    input.frame = to;
    const bool moved = ObjectDrag::step(scene, state, selection, input);
    scene.update();
    return moved;
  }

  static void expectSpan(const Object& object, std::int32_t start, std::int32_t end) {
    EXPECT_EQ(object.start, start);
    EXPECT_EQ(object.end, end);
  }

  Scene scene;
  DragState state;
  DragInput input;
};

TEST_F(DragEdgeTest, LeftEdgeStopsAtOneFrameAtThePreviousObjectAndAtZero) {
  auto a = add(0, 10, 19);
  EXPECT_TRUE(drag(DragKind::LeftEdge, {a}, 10, 40));
  expectSpan(*a, 19, 19);
  EXPECT_EQ(state.currentFrame, 19);
  input.frame = 50;
  EXPECT_FALSE(ObjectDrag::step(scene, state, {a}, input));

  add(1, 0, 4);
  auto b = add(1, 10, 19);
  EXPECT_TRUE(drag(DragKind::LeftEdge, {b}, 10, 2));
  expectSpan(*b, 5, 19);

  auto c = add(2, 10, 19);
  EXPECT_TRUE(drag(DragKind::LeftEdge, {c}, 10, -5));
  expectSpan(*c, 0, 19);
}

TEST_F(DragEdgeTest, LeftEdgeKeepsSectionPointsInPlace) {
  auto a = add(0, 10, 29);
  a->sections = {5, 12};  // points at 15 and 22
  EXPECT_TRUE(drag(DragKind::LeftEdge, {a}, 10, 20));
  expectSpan(*a, 14, 29);
  EXPECT_EQ(a->sections, (std::vector<std::int32_t>{1, 8}));
  input.frame = 7;
  EXPECT_TRUE(ObjectDrag::step(scene, state, {a}, input));
  expectSpan(*a, 7, 29);
  EXPECT_EQ(a->sections, (std::vector<std::int32_t>{8, 15}));
}

TEST_F(DragEdgeTest, RightEdgeStopsAtTheNextObjectTheLastPointAndOneFrame) {
  auto a = add(0, 10, 19);
  add(0, 30, 39);
  EXPECT_TRUE(drag(DragKind::RightEdge, {a}, 20, 40));
  expectSpan(*a, 10, 29);

  auto b = add(1, 10, 19);
  EXPECT_TRUE(drag(DragKind::RightEdge, {b}, 20, 120));
  expectSpan(*b, 10, 119);

  auto c = add(2, 10, 19);
  EXPECT_TRUE(drag(DragKind::RightEdge, {c}, 20, 0));
  expectSpan(*c, 10, 10);

  auto d = add(3, 10, 29);
  d->sections = {5, 12};  // the last point at 22
  EXPECT_TRUE(drag(DragKind::RightEdge, {d}, 30, 10));
  expectSpan(*d, 10, 23);
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
  EXPECT_TRUE(drag(DragKind::RightEdge, {a, b, c}, 20, 30));
  expectSpan(*a, 10, 22);
  expectSpan(*b, 10, 20);
  expectSpan(*c, 10, 22);
  EXPECT_EQ(state.currentFrame, 23);
}

TEST_F(DragEdgeTest, ControlObjectEdgeRebuildsItsRow) {
  auto a = add(0, 10, 19);
  a->control = true;
  scene.addLayers(0).needsControlRebuild = true;
  scene.update();
  EXPECT_TRUE(drag(DragKind::RightEdge, {a}, 20, 25));
  ASSERT_EQ(scene.getLayer(0).controls.size(), 1u);
  EXPECT_EQ(scene.getLayer(0).controls.front().end, 24);
}

TEST_F(DragEdgeTest, ReleaseTellsInputEffectsTheirOldEdge) {
  auto input0 = std::make_shared<RecordingInput>();
  auto filter = std::make_shared<RecordingFilter>();
  auto a = add(0, 10, 19);
  a->effects = {input0};
  auto b = add(1, 30, 39);
  b->effects = {filter};
  auto c = add(2, 50, 59);

  ASSERT_TRUE(drag(DragKind::LeftEdge, {a, b, c}, 10, 15));
  expectSpan(*c, 55, 59);
  EXPECT_TRUE(ObjectDrag::finish(state, {a, b, c}));
  EXPECT_EQ(state.kind, DragKind::None);
  ASSERT_EQ(input0->events.size(), 1u);
  EXPECT_EQ(input0->events[0].type, Effect::ItemEvent::LeftEdgeDragged);
  EXPECT_EQ(input0->events[0].object, a.get());
  EXPECT_EQ(input0->events[0].value, 10);
  EXPECT_TRUE(filter->events.empty());

  ASSERT_TRUE(drag(DragKind::RightEdge, {a}, 20, 25));
  EXPECT_TRUE(ObjectDrag::finish(state, {a}));
  ASSERT_EQ(input0->events.size(), 2u);
  EXPECT_EQ(input0->events[1].type, Effect::ItemEvent::RightEdgeDragged);
  EXPECT_EQ(input0->events[1].value, 19);

  // A selection that changed during the drag, and a move, tell nothing.
  ASSERT_TRUE(drag(DragKind::RightEdge, {a, b}, 25, 26));
  EXPECT_FALSE(ObjectDrag::finish(state, {a}));
  ASSERT_TRUE(drag(DragKind::Move, {a}, 20, 23));
  EXPECT_FALSE(ObjectDrag::finish(state, {a}));
  EXPECT_EQ(input0->events.size(), 2u);
}

}  // namespace
