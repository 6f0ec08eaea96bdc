// One light of a lit 3D scene as the light pass reads it: an element of the array
// `source` in the pass's constants, so its bytes follow the shader's packing exactly.
// The light effects fill a frame's list while the frame is drawn (RenderBuffer::lights).
#pragma once

#include <cstddef>
#include <cstdint>

namespace Media {

enum class LightType : std::int32_t { Ambient = 0, Parallel = 1, ParallelWithShadow = 2 };

struct LightRecord {
  LightType type = LightType::Ambient;
  float pos[3] = {0, 0, 0};      // the unit vector towards the light; 0 for ambient light
  float col[4] = {0, 0, 0, 0};   // red, green, blue times brightness; max(0, 1 - brightness)
  float range = 0;               // of the shadow
  float depth = 0;               // of the shadow
  float dummy[2] = {0, 0};
};

static_assert(sizeof(LightRecord) == 48);
static_assert(offsetof(LightRecord, pos) == 4);
static_assert(offsetof(LightRecord, col) == 16);
static_assert(offsetof(LightRecord, range) == 32);
static_assert(offsetof(LightRecord, depth) == 36);

// The light pass reads at most this many lights; later ones are ignored.
inline constexpr std::size_t kMaxLights = 8;

}  // namespace Media
