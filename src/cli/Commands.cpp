#include "cli/Commands.h"

#include <filesystem>
#include <iomanip>
#include <sstream>

#include "cli/Command.h"
#include "system/Text.h"

namespace Cli {

namespace {

// Every command, in the order the tool's help lists them.
const Command* const kCommands[] = {&kInfoCommand, &kConvertCommand, &kProbeCommand, &kRenderCommand, &kPlayCommand, &kExportCommand};

const Command* findCommand(const std::string& name) {
  for (const Command* command : kCommands) {
    if (name == command->name) return command;
  }
  return nullptr;
}

std::string toolHelp() {
  std::ostringstream text;
  text << "usage: sorvel2-cli <command> [arguments]\n"
          "\n"
          "Works on projects (.svj2) and media files with the editor's own code, without a window.\n"
          "\n"
          "commands:\n";
  for (const Command* command : kCommands) {
    text << "  " << std::left << std::setw(24) << command->synopsis << command->summary << '\n';
  }
  text << "  " << std::left << std::setw(24) << "help [COMMAND]"
       << "print this text, or the help of one command\n"
          "\n"
          "exit status: 0 everything loaded (warnings may have been printed), 1 something in\n"
          "a file could not be loaded, 2 a file could not be read at all or the command\n"
          "line is wrong.\n";
  return text.str();
}

bool asksForHelp(const Arguments& arguments) {
  for (const std::string& argument : arguments) {
    if (argument == "--help" || argument == "-h") return true;
  }
  return false;
}

}  // namespace

int usageError(std::ostream& err, const std::string& text) {
  err << "sorvel2-cli: " << text << " (see sorvel2-cli --help)\n";
  return kUnreadable;
}

std::wstring absolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(std::filesystem::path(path), error);
  return System::Text::fromUtf8(error ? path : absolute.lexically_normal().string());
}

int run(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  if (arguments.empty()) return usageError(err, "no command given");
  const std::string& name = arguments.front();
  const Arguments rest(arguments.begin() + 1, arguments.end());
  if (name == "--help" || name == "-h" || name == "help") {
    if (rest.empty()) return out << toolHelp(), kSuccess;
    const Command* topic = findCommand(rest.front());
    if (!topic) return usageError(err, "unknown command '" + rest.front() + "'");
    out << topic->help;
    return kSuccess;
  }
  const Command* command = findCommand(name);
  if (!command) return usageError(err, "unknown command '" + name + "'");
  if (asksForHelp(rest)) return out << command->help, kSuccess;
  return command->run(rest, out, err);
}

}  // namespace Cli
