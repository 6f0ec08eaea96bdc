#include "cli/Commands.h"

#include <filesystem>

#include "cli/HeadlessServices.h"
#include "cli/ProjectSummary.h"
#include "edit/EditService.h"
#include "edit/ProjectFile.h"
#include "system/Text.h"

namespace Cli {

namespace {

using Edit::ProjectFile::LoadResult;

constexpr const char* kToolHelp =
    "usage: sorvel2-cli <command> [arguments]\n"
    "\n"
    "Works on project files (.svj2) with the editor's own code, without a window.\n"
    "\n"
    "commands:\n"
    "  info PROJECT       print the scenes, rows, objects and effect chains of a project\n"
    "  convert IN OUT     load a project and save it again, as the editor's open and save do\n"
    "  help [COMMAND]     print this text, or the help of one command\n"
    "\n"
    "exit status: 0 everything loaded (warnings may have been printed), 1 something in\n"
    "the file could not be loaded, 2 the file could not be read at all or the command\n"
    "line is wrong.\n";

constexpr const char* kInfoHelp =
    "usage: sorvel2-cli info PROJECT\n"
    "\n"
    "Loads PROJECT as the editor opens it and prints, for each scene, its size, frame\n"
    "rate, sample rate and its counts of layers and objects, then one line per object\n"
    "with its layer, its frames and its chain of effects. Every problem met while\n"
    "loading follows on standard error, one line each; a line that says \"warning:\"\n"
    "(a file of a newer version, a byte order mark) loses nothing.\n"
    "\n"
    "exit status: 0 loaded whole, with or without warnings, 1 something failed to load,\n"
    "2 the file cannot be read.\n";

constexpr const char* kConvertHelp =
    "usage: sorvel2-cli convert IN OUT\n"
    "\n"
    "Loads IN as the editor opens it and saves it to OUT as the editor's \"save as\"\n"
    "does, in the program's own form. OUT is written whole or not at all. When part of\n"
    "IN could not be loaded, OUT is still written without it, unless OUT is IN itself:\n"
    "a file is never overwritten with less than it holds. Warnings alone (a file of a\n"
    "newer version) do not stop a conversion onto IN.\n"
    "\n"
    "exit status: 0 converted, 1 converted with parts left out (or refused), 2 IN cannot\n"
    "be read or OUT cannot be written.\n";

// The project keeps the path it is saved under, so it is made absolute first, as the
// editor's file dialogs give it.
std::wstring wide(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(std::filesystem::path(path), error);
  return System::Text::fromUtf8(error ? path : absolute.lexically_normal().string());
}

void report(std::ostream& err, const std::string& file, const std::vector<std::string>& lines,
            const char* kind = "") {
  for (const std::string& line : lines) err << "sorvel2-cli: " << file << ": " << kind << line << '\n';
}

// Loads `file`; prints its warnings and failures and returns the exit status that the
// failures stand for.
int load(HeadlessServices& services, const std::string& file, std::ostream& err) {
  const LoadResult result = Edit::ProjectFile::load(services.edit(), services.effects(), wide(file));
  std::vector<std::string> failures = result.problems;
  // What the reader found is in the result already, warnings and failures apart; the
  // logged warnings add the values that items refused, which are lost.
  for (const std::string& warning : services.takeWarnings()) {
    if (warning.find("(Edit::Project::load)") == std::string::npos) failures.push_back(warning);
  }
  report(err, file, result.warnings, "warning: ");
  report(err, file, failures);
  if (result.outcome == LoadResult::Outcome::Unreadable) return kUnreadable;
  return failures.empty() ? kSuccess : kPartlyFailed;
}

int info(const std::string& file, std::ostream& out, std::ostream& err) {
  HeadlessServices services;
  const int status = load(services, file, err);
  if (status != kUnreadable) out << summarizeProject(services.edit().project());
  return status;
}

bool sameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return std::filesystem::equivalent(a, b, error);
}

int convert(const std::string& in, const std::string& out, std::ostream& err) {
  HeadlessServices services;
  const int status = load(services, in, err);
  if (status == kUnreadable) return status;
  if (status != kSuccess && sameFile(in, out)) {
    err << "sorvel2-cli: " << out << ": not written: it would lose what could not be loaded\n";
    return kPartlyFailed;
  }
  try {
    Edit::ProjectFile::saveAs(services.edit().project(), wide(out));
  } catch (const std::exception& exception) {
    const std::string text = System::Text::singleLine(exception.what());
    err << "sorvel2-cli: " << out << ": cannot be written: " << text << '\n';
    return kUnreadable;
  }
  return status;
}

bool asksForHelp(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    if (argument == "--help" || argument == "-h") return true;
  }
  return false;
}

int usageError(std::ostream& err, const std::string& text) {
  err << "sorvel2-cli: " << text << " (see sorvel2-cli --help)\n";
  return kUnreadable;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (arguments.empty()) return usageError(err, "no command given");
  const std::string& command = arguments.front();
  const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
  if (command == "--help" || command == "-h" || command == "help") {
    const std::string topic = rest.empty() ? "" : rest.front();
    if (topic == "info") {
      out << kInfoHelp;
    } else if (topic == "convert") {
      out << kConvertHelp;
    } else if (topic.empty()) {
      out << kToolHelp;
    } else {
      return usageError(err, "unknown command '" + topic + "'");
    }
    return kSuccess;
  }
  if (command == "info") {
    if (asksForHelp(rest)) return out << kInfoHelp, kSuccess;
    if (rest.size() != 1) return usageError(err, "info takes one project file");
    return info(rest[0], out, err);
  }
  if (command == "convert") {
    if (asksForHelp(rest)) return out << kConvertHelp, kSuccess;
    if (rest.size() != 2) return usageError(err, "convert takes an input and an output file");
    return convert(rest[0], rest[1], err);
  }
  return usageError(err, "unknown command '" + command + "'");
}

}  // namespace Cli
