// The [FrameRate] section of system.conf maps the frame rates a user reads ("29.97") to
// exact rationals ("30000,1001") and back. Any thread may call these once the settings
// are up; the section is read-only then.
#pragma once

#include <cstdint>

#include "system/IniFile.h"

namespace Setting {

struct Rational {
  std::int32_t rate = 0;
  std::int32_t scale = 1;
  bool operator==(const Rational&) const = default;
};

// The first key whose number equals `value` gives its pair; otherwise value * 10^6 over
// 10^6, reduced by tens only.
Rational frameRateToRational(const System::IniFile::SectionRef& section, double value);

// The first entry whose pair equals (rate, scale) gives its key's number; otherwise
// rate / scale.
double rationalToFrameRate(const System::IniFile::SectionRef& section, std::int32_t rate, std::int32_t scale);

}  // namespace Setting
