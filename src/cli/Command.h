// One command of sorvel2-cli as the dispatcher sees it: its name, the line the tool's
// help shows for it, its own help text, and what runs it. Each command lives in a file
// of its own and is listed once, in Commands.cpp.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Cli {

using Arguments = std::vector<std::string>;

struct Command {
  const char* name;
  const char* synopsis;  // "info PROJECT", as the tool's help lists it
  const char* summary;   // what it does, in a few words
  const char* help;      // the whole text of `help COMMAND`
  // The arguments behind the command's name; returns the exit status.
  int (*run)(const Arguments& arguments, std::ostream& out, std::ostream& err);
};

// Prints "sorvel2-cli: TEXT (see sorvel2-cli --help)" and gives the status of a wrong
// command line.
int usageError(std::ostream& err, const std::string& text);

// `path` made absolute, as the editor's file dialogs give paths, in the program's wide form.
std::wstring absolutePath(const std::string& path);

extern const Command kInfoCommand;
extern const Command kConvertCommand;
extern const Command kProbeCommand;
extern const Command kRenderCommand;
extern const Command kPlayCommand;
extern const Command kExportCommand;

}  // namespace Cli
