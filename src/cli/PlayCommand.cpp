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
#include "cli/RenderedProject.h"
#include "edit/EditService.h"
#include "edit/Project.h"
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

std::optional<std::string> parse(const Arguments& arguments, PlayOptions& options) {
  const auto option = [&](const std::string& argument, const std::string& value) -> std::optional<std::string> {
    if (argument == "--scene") {
      options.scene = parseNumber(value);
      if (!options.scene) return "--scene takes a scene number";
    } else if (argument == "--speed") {
      const std::optional<std::int32_t> speed = parseNumber(value);
      if (!speed || *speed < 10 || *speed > 400) return "--speed takes a percentage from 10 to 400";
      options.speed = *speed;
    } else {
      const std::optional<std::pair<std::int32_t, std::int32_t>> range = parseFrameRange(value);
      if (!range) return "--frames takes a range FIRST-LAST";
      options.first = range->first;
      options.last = range->second;
    }
    return std::nullopt;
  };
  if (std::optional<std::string> wrong =
          walkProjectArguments(arguments, "play", {"--scene", "--frames", "--speed"}, options.project, option)) {
    return wrong;
  }
  if (options.project.empty()) return "play takes a project file";
  return std::nullopt;
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
  int status = openRenderedProject(services, options.project, options.scene, err);
  if (status == kUnreadable) return status;
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
  reportProblems(err, options.project, problems);
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
