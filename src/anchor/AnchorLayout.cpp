#include "anchor/AnchorLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace Anchor {

namespace {

float distance(const Point& a, const Point& b) { return std::hypot(a.first - b.first, a.second - b.second); }

Point mean(const std::vector<Point>& points) {
  Point sum{0.0f, 0.0f};
  for (const Point& p : points) {
    sum.first += p.first;
    sum.second += p.second;
  }
  const auto n = static_cast<float>(std::max<std::size_t>(points.size(), 1));
  return {sum.first / n, sum.second / n};
}

// The distance from `p` to the line through a and b (to a itself when they coincide).
float lineDistance(const Point& p, const Point& a, const Point& b) {
  const float length = distance(a, b);
  if (length == 0.0f) return distance(p, a);
  return std::abs((b.first - a.first) * (a.second - p.second) - (a.first - p.first) * (b.second - a.second)) / length;
}

// A polygon too thin or too small to aim at becomes a rectangle around it of at least
// 16 pixels a side, turned with its longest edge.
void widenPolygon(AnchorItem& item) {
  std::vector<Point>& points = item.screenPoints;
  const Point centre = mean(points);
  bool thin = false;
  for (std::size_t i = 0; i < points.size() && !thin; ++i) {
    const Point& a = points[i];
    const Point& b = points[(i + 1) % points.size()];
    const float dx = a.first - centre.first, dy = a.second - centre.second;
    thin = dx * dx + dy * dy < 1.0f || lineDistance(centre, a, b) < 8.0f;
  }
  if (!thin) return;
  std::size_t longest = 0;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (distance(points[i], points[(i + 1) % points.size()]) > distance(points[longest], points[(longest + 1) % points.size()])) {
      longest = i;
    }
  }
  const Point& a = points[longest];
  const Point& b = points[(longest + 1) % points.size()];
  const float length = distance(a, b);
  if (length < 1.0f) {
    points = {{centre.first - 8, centre.second - 8}, {centre.first + 8, centre.second - 8},
              {centre.first + 8, centre.second + 8}, {centre.first - 8, centre.second + 8}};
    return;
  }
  // The bounding box in the frame of the longest edge (u along it, v across).
  const float ux = (b.first - a.first) / length, uy = (b.second - a.second) / length;
  float minU = std::numeric_limits<float>::max(), maxU = -minU, minV = minU, maxV = -minU;
  for (const Point& p : points) {
    const float u = (p.first - centre.first) * ux + (p.second - centre.second) * uy;
    const float v = -(p.first - centre.first) * uy + (p.second - centre.second) * ux;
    minU = std::min(minU, u), maxU = std::max(maxU, u), minV = std::min(minV, v), maxV = std::max(maxV, v);
  }
  const auto grow = [](float& low, float& high) {
    const float shortfall = 16.0f - (high - low);
    if (shortfall > 0.0f) low -= shortfall / 2, high += shortfall / 2;
  };
  grow(minU, maxU);
  grow(minV, maxV);
  const auto back = [&](float u, float v) -> Point {
    return {centre.first + u * ux - v * uy, centre.second + u * uy + v * ux};
  };
  points = {back(minU, minV), back(maxU, minV), back(maxU, maxV), back(minU, maxV)};
}

// The first point of a size handle moves away from a point nearer than 16 pixels by
// half the shortfall, so the two stay apart on screen.
void keepApart(Point& moving, const Point& from, const Point& other) {
  const float d = distance(from, other);
  if (d == 0.0f || d >= 16.0f) return;
  const float push = (16.0f - d) / 2 / d;
  moving.first += (from.first - other.first) * push;
  moving.second += (from.second - other.second) * push;
}

bool insidePolygon(const std::vector<Point>& points, float x, float y) {
  int winding = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point& a = points[i];
    const Point& b = points[(i + 1) % points.size()];
    const float side = (b.first - a.first) * (y - a.second) - (x - a.first) * (b.second - a.second);
    if (a.second <= y) {
      if (b.second > y && side > 0) ++winding;
    } else if (b.second <= y && side < 0) {
      --winding;
    }
  }
  return winding != 0;
}

