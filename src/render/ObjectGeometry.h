// A shape that takes the place of an object's plain quad: quads in the object's own
// space, four corners each around the edge, texture 0 to 1, and each vertex's alpha
// factor in `s`. The particle output makes one a frame; drawn in one call.
#pragma once

#include "media/VertexList.h"

namespace Render {

struct ObjectGeometry {
  Media::VertexListQuadPosUv quads;
};

}  // namespace Render
