// Snapping: what a frame is pulled to, from how far, and which target wins a tie; and
// the tempo grid lines that take part in it.
#include "DragTestSupport.h"
#include "edit/Snapping.h"
#include "edit/TempoGrid.h"

namespace {

using Edit::DragKind;
using Edit::Object;
using Edit::Scene;
using Edit::Snapping;
using Edit::TempoGrid;

// At the default zoom of 1 pixel a frame the reach is 80000 / 10000 + 1 = 9 frames; the
// cursor stands far away unless a test wants it.
class SnappingTest : public DragTestSupport::DragFixture {
 protected:
  // The step of a drag of `kind` that grabbed `object`, snapped without the tempo grid.
  std::int32_t snapStep(const std::shared_ptr<Object>& object, std::int32_t delta, DragKind kind = DragKind::Move) {
    drag.kind = kind;
    drag.grabbedObject = object;
    return Snapping::snapStep(scene, drag, delta, false);
  }
};

TEST_F(SnappingTest, PullsOnlyFromWithinTheReach) {
  add(0, 100, 149);
  auto dragged = add(1, 0, 19);
  dragged->selected = true;
  // End + 1 lands on 92, 8 frames before the neighbour's start: pulled to touch it.
  EXPECT_EQ(Snapping::range(scene), 9);
  EXPECT_EQ(snapStep(dragged, 72), 80);
  // 9 frames away is out of reach.
  EXPECT_EQ(snapStep(dragged, 71), 71);
  // Ten times the frames to a pixel: the reach grows to 81 frames.
  scene.setDisplayZoom(1000);
  EXPECT_EQ(Snapping::range(scene), 81);
  EXPECT_EQ(snapStep(dragged, 0), 80);
  // At the largest zoom only an exact hit snaps: the reach is 1.
  scene.setDisplayZoom(100000);
  EXPECT_EQ(Snapping::range(scene), 1);
  EXPECT_EQ(snapStep(dragged, 79), 79);
}

TEST_F(SnappingTest, MoveTestsStartThenEndAndTheFirstOfEqualDistancesStands) {
  add(2, 0, 29);   // its end + 1 is 30
  add(3, 60, 70);  // its start is 60
  auto dragged = add(1, 0, 19);
  dragged->selected = true;
  // Start at 35 is 5 from 30; end + 1 at 55 is 5 from 60: the start's target stands.
  EXPECT_EQ(snapStep(dragged, 35), 30);
  // Start at 36 is 6 from 30; end + 1 at 56 is 4 from 60 and wins.
  EXPECT_EQ(snapStep(dragged, 36), 40);
}

TEST_F(SnappingTest, SelectedObjectsAreNoTargets) {
  auto fellow = add(0, 50, 59);
  auto dragged = add(1, 10, 19);
  fellow->selected = true;
  dragged->selected = true;
  // End + 1 at 48 would snap to the fellow's start, start at 13 to the dragged object's
  // own old start: neither is offered.
  EXPECT_EQ(snapStep(dragged, 28), 28);
  EXPECT_EQ(snapStep(dragged, 3), 3);
  fellow->selected = false;
  EXPECT_EQ(snapStep(dragged, 28), 30);
}

TEST_F(SnappingTest, EqualDistancesGoToTheUpperRowThenTheLeftObject) {
  // Each case: two objects as row, start, end, then the nearest step from frame 100, which
  // lies 4 before a start at 104 and 4 after an end at 95.
  const std::int32_t cases[][7] = {
      {1, 104, 150, 3, 0, 95, 4}, {1, 0, 95, 3, 104, 150, -4}, {0, 104, 150, 0, 90, 95, -4}};
  for (const auto& c : cases) {
    Scene fresh(2, 1, Edit::SceneDefaults{});
    fresh.cursorFrame = 100000;
    fresh.createEmptyObject(c[0], c[1], c[2]);
    fresh.createEmptyObject(c[3], c[4], c[5]);
    fresh.update();
    EXPECT_EQ(Snapping::nearest(fresh, 100, 9, false), c[6]) << "first object " << c[1] << " on row " << c[0];
  }
}

TEST_F(SnappingTest, SectionPointsAndEndsAreTargets) {
  auto object = add(0, 200, 299);
  object->sections = {30};
  EXPECT_EQ(Snapping::nearest(scene, 233, 9, false), -3);
  EXPECT_EQ(Snapping::nearest(scene, 302, 9, false), -2);
  // Nothing strictly nearer than the best so far: the best comes back unchanged.
  EXPECT_EQ(Snapping::nearest(scene, 233, 3, false), 3);
}

TEST_F(SnappingTest, ObjectsComeBeforeTheGridAndTheGridBeforeTheCursor) {
  // 120 beats a minute at 30 frames a second: a line every 15 frames; 45 is 2 before 47.
  auto object = add(0, 49, 60);
  EXPECT_EQ(Snapping::nearest(scene, 47, 9, true), 2);
  object->start = 50;
  EXPECT_EQ(Snapping::nearest(scene, 47, 9, true), -2);
  // The grid is only a target when it is shown.
  EXPECT_EQ(Snapping::nearest(scene, 47, 9, false), 3);

  scene.cursorFrame = 49;
  EXPECT_EQ(Snapping::nearest(scene, 47, 9, true), -2);
  scene.cursorFrame = 48;
  EXPECT_EQ(Snapping::nearest(scene, 47, 9, true), 1);
  EXPECT_EQ(Snapping::snapFrame(scene, 47, true), 48);
}

TEST_F(SnappingTest, EdgeAndPointDragsTestTheirOwnFrame) {
  add(1, 35, 40);
  auto object = add(0, 10, 19);
  object->sections = {5};
  object->selected = true;
  EXPECT_EQ(snapStep(object, 11, DragKind::RightEdge), 15);  // end + 1 onto 35
  EXPECT_EQ(snapStep(object, 20, DragKind::LeftEdge), 25);   // start onto 35
  drag.grabbedPoint = 1;
  EXPECT_EQ(snapStep(object, 18, DragKind::SectionPoint), 20);  // point 15 onto 35
  EXPECT_EQ(snapStep(nullptr, 18, DragKind::SectionPoint), 18);
}

TEST_F(SnappingTest, GridLinesFollowTempoZoomAndOffset) {
  // 30 frames a second, 120 beats a minute, 4 beats a bar: beats of 15, bars of 60.
  EXPECT_EQ(TempoGrid::frameNear(scene, 22), 15);
  EXPECT_EQ(TempoGrid::frameNear(scene, 23), 30);
  // 0.3 pixels a frame: a beat is 5 pixels, too dense; a bar is 18.
  scene.setDisplayZoom(3000);
  EXPECT_EQ(TempoGrid::frameNear(scene, 100), 120);
  EXPECT_EQ(TempoGrid::frameNear(scene, 89), 60);
  // 0.075 pixels a frame: a bar is 5 pixels, no line at all.
  scene.setDisplayZoom(750);
  EXPECT_EQ(TempoGrid::frameNear(scene, 100), TempoGrid::kNone);
  // A beat of 6.5 pixels passes at 0.4 pixels a frame, until the view starts at frame 2
  // and the rounding of both columns leaves 5.
  scene.setDisplayZoom(4000);
  EXPECT_EQ(TempoGrid::frameNear(scene, 22), 15);
  scene.displayFrame = 2;
  EXPECT_EQ(TempoGrid::frameNear(scene, 22), 0);

  scene.setDisplayZoom(10000);
  scene.displayFrame = 0;
  scene.tempoOffset = 0.1f;  // the first beat at frame 3
  EXPECT_EQ(TempoGrid::frameNear(scene, 22), 18);
  // 29.97 frames a second: a beat of 14.985 frames; the 67th line, at 1003.996, is cut.
  scene.tempoOffset = 0.0f;
  scene.videoRate = 30000;
  scene.videoScale = 1001;
  EXPECT_EQ(TempoGrid::frameNear(scene, 1000), 1003);
  // No tempo, or no frame rate: no lines.
  for (const float beatsPerMinute : {0.0f, -120.0f}) {
    scene.tempoBeatPerMinute = beatsPerMinute;
    EXPECT_EQ(TempoGrid::frameNear(scene, 1000), TempoGrid::kNone) << beatsPerMinute;
  }
  scene.tempoBeatPerMinute = 120.0f;
  scene.videoRate = 0;
  EXPECT_EQ(TempoGrid::frameNear(scene, 1000), TempoGrid::kNone);
}

}  // namespace
