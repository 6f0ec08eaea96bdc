#include "cli/RenderedProject.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "edit/EditService.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "system/Text.h"

namespace Cli {

std::optional<std::string> walkProjectArguments(const std::vector<std::string>& arguments, const std::string& command,
                                                std::initializer_list<std::string_view> valued, std::string& project,
                                                const OptionHandler& option) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (std::find(valued.begin(), valued.end(), argument) == valued.end()) {
      if (argument.size() > 1 && argument[0] == '-') return "unknown option '" + argument + "'";
      if (!project.empty()) return command + " takes one project file";
      project = argument;
      continue;
    }
    if (i + 1 == arguments.size()) return argument + " needs a value";
    if (std::optional<std::string> refused = option(argument, arguments[++i])) return refused;
  }
  return std::nullopt;
}

std::optional<std::int32_t> parseNumber(const std::string& text) {
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || value < 0 || value > INT32_MAX) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

std::optional<std::pair<std::int32_t, std::int32_t>> parseFrameRange(const std::string& text) {
  const std::size_t dash = text.find('-');
  if (dash == std::string::npos) return std::nullopt;
  const std::optional<std::int32_t> first = parseNumber(text.substr(0, dash));
  const std::optional<std::int32_t> last = parseNumber(text.substr(dash + 1));
  if (!first || !last || *last < *first) return std::nullopt;
  return std::pair{*first, *last};
}

void reportProblems(std::ostream& err, const std::string& where, const std::vector<RenderServices::Problem>& problems) {
  for (const RenderServices::Problem& problem : problems) {
    err << "sorvel2-cli: " << where << ": " << System::Text::singleLine(problem.message) << '\n';
  }
}

int openRenderedProject(RenderServices& services, const std::string& project, std::optional<std::int32_t> scene,
                        std::ostream& err) {
  using Edit::ProjectFile::LoadResult;
  const LoadResult result = Edit::ProjectFile::load(services.edit(), services.effects(), absolutePath(project));
  for (const std::string& warning : result.warnings) err << "sorvel2-cli: " << project << ": warning: " << warning << '\n';
  for (const std::string& problem : result.problems) err << "sorvel2-cli: " << project << ": " << problem << '\n';
  std::vector<RenderServices::Problem> logged = services.takeProblems();
  // The loader's own lines repeat the result's problems.
  std::erase_if(logged, [](const RenderServices::Problem& problem) { return problem.place == "Edit::Project::load"; });
  reportProblems(err, project, logged);
  if (result.outcome == LoadResult::Outcome::Unreadable) return kUnreadable;
  // A project carried to another machine finds its media below its new folder, as the
  // editor offers; nothing is written back, so there is no one to ask.
  Edit::ProjectFile::updateEffectItemFilePath(services.edit().project(), result.storedPath, absolutePath(project),
                                              [] { return true; });
  if (scene) {
    if (!services.edit().project().findScene(*scene)) {
      err << "sorvel2-cli: " << project << ": no scene " << *scene << '\n';
      return kUnreadable;
    }
    services.edit().setScene(*scene);
  }
  return result.problems.empty() && logged.empty() ? kSuccess : kPartlyFailed;
}

}  // namespace Cli
