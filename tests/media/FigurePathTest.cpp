// The built-in outlines as numbers: corners of the polygons and the star, the insets that
// decide between stroke and fill, the mapping of a path's square onto pixels, and arcs
// turned into cubic curves.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "media/figure/BuiltinPaths.h"
#include "media/figure/EndpointArc.h"
#include "media/figure/PathData.h"

namespace {

using namespace Resource;

struct Step {
  char kind;  // M, L, A, Q, E (ended open), C (closed)
  double x = 0.0;
  double y = 0.0;
};

class RecordingSink : public PathSink {
 public:
  void beginFigure(double x, double y) override { steps.push_back({'M', x, y}); }
  void addLine(double x, double y) override { steps.push_back({'L', x, y}); }
  void addArc(double x, double y, double, double, double, bool, bool) override { steps.push_back({'A', x, y}); }
  void addQuadraticBezier(double, double, double x, double y) override { steps.push_back({'Q', x, y}); }
  void endFigure(bool closed) override { steps.push_back({closed ? 'C' : 'E'}); }

  std::string kinds() const {
    std::string text;
    for (const Step& step : steps) text += step.kind;
    return text;
  }
  std::vector<Step> steps;
};

// The path in its own square, unscaled.
RecordingSink record(const PathData& path) {
  RecordingSink sink;
  path.emit(sink, path.scaleX(), path.scaleY(), path.originX(), path.originY());
  return sink;
}

TEST(BuiltinPaths, PolygonsStartStraightUpAndGoClockwise) {
  const RecordingSink triangle = record(BuiltinPaths::polygon(3));
  ASSERT_EQ(triangle.kinds(), "MLLC");
  EXPECT_DOUBLE_EQ(triangle.steps[0].x, 0.0);
  EXPECT_DOUBLE_EQ(triangle.steps[0].y, -1.0);
  EXPECT_NEAR(triangle.steps[1].x, std::sqrt(3.0) / 2, 1e-12);
  EXPECT_NEAR(triangle.steps[1].y, 0.5, 1e-12);
  EXPECT_NEAR(triangle.steps[2].x, -std::sqrt(3.0) / 2, 1e-12);

  EXPECT_EQ(record(BuiltinPaths::polygon(5)).kinds(), "MLLLLC");
  const RecordingSink hexagon = record(BuiltinPaths::polygon(6));
  ASSERT_EQ(hexagon.kinds(), "MLLLLLC");
  EXPECT_NEAR(hexagon.steps[3].x, 0.0, 1e-12);
  EXPECT_NEAR(hexagon.steps[3].y, 1.0, 1e-12);
}

TEST(BuiltinPaths, StarInnerPointsLieOnTheLinesOfTheOuterOnes) {
  const RecordingSink star = record(BuiltinPaths::star());
  ASSERT_EQ(star.kinds(), "MLLLLLLLLLC");
  EXPECT_NEAR(BuiltinPaths::kStarInnerRadius, 0.381966, 1e-6);
  for (int i = 0; i < 10; ++i) {
    const double radius = std::hypot(star.steps[i].x, star.steps[i].y);
    EXPECT_NEAR(radius, i % 2 == 0 ? 1.0 : BuiltinPaths::kStarInnerRadius, 1e-12) << i;
  }
  // Inner point 1 is where the line from outer point 0 to outer point 4 crosses the one
  // from 2 to 8: on the first line, the cross product with its direction is zero.
  const Step& a = star.steps[0];
  const Step& b = star.steps[4];
  const Step& inner = star.steps[1];
  EXPECT_NEAR((b.x - a.x) * (inner.y - a.y) - (b.y - a.y) * (inner.x - a.x), 0.0, 1e-12);
}

TEST(BuiltinPaths, InsetsAreTheInscribedRadii) {
  EXPECT_DOUBLE_EQ(BuiltinPaths::rectangle().inset(), 1.0);
  EXPECT_DOUBLE_EQ(BuiltinPaths::circle().inset(), 1.0);
  EXPECT_NEAR(BuiltinPaths::polygon(3).inset(), 0.5, 1e-12);
  EXPECT_NEAR(BuiltinPaths::polygon(5).inset(), 0.809017, 1e-6);
  EXPECT_NEAR(BuiltinPaths::polygon(6).inset(), 0.866025, 1e-6);
  EXPECT_NEAR(BuiltinPaths::star().inset(), 0.309017, 1e-6);
  EXPECT_DOUBLE_EQ(BuiltinPaths::heart().inset(), 0.6666);
  EXPECT_EQ(record(BuiltinPaths::heart()).kinds(), "MAAQQC");
}

TEST(PathData, EmitMapsTheSquareOntoPixelsAndEndsOpenFigures) {
  RecordingSink sink;
  BuiltinPaths::rectangle().emit(sink, 10.0, 20.0, 3.0, 4.0);
  ASSERT_EQ(sink.kinds(), "MLLLC");
  EXPECT_DOUBLE_EQ(sink.steps[2].x, 13.0);
  EXPECT_DOUBLE_EQ(sink.steps[2].y, 24.0);

  // A square of −1 .. 1 drawn over 0 .. 8.
  RecordingSink hexagon;
  BuiltinPaths::polygon(6).emit(hexagon, 8.0, 8.0, 0.0, 0.0);
  EXPECT_DOUBLE_EQ(hexagon.steps[0].x, 4.0);
  EXPECT_DOUBLE_EQ(hexagon.steps[0].y, 0.0);

  PathData open(0.0, 0.0, 1.0, 1.0, 0.0);
  open.moveTo(0, 0).lineTo(1, 0).moveTo(0, 1).lineTo(1, 1).closePath().lineTo(0, 0);
  RecordingSink steps;
  open.emit(steps, 1.0, 1.0, 0.0, 0.0);
  EXPECT_EQ(steps.kinds(), "MLEMLCL");
}

TEST(EndpointArc, HalfCirclesFollowTheSweepAndStayOnTheCircle) {
  // From the right of a circle around (5, 5), clockwise on a y-down screen: through the
  // bottom first.
  const std::vector<CubicSegment> clockwise = endpointArcToCubics(10, 5, 0, 5, 5, 5, 0, true, false);
  ASSERT_EQ(clockwise.size(), 2u);
  EXPECT_NEAR(clockwise[0].x, 5.0, 1e-9);
  EXPECT_NEAR(clockwise[0].y, 10.0, 1e-9);
  EXPECT_EQ(clockwise[1].x, 0.0);
  EXPECT_EQ(clockwise[1].y, 5.0);
  const std::vector<CubicSegment> counter = endpointArcToCubics(10, 5, 0, 5, 5, 5, 0, false, false);
  EXPECT_NEAR(counter[0].y, 0.0, 1e-9);

  // The middle of each quarter curve lies on the circle to within a thousandth.
  double startX = 10;
  double startY = 5;
  for (const CubicSegment& s : clockwise) {
    const double mx = (startX + 3 * s.control1X + 3 * s.control2X + s.x) / 8;
    const double my = (startY + 3 * s.control1Y + 3 * s.control2Y + s.y) / 8;
    EXPECT_NEAR(std::hypot(mx - 5, my - 5), 5.0, 5e-3);
    startX = s.x;
    startY = s.y;
  }
  // Radii too small for the chord grow to half of it, here over the top; a zero radius
  // is a line.
  const std::vector<CubicSegment> grown = endpointArcToCubics(0, 0, 4, 0, 1, 1, 0, true, false);
  ASSERT_EQ(grown.size(), 2u);
  EXPECT_NEAR(grown[0].x, 2.0, 1e-9);
  EXPECT_NEAR(grown[0].y, -2.0, 1e-9);
  EXPECT_EQ(endpointArcToCubics(0, 0, 4, 0, 0, 1, 0, true, false).size(), 1u);
  EXPECT_TRUE(endpointArcToCubics(1, 1, 1, 1, 1, 1, 0, true, false).empty());
}

}  // namespace
