#include "effect/movement/TimeControlCurve.h"

#include <algorithm>
#include <cmath>

namespace Effect::TimeControlCurve {

double solve(double x0, double x1, double x2, double x3, double x) {
  const double width = x3 - x0;
  if (width <= 0.0) return 0.5;
  const auto normalised = [&](double value) { return std::clamp((value - x0) / width, 0.0, 1.0); };
  x = normalised(x);
  x1 = normalised(x1);
  x2 = normalised(x2);
  double t = x;
  for (int step = 0; step < 64; ++step) {
    const double u = 1.0 - t;
    const double error = u * u * (3.0 * x1 * t) + (3.0 * x2 * u + t) * t * t - x;
    if (std::fabs(error) < 0.000001) break;
    const double slope = (9.0 * t * t - 12.0 * t + 3.0) * x1 + (6.0 * t - 9.0 * t * t) * x2 + 3.0 * t * t;
    if (slope == 0.0) break;
    t -= error / slope;
  }
  return t;
}

double evaluate(const std::vector<double>& curve, double x) {
  if (curve.size() < 4 || curve.size() % 4 != 0) return x;
  if (curve.size() == 4) {
    const double a = curve[0], b = curve[1], c = curve[2], d = curve[3];
    const double t = solve(0.0, a, 1.0 - c, 1.0, x);
    const double q = 1.0 - t;
    return (3.0 * t * b) * q * q + (3.0 * (1.0 - d) * q + t) * t * t;
  }
  // Nodes (x, y, dx, dy): a node's handles point opposite ways on its two sides.
  const std::size_t nodes = curve.size() / 4;
  for (std::size_t i = 0; i + 1 < nodes; ++i) {
    const double* n0 = &curve[i * 4];
    const double* n1 = &curve[(i + 1) * 4];
    if (n1[0] < x) continue;
    const double t = solve(n0[0], n0[0] + n0[2], n1[0] - n1[2], n1[0], x);
    const double q = 1.0 - t;
    return (3.0 * (n1[1] - n1[3]) * q + n1[1] * t) * t * t + (3.0 * (n0[1] + n0[3]) * t + q * n0[1]) * q * q;
  }
  return curve[(nodes - 1) * 4 + 1];
}

}  // namespace Effect::TimeControlCurve