bool within(const Point& p, float x, float y, float radius) { return distance(p, {x, y}) <= radius; }

}  // namespace

void layoutAnchors(AnchorList& items, const PictureRect& picture, float controlWidth) {
  const float cx = (picture.left + picture.right) / 2, cy = (picture.top + picture.bottom) / 2;
  const float hw = std::max(1.0f, picture.right - picture.left) / 2;
  const float hh = std::max(1.0f, picture.bottom - picture.top) / 2;
  float cornerTop = std::max(picture.top, 0.0f);
  for (AnchorItem& item : items) {
    item.radius = 0.0f;
    if (item.flags & kCornerIconFlag) {
      // Corner icons stack down the picture's right edge; their points are a size.
      const float width = item.points.empty() ? 0.0f : item.points[0].first;
      const float height = item.points.empty() ? 0.0f : item.points[0].second;
      const float right = std::min(controlWidth, picture.right);
      item.screenPoints = {{right - width, cornerTop}, {right, cornerTop + height}};
      cornerTop += height;
    } else {
      item.screenPoints.clear();
      for (const Point& p : item.points) item.screenPoints.push_back({cx + p.first * hw, cy - p.second * hh});
    }
    std::vector<Point>& screen = item.screenPoints;
    if (item.kind == 9 && screen.size() >= 2) {
      widenPolygon(item);
      const Point centre = mean(screen);
      for (const Point& p : screen) item.radius = std::max(item.radius, distance(p, centre));
    } else if (item.kind == 4 && screen.size() >= 3) {
      // The handle keeps its length on screen whatever the zoom.
      const float s = distance(screen[0], screen[2]);
      screen[1] = s > 0.0f ? Point{screen[0].first + (screen[1].first - screen[0].first) / s,
                                   screen[0].second + (screen[1].second - screen[0].second) / s}
                           : screen[0];
      const float length = distance(screen[0], screen[1]);
      item.handleScale[0] = length > 0.0f ? 40.0f / length : 0.0f;
    } else if (item.kind == 5 && screen.size() >= 3) {
      const Point original = screen[0];
      keepApart(screen[0], original, screen[1]);
      keepApart(screen[0], original, screen[2]);
    }
    item.centre = mean(screen);
  }
}

bool hits(const AnchorItem& item, float x, float y) {
  const std::vector<Point>& p = item.screenPoints;
  if (p.empty()) return false;
  switch (item.kind) {
    case 1:
      return p.size() >= 2 && x >= std::min(p[0].first, p[1].first) && x <= std::max(p[0].first, p[1].first) &&
             y >= std::min(p[0].second, p[1].second) && y <= std::max(p[0].second, p[1].second);
    case 4:
      return p.size() >= 2 && within(p[1], x, y, 5.0f);
    case 5:
      return std::abs(x - p[0].first) <= 6.0f && std::abs(y - p[0].second) <= 6.0f;
    case 6:
      return within(p[0], x, y, 20.0f);
    case 7:
      return within(p[0], x, y, 10.0f);
    case 8:
      return within(p[0], x, y, 36.0f);
    case 9:
      return insidePolygon(p, x, y);
    default:
      return false;
  }
}

const AnchorItem* hitTest(const AnchorList& items, float x, float y, const Edit::Object* focus) {
  const AnchorItem* best = nullptr;
  auto rank = [&](const AnchorItem& item) {
    const float dx = x - item.centre.first, dy = y - item.centre.second;
    return std::tuple(item.kind, dx * dx + dy * dy + 2 * item.radius, item.object.get() != focus, item.code);
  };
  for (const AnchorItem& item : items) {
    if ((item.flags & kNotHitFlag) || !hits(item, x, y)) continue;
    if (!best || rank(item) < rank(*best)) best = &item;
  }
  return best;
}

}  // namespace Anchor
