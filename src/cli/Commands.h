// The commands of `sorvel2-cli`: the editor's own loading and saving, run without a
// window for scripts, batch jobs and render farms. Errors go to `err`, one line each,
// naming the file and what is wrong.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

// Exit statuses.
inline constexpr int kSuccess = 0;       // loaded whole; warnings may have been printed
inline constexpr int kPartlyFailed = 1;  // something in the file could not be used
inline constexpr int kUnreadable = 2;    // the file could not be used at all, or bad arguments

// `arguments` without the program's name.
int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace Cli
