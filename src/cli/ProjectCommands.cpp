// info and convert: a project loaded and saved with the editor's own code.
#include <filesystem>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "cli/HeadlessServices.h"
#include "cli/ProjectSummary.h"
#include "edit/EditService.h"
#include "edit/ProjectFile.h"
#include "system/Text.h"

namespace Cli {

namespace {

using Edit::ProjectFile::LoadResult;

void report(std::ostream& err, const std::string& file, const std::vector<std::string>& lines,
            const char* kind = "") {
  for (const std::string& line : lines) err << "sorvel2-cli: " << file << ": " << kind << line << '\n';
}

// Loads `file`; prints its warnings and failures and returns the exit status that the
// failures stand for.
int load(HeadlessServices& services, const std::string& file, std::ostream& err) {
  const LoadResult result = Edit::ProjectFile::load(services.edit(), services.effects(), absolutePath(file));
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

int info(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  if (arguments.size() != 1) return usageError(err, "info takes one project file");
  HeadlessServices services;
  const int status = load(services, arguments[0], err);
  if (status != kUnreadable) out << summarizeProject(services.edit().project());
  return status;
}

bool sameFile(const std::string& a, const std::string& b) {
  std::error_code error;
  return std::filesystem::equivalent(a, b, error);
}

int convert(const Arguments& arguments, std::ostream&, std::ostream& err) {
  if (arguments.size() != 2) return usageError(err, "convert takes an input and an output file");
  const std::string& in = arguments[0];
  const std::string& out = arguments[1];
  HeadlessServices services;
  const int status = load(services, in, err);
  if (status == kUnreadable) return status;
  if (status != kSuccess && sameFile(in, out)) {
    err << "sorvel2-cli: " << out << ": not written: it would lose what could not be loaded\n";
    return kPartlyFailed;
  }
  try {
    Edit::ProjectFile::saveAs(services.edit().project(), absolutePath(out));
  } catch (const std::exception& exception) {
    const std::string text = System::Text::singleLine(exception.what());
    err << "sorvel2-cli: " << out << ": cannot be written: " << text << '\n';
    return kUnreadable;
  }
  return status;
}

}  // namespace

const Command kInfoCommand{
    "info", "info PROJECT", "print the scenes, rows, objects and effect chains of a project",
    "usage: sorvel2-cli info PROJECT\n"
    "\n"
    "Loads PROJECT as the editor opens it and prints, for each scene, its size, frame\n"
    "rate, sample rate and its counts of layers and objects, then one line per object\n"
    "with its layer, its frames and its chain of effects. Every problem met while\n"
    "loading follows on standard error, one line each; a line that says \"warning:\"\n"
    "(a file of a newer version, a byte order mark) loses nothing.\n"
    "\n"
    "exit status: 0 loaded whole, with or without warnings, 1 something failed to load,\n"
    "2 the file cannot be read.\n",
    info};

const Command kConvertCommand{
    "convert", "convert IN OUT", "load a project and save it again, as the editor's open and save do",
    "usage: sorvel2-cli convert IN OUT\n"
    "\n"
    "Loads IN as the editor opens it and saves it to OUT as the editor's \"save as\"\n"
    "does, in the program's own form. OUT is written whole or not at all. When part of\n"
    "IN could not be loaded, OUT is still written without it, unless OUT is IN itself:\n"
    "a file is never overwritten with less than it holds. Warnings alone (a file of a\n"
    "newer version) do not stop a conversion onto IN.\n"
    "\n"
    "exit status: 0 converted, 1 converted with parts left out (or refused), 2 IN cannot\n"
    "be read or OUT cannot be written.\n",
    convert};

}  // namespace Cli
