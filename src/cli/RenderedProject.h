// What the commands that render a project share: loading it as the editor does, its
// media found below a new folder, the scene made current, and the problems the render
// workers logged printed one line each.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/RenderServices.h"

namespace Cli {

// Walks the arguments of a command that takes one project file: the options named in
// `valued` take the next argument, handed to `option`; any other argument is the project.
// Returns what is wrong with the line: an unknown option, a missing value, a second
// project, or what `option` refused.
using OptionHandler = std::function<std::optional<std::string>(const std::string& option, const std::string& value)>;
std::optional<std::string> walkProjectArguments(const std::vector<std::string>& arguments, const std::string& command,
                                                std::initializer_list<std::string_view> valued, std::string& project,
                                                const OptionHandler& option);

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
