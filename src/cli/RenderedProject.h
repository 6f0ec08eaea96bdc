// What the commands that render a project share: loading it as the editor does, its
// media found below a new folder, the scene made current, and the problems the render
// workers logged printed one line each.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "cli/RenderServices.h"

namespace Cli {

// A frame or scene number of the command line: decimal digits only, at most 2^31 - 1.
std::optional<std::int32_t> parseNumber(const std::string& text);
// "FIRST-LAST" with FIRST not above LAST.
std::optional<std::pair<std::int32_t, std::int32_t>> parseFrameRange(const std::string& text);

// The exit status of what went wrong: kSuccess, kPartlyFailed (something was left out
// while loading), or kUnreadable (no project, no such scene).
int openRenderedProject(RenderServices& services, const std::string& project, std::optional<std::int32_t> scene,
                        std::ostream& err);

// "sorvel2-cli: WHERE: MESSAGE" for each.
void reportProblems(std::ostream& err, const std::string& where, const std::vector<RenderServices::Problem>& problems);

}  // namespace Cli
