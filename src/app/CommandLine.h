// The command line as the edit service reads it at application begin: a map from a
// key to a value. Arguments are scanned in order; the last project argument wins.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace App {

enum class CommandLineKey : int {
  Project = 1,  // a project file to open
  Restart = 2,  // "-restart": reopen what the module installation saved
  Recover = 3,  // set when the user accepts a recovery; never from the command line
};

using CommandLineMap = std::map<CommandLineKey, std::wstring>;

// `arguments` excludes the program name. Logs "option : restart" and "project : %s".
CommandLineMap parseCommandLine(const std::vector<std::wstring>& arguments);

}  // namespace App
