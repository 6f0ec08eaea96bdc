// How quads become triangles: the corner order, the normal of a quad, and the other
// diagonal for a folded quad.
#include <gtest/gtest.h>

#include "media/QuadSplit.h"

namespace {

using Media::XYZ_COL;
using Media::XYZ_COL_NORM;

XYZ_COL corner(float x, float y, float z, float tag) { return {x, y, z, tag, 0, 0, 0}; }

TEST(VertexListSplit, QuadBecomesP0P1P3AndP3P1P2AndAFlatOneGetsItsUnitNormal) {
  // In the x-y plane; (p1 - p0) x (p3 - p0) = x by y = +z.
  const XYZ_COL quad[4] = {corner(0, 0, 2, 0), corner(2, 0, 2, 1), corner(2, 2, 2, 2), corner(0, 2, 2, 3)};
  XYZ_COL six[6];
  XYZ_COL_NORM lit[6];
  Media::splitQuad(quad, six);
  Media::splitQuadWithNormal(quad, lit);
  const float expected[6] = {0, 1, 3, 3, 1, 2};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(six[i].r, expected[i]) << i;
    EXPECT_EQ(lit[i].r, expected[i]) << i;  // the data stays with its corner
    EXPECT_EQ(lit[i].z, 2) << i;
    EXPECT_FLOAT_EQ(lit[i].nx, 0) << i;
    EXPECT_FLOAT_EQ(lit[i].ny, 0) << i;
    EXPECT_FLOAT_EQ(lit[i].nz, 1) << i;
  }
}

TEST(VertexListSplit, FoldedQuadIsSplitAlongTheOtherDiagonal) {
  // p2 lies past the diagonal p1-p3 and under the plane of p0, p1, p3: the triangles
  // p0 p1 p3 and p3 p1 p2 face opposite ways.
  const XYZ_COL quad[4] = {corner(0, 0, 0, 0), corner(1, 0, 0, 1), corner(-1, -1, 1, 2), corner(0, 1, 0, 3)};
  XYZ_COL_NORM six[6];
  Media::splitQuadWithNormal(quad, six);
  const float expected[6] = {1, 2, 0, 0, 2, 3};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(six[i].r, expected[i]) << i;
  // Normal of p1 p2 p0: (-2,-1,1) x (-1,0,0) = (0,-1,-1); of p0 p2 p3: (-1,-1,1) x (0,1,0) = (-1,0,-1).
  // Their sum (-1,-1,-2) normalised:
  const float length = std::sqrt(6.0f);
  EXPECT_NEAR(six[0].nx, -1 / length, 1e-6);
  EXPECT_NEAR(six[0].ny, -1 / length, 1e-6);
  EXPECT_NEAR(six[0].nz, -2 / length, 1e-6);
}

}  // namespace
