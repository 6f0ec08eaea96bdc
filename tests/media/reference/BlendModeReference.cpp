#include "media/reference/BlendModeReference.h"

#include <algorithm>
#include <cmath>

namespace Media {

namespace {

struct Yuv {
  float y, u, v;
};

Yuv toYuv(float r, float g, float b) noexcept {
  return {0.299f * r + 0.587f * g + 0.114f * b, -0.169f * r - 0.331f * g + 0.5f * b,
          0.5f * r - 0.419f * g - 0.081f * b};
}

Rgba fromYuv(const Yuv& c, float alpha) noexcept {
  return {c.y + 1.402f * c.v, c.y - 0.344f * c.u - 0.714f * c.v, c.y + 1.772f * c.u, alpha};
}

// All four components divided by alpha; a pixel without alpha normalises to nothing.
Rgba normalised(const Rgba& v) noexcept {
  if (v[3] <= 0.0f) return {0.0f, 0.0f, 0.0f, 0.0f};
  return {v[0] / v[3], v[1] / v[3], v[2] / v[3], 1.0f};
}

Rgba scaled(const Rgba& v, float k) noexcept { return {v[0] * k, v[1] * k, v[2] * k, v[3] * k}; }

Rgba sum(const Rgba& a, const Rgba& b) noexcept { return {a[0] + b[0], a[1] + b[1], a[2] + b[2], a[3] + b[3]}; }

float channel(std::int32_t mode, float s, float a, float d) noexcept {
  switch (mode) {
    case 1: return d * a + s;
    case 2: return d * a - s;
    case 3: return d * s;
    case 4: return s + d * (a - s);
    case 5: return d < 0.5f ? 2.0f * d * s : 2.0f * (s + d * (a - s)) - a;
    case 6: return std::max(s, a * d);
    case 7: return std::min(s, a * d);
    case 10: return std::clamp(d * a + s - a, 0.0f, a);
    case 11: return std::clamp(d * a + 2.0f * s - a, 0.0f, a);
    case 12: return std::fabs(d * a - s);
    default: return s;
  }
}

}  // namespace

bool blendModeReference(std::int32_t mode, float opacity, const Rgba& source, const Rgba& frame, Rgba& out) noexcept {
  if (mode < 0 || (mode > 12 && mode < 20) || mode > 23) mode = 0;
  const float a = source[3];
  if (mode != 0 && a < 0.001f) return false;
  const float o = opacity;
  const float e = frame[3];
  switch (mode) {
    case 20: out = scaled(normalised(sum(scaled(source, o), frame)), std::min(a * o + e, 1.0f)); return true;
    case 21:
      out = scaled(normalised(sum(scaled(source, o), scaled(frame, 1.0f - a * o))), std::min(a * o + e, 1.0f));
      return true;
    case 22: out = scaled(normalised(sum(scaled(source, o), frame)), std::max(e, a * o)); return true;
    case 23: out = scaled(normalised(frame), std::max(e - a * o, 0.0f)); return true;
    default: break;
  }
  Rgba colour;
  if (mode == 8 || mode == 9) {
    const Yuv s = toYuv(source[0], source[1], source[2]);
    const Yuv d = toYuv(a * frame[0], a * frame[1], a * frame[2]);
    colour = mode == 8 ? fromYuv({s.y, d.u, d.v}, a) : fromYuv({d.y, s.u, s.v}, a);
  } else {
    for (int c = 0; c < 3; ++c) colour[c] = channel(mode, source[c], a, frame[c]);
  }
  out = {colour[0] * o, colour[1] * o, colour[2] * o, a * o};
  return true;
}

}  // namespace Media
