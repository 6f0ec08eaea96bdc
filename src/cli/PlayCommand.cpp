// play: a scene played in real time with its sound, through the editor's own player,
// every frame rendered and none shown, with a closing report of how it kept up.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "cli/RenderServices.h"
#include "edit/EditService.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "media/RenderBuffer.h"
#include "platform/sdl_audio/AudioOutputService.h"
#include "render/MoviePlayerInstance.h"
#include "render/RenderService.h"
#include "system/Text.h"

namespace Cli {

namespace {

struct PlayOptions {
  std::string project;
  std::optional<std::int32_t> scene;
  std::int32_t first = -1;
  std::int32_t last = -1;
  std::int32_t speed = 100;
};

std::optional<std::int32_t> number(const std::string& text, long minimum, long maximum) {
  char* end = nullptr;
  const long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || value < minimum || value > maximum) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

std::optional<std::string> parse(const Arguments& arguments, PlayOptions& options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument != "--scene" && argument != "--frames" && argument != "--speed") {
      if (argument.size() > 1 && argument[0] == '-') return "unknown option '" + argument + "'";
      if (!options.project.empty()) return "play takes one project file";
      options.project = argument;
      continue;
    }
    if (i + 1 == arguments.size()) return argument + " needs a value";
    const std::string& value = arguments[++i];
    if (argument == "--scene") {
      options.scene = number(value, 0, INT32_MAX);
      if (!options.scene) return "--scene takes a scene number";
    } else if (argument == "--speed") {
      const std::optional<std::int32_t> speed = number(value, 10, 400);
      if (!speed) return "--speed takes a percentage from 10 to 400";
      options.speed = *speed;
    } else {
      const std::size_t dash = value.find('-');
      const auto first = dash == std::string::npos ? std::nullopt : number(value.substr(0, dash), 0, INT32_MAX);
      const auto last = dash == std::string::npos ? std::nullopt : number(value.substr(dash + 1), 0, INT32_MAX);
      if (!first || !last || *last < *first) return "--frames takes a range FIRST-LAST";
      options.first = *first;
      options.last = *last;
    }
  }
  if (options.project.empty()) return "play takes a project file";
  return std::nullopt;
}

void report(std::ostream& err, const std::string& where, const std::vector<RenderServices::Problem>& problems) {
  for (const RenderServices::Problem& problem : problems) {
    err << "sorvel2-cli: " << where << ": " << System::Text::singleLine(problem.message) << '\n';
  }
}

std::string milliseconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f ms", seconds * 1000.0);
  return text;
}

int play(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  PlayOptions options;
  if (const std::optional<std::string> wrong = parse(arguments, options)) return usageError(err, *wrong);
  RenderServices services;
  using Edit::ProjectFile::LoadResult;
  const LoadResult result = Edit::ProjectFile::load(services.edit(), services.effects(), absolutePath(options.project));
  for (const std::string& warning : result.warnings) err << "sorvel2-cli: " << options.project << ": warning: " << warning << '\n';
  for (const std::string& problem : result.problems) err << "sorvel2-cli: " << options.project << ": " << problem << '\n';
  std::vector<RenderServices::Problem> logged = services.takeProblems();
  std::erase_if(logged, [](const RenderServices::Problem& problem) { return problem.place == "Edit::Project::load"; });
  report(err, options.project, logged);
  if (result.outcome == LoadResult::Outcome::Unreadable) return kUnreadable;
  int status = result.problems.empty() && logged.empty() ? kSuccess : kPartlyFailed;
  Edit::ProjectFile::updateEffectItemFilePath(services.edit().project(), result.storedPath,
                                              absolutePath(options.project), [] { return true; });
  if (options.scene) {
    if (!services.edit().project().findScene(*options.scene)) {
      err << "sorvel2-cli: " << options.project << ": no scene " << *options.scene << '\n';
      return kUnreadable;
    }
    services.edit().setScene(*options.scene);
  }
  const Edit::Scene& scene = *services.edit().currentScene();
  const std::int32_t first = options.first >= 0 ? options.first : 0;
  const std::int32_t last = options.last >= 0 ? options.last : std::max(0, scene.lastUsedFrame());

  Platform::AudioOutputService output;
  Render::MoviePlayerInstance player(Render::MoviePlayerInstance::Parts{
      &services.edit(), &services.render().video(), &services.render().audio(), &output, nullptr, false});
  // Each frame is read back as the preview reads it, and then let go.
  player.setFrameCopy([](Media::RenderBuffer& frame) { return frame.toImageBuffer(); });
  player.setSpeed(options.speed);
  player.startRange(first, last, true);
  if (!output.exists()) err << "sorvel2-cli: no sound device: playing silently\n";
  auto next = std::chrono::steady_clock::now();
  while (player.playing()) {
    player.tick();
    next += std::chrono::milliseconds(Render::MoviePlayerInstance::kTickMilliseconds);
    std::this_thread::sleep_until(next);
  }
  const Render::MoviePlayerInstance::Statistics played = player.statistics();
  const std::vector<RenderServices::Problem> problems = services.takeProblems();
  report(err, options.project, problems);
  if (!problems.empty()) status = kPartlyFailed;

  const std::int32_t frames = last - first + 1;
  out << "frames rendered in time: " << played.framesShown << " of " << frames << '\n';
  out << "frames dropped: " << frames - played.framesShown << '\n';
  out << "audio underruns: " << played.audioUnderruns << '\n';
  const double mean = played.framesTimed > 0 ? played.totalFrameSeconds / played.framesTimed : 0.0;
  out << "frame time: mean " << milliseconds(mean) << ", worst " << milliseconds(played.worstFrameSeconds) << '\n';
  return status;
}

}  // namespace

const Command kPlayCommand{
    "play", "play PROJECT", "play a scene in real time with its sound",
    "usage: sorvel2-cli play PROJECT [--scene N] [--frames A-B] [--speed PERCENT]\n"
    "\n"
    "Loads PROJECT as the editor opens it and plays its current scene, or scene N, from\n"
    "frame A (0) to frame B (its last), through the editor's own player: every frame is\n"
    "rendered and read back as the preview reads it, and none is shown; the sound goes to\n"
    "the sound device (SDL; SDL_AUDIODRIVER=disk writes it to SDL_DISKAUDIOFILE). With\n"
    "--speed the clock runs at that percentage of real time, 10 to 400, and the sound at\n"
    "that share of its rate. With no sound device the scene plays silently. At the end it\n"
    "prints the frames rendered in time, the frames dropped, the times the sound ran dry,\n"
    "and the mean and worst time the renderer took for a frame.\n"
    "\n"
    "exit status: 0 played cleanly, 1 something was left out while loading or playing,\n"
    "2 the project cannot be read, the scene does not exist, or the command line is wrong.\n",
    play};

}  // namespace Cli
