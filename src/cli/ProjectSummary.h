// What `sorvel2-cli info` prints of a project: per scene its size, rate, sample rate,
// rows and objects, then one line per object with its place and its chain of effects.
#pragma once

#include <string>

namespace Edit {
class Project;
}

namespace Cli {

std::string summarizeProject(const Edit::Project& project);

}  // namespace Cli
