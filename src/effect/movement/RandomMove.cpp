#include "effect/movement/RandomMove.h"

#include <algorithm>
#include <cmath>

#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"

namespace Effect {

namespace {

constexpr std::uint64_t kC1 = 0x137bd137bd137bd1ULL;
constexpr std::uint64_t kC2 = 0x37bd137bd137bd13ULL;
constexpr std::uint64_t kC3 = 0x7bd137bd137bd137ULL;
constexpr std::uint64_t kC4 = 0xbd137bd137bd137bULL;

// FNV-1a over the UTF-16 code units of the name, low byte first, as the name is stored
// on the system the files come from; so a seed does not depend on wchar_t's width.
std::uint64_t nameHash(const std::wstring& name) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  const auto add = [&hash](std::uint16_t unit) {
    for (const std::uint8_t byte : {static_cast<std::uint8_t>(unit & 0xff), static_cast<std::uint8_t>(unit >> 8)}) {
      hash ^= byte;
      hash *= 0x100000001b3ULL;
    }
  };
  for (const wchar_t c : name) {
    const auto code = static_cast<std::uint32_t>(c);
    if (code < 0x10000) {
      add(static_cast<std::uint16_t>(code));
    } else {
      const std::uint32_t rest = code - 0x10000;
      add(static_cast<std::uint16_t>(0xd800 + (rest >> 10)));
      add(static_cast<std::uint16_t>(0xdc00 + (rest & 0x3ff)));
    }
  }
  return hash;
}

std::uint64_t signExtended(std::int64_t value) { return static_cast<std::uint64_t>(value); }

// f(a, b, c): the control point beside b, pulled along the direction from a to c.
double handle(double a, double b, double c) {
  const double e = c - a;
  const double g = (b - c) * (b - c) + (a - b) * (a - b);
  const double h2 = e * e + g;
  if (h2 < 1.0) return b;
  return b + g * e / h2 / 2.0;
}

}  // namespace

std::int64_t RandomMove::seed(const EffectItemNumber& item, const ItemContext& context) {
  const std::uint64_t hash = nameHash(item.name());
  const std::uint64_t mixed = (((signExtended(item.scale()) << 8) ^ signExtended(item.maxValue())) << 8) ^ (hash >> 32);
  const auto itemSeed = static_cast<std::uint32_t>(mixed ^ signExtended(item.minValue()) ^ hash);
  const auto subIndex = static_cast<std::uint32_t>(context.subIndex);
  const auto start = static_cast<std::uint32_t>(context.object ? context.object->start : 0);
  const std::uint32_t seed = itemSeed ^ (((subIndex << 8) ^ start) << 8) ^ static_cast<std::uint32_t>(context.seed);
  return static_cast<std::int32_t>(seed);
}

float RandomMove::random(std::int64_t seed, std::int64_t n) {
  const std::uint64_t a = signExtended(seed);
  const std::uint64_t b = signExtended(n);
  std::uint64_t u = b * 97553 + a * 135829;
  u = ((u << 17) ^ u ^ kC1) + a;
  u = ((u >> 19) ^ u ^ kC2) + b;
  u = ((u << 41) ^ u ^ kC3) + a;
  u = ((u >> 47) ^ u ^ kC4) + b;
  u = u * 97555 - (u / 135829) * 135829;
  u = (u << 17) ^ u ^ kC1;
  u = (u >> 19) ^ u ^ kC2;
  u = (u << 41) ^ u ^ kC3;
  u = (u >> 47) ^ u ^ kC4;
  return static_cast<float>(u % 0x100000001ULL) * 2.3283064e-10f;
}

double RandomMove::getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const {
  const double lo = item.getValue(0);
  const double hi = item.getValue(1);
  const double parameter = item.movementParams().empty() ? paramDefaults_.at(0) : item.movementParams()[0];
  const double period = std::max(std::trunc(parameter), 1.0);
  const double x = time.offset / period;
  const double whole = std::floor(x);
  const double p = x - whole;
  const auto k = static_cast<std::int64_t>(whole);
  const std::int64_t s = seed(item, context);
  const auto r = [&](std::int64_t n) { return static_cast<double>(random(s, n)) * (hi - lo) + lo; };
  const double rm = r(k - 1), r0 = r(k), r1 = r(k + 1), r2 = r(k + 2);
  const double c1 = handle(rm, r0, r1);
  const double c2 = handle(r2, r1, r0);
  const double q = 1.0 - p;
  return (3.0 * c2 * q + r1 * p) * p * p + (3.0 * c1 * p + q * r0) * q * q;
}

bool RandomMove::showsPath(const EffectItemNumber& /*item*/) const { return false; }

}  // namespace Effect
