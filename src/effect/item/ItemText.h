// The number readers of the item texts. They throw the system's own texts, never the
// standard library's, so that what reaches the log and the user reads the same on every
// platform.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace Effect::ItemText {

// Decimal integer as stoi reads it: "invalid stoi argument" or "stoi argument out of
// range", under `place`.
std::int32_t parseInt(std::string_view text, const char* place);
// Double as stod reads it: "invalid stod argument" or "stod argument out of range".
double parseDouble(std::string_view text, const char* place);
// A comma list of doubles, as the movement parameters and the time-control curve hold.
std::vector<double> parseDoubleList(std::string_view text, const char* place);
std::vector<std::string_view> split(std::string_view text, char delimiter);

}  // namespace Effect::ItemText
