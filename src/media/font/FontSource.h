// What the font list asks of the platform's font library: the installed families in the
// library's order, the family it falls back on, and the design metrics of one font.
// Weights are on the scale of 1 to 1000 (400 regular, 700 bold), stretches on 1 to 9 (5
// normal); the platform maps them to its own. Any thread may ask for metrics.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Media {

// One installed family and the style of its first font.
struct FontFamily {
  std::wstring name;  // as the user's language writes it, where the font says
  std::int32_t weight = 400;
  std::int32_t stretch = 5;
  bool italic = false;
  bool symbol = false;  // its characters are symbols rather than letters
};

// One font of a family: what text drawing asks the platform for.
struct FontHandle {
  std::wstring family;
  std::int32_t weight = 400;
  std::int32_t stretch = 5;
  bool italic = false;

  bool operator==(const FontHandle&) const = default;
};

// Design units of one font; distances downwards from the baseline are positive for the
// descent, and the strike position is measured upwards.
struct FontDesignMetrics {
  double designUnitsPerEm = 0.0;
  double ascent = 0.0;
  double descent = 0.0;
  double lineGap = 0.0;
  double strikethroughPosition = 0.0;
  double strikethroughThickness = 0.0;
};

class FontSource {
 public:
  virtual ~FontSource() = default;

  virtual std::vector<FontFamily> families() = 0;
  // The family the system draws text with when nothing else is asked for.
  virtual std::wstring systemDefaultFamily() = 0;
  // Nothing for a font the library cannot make.
  virtual std::optional<FontDesignMetrics> designMetrics(const FontHandle& font) = 0;
};

}  // namespace Media
