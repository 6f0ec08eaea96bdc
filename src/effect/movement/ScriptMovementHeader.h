// The header lines of a movement script (`.tra2`, `.tra`): what the movement offers
// (two-point, acceleration, deceleration, time control), its parameters, its label and
// description. Running the script's body is the script host's work.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Effect {

struct ScriptMovementHeader {
  std::int32_t twoPoint = -1;
  std::int32_t acceleration = -1;
  std::int32_t deceleration = -1;
  bool timeControl = false;
  std::vector<double> paramDefaults;
  std::wstring label;
  std::wstring information;

  // Reads every line that starts with "--"; "--[[" comments run to the next "]]". A
  // number that does not read is skipped with a warning naming `fileName`.
  static ScriptMovementHeader parse(std::string_view text, const std::wstring& fileName);
};

}  // namespace Effect
