// sorvel2-cli export: a scene written to a file by one of the built-in writers, with the
// editor's own render workers, the writer's settings as the user keeps them (a run may
// override them, never store them), progress on standard error, and SIGINT or SIGTERM
// cancelling at the next frame as the editor's cancel does.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "cli/RenderOutputSource.h"
#include "cli/RenderServices.h"
#include "cli/RenderedProject.h"
#include "edit/EditService.h"
#include "edit/Scene.h"
#include "plugin/BuiltinWriters.h"
#include "system/FileName.h"
#include "system/MainIniFile.h"
#include "system/Terminal.h"
#include "system/Text.h"

namespace Cli {

namespace {

constexpr int kCancelled = 3;

struct ExportOptions {
  std::string project;
  std::string output;
  std::optional<std::int32_t> scene;
  std::int32_t first = -1;
  std::int32_t last = -1;
  std::string writer;
  std::vector<std::pair<std::string, std::string>> settings;
};

std::optional<std::string> parse(const Arguments& arguments, ExportOptions& options) {
  const auto option = [&](const std::string& argument, const std::string& value) -> std::optional<std::string> {
    if (argument == "-o") {
      options.output = value;
    } else if (argument == "--writer") {
      options.writer = value;
    } else if (argument == "--scene") {
      options.scene = parseNumber(value);
      if (!options.scene) return "--scene takes a scene number";
    } else if (argument == "--set") {
      const std::size_t equals = value.find('=');
      if (equals == std::string::npos || equals == 0) return "--set takes KEY=VALUE";
      options.settings.emplace_back(value.substr(0, equals), value.substr(equals + 1));
    } else {
      const std::optional<std::pair<std::int32_t, std::int32_t>> range = parseFrameRange(value);
      if (!range) return "--frames takes a range FIRST-LAST";
      options.first = range->first;
      options.last = range->second;
    }
    return std::nullopt;
  };
  if (std::optional<std::string> wrong = walkProjectArguments(
          arguments, "export", {"-o", "--scene", "--frames", "--writer", "--set"}, options.project, option)) {
    return wrong;
  }
  if (options.project.empty()) return "export takes a project file";
  if (options.output.empty()) return "export needs -o OUT";
  return std::nullopt;
}

// The writer named, or the first that writes the output's extension.
std::shared_ptr<Plugin::OutputPlugin> chooseWriter(const ExportOptions& options, std::string& reason) {
  const std::wstring extension = System::FileName::extension(System::Text::fromUtf8(options.output));
  for (const std::shared_ptr<Plugin::OutputPlugin>& writer : Plugin::builtinWriters()) {
    if (!options.writer.empty()) {
      if (System::Text::toUtf8(writer->name()) == options.writer) return writer;
      continue;
    }
    for (const std::wstring& written : writer->extensions()) {
      if (written == extension) return writer;
    }
  }
  reason = options.writer.empty() ? "no writer writes ." + System::Text::toUtf8(extension) + " files"
                                  : "no writer named '" + options.writer + "'";
  return nullptr;
}

// Set by SIGINT and SIGTERM while an export runs.
volatile std::sig_atomic_t interrupted = 0;
extern "C" void onInterrupt(int) { interrupted = 1; }

// The status line of an export: the share done, and after 15 seconds or 15 frames the
// time left and the pace.
std::string progressLine(std::int32_t now, std::int32_t total, double elapsedMilliseconds) {
  const double share = total > 0 ? 100.0 * now / total : 0.0;
  char line[160];
  if (elapsedMilliseconds < 15000.0 || now < 15) {
    std::snprintf(line, sizeof line, "%3.2f%% (%d/%d)", share, now, total);
  } else {
    const auto left = static_cast<long long>((total - now) * elapsedMilliseconds / (now * 1000.0));
    std::snprintf(line, sizeof line, "%3.2f%% (%d/%d) | RemainingTime %lld:%02lld:%02lld (%1.2ffps)", share, now,
                  total, left / 3600, left / 60 % 60, left % 60, now * 1000.0 / elapsedMilliseconds);
  }
  return line;
}

int exportScene(const Arguments& arguments, std::ostream&, std::ostream& err) {
  ExportOptions options;
  if (const std::optional<std::string> wrong = parse(arguments, options)) return usageError(err, *wrong);
  std::string reason;
  const std::shared_ptr<Plugin::OutputPlugin> writer = chooseWriter(options, reason);
  if (!writer) return usageError(err, reason);
  writer->loadSettings(System::MainIniFile::get());
  for (const auto& [key, value] : options.settings) {
    if (const std::optional<std::string> refused = writer->overrideSetting(key, System::Text::fromUtf8(value))) {
      return usageError(err, *refused);
    }
  }

  RenderServices services;
  int status = openRenderedProject(services, options.project, options.scene, err);
  if (status == kUnreadable) return status;
  const Edit::Scene& current = *services.edit().currentScene();
  Plugin::OutputScene scene;
  scene.width = current.width;
  scene.height = current.height;
  scene.rate = current.videoRate;
  scene.scale = current.videoScale;
  scene.audioRate = current.audioRate;
  scene.lastFrame = current.lastUsedFrame();
  scene.cursorFrame = options.first >= 0 ? options.first : current.cursorFrame;
  scene.rangeStart = options.first >= 0 ? options.first : current.selectionRangeStart;
  scene.rangeEnd = options.first >= 0 ? options.last : current.selectionRangeEnd;

  std::unique_ptr<Plugin::OutputFile> file;
  try {
    file = writer->createFile(scene, absolutePath(options.output), std::make_shared<RenderOutputSource>(services));
  } catch (const std::exception& refused) {
    err << "sorvel2-cli: " << options.output << ": " << System::Text::singleLine(refused.what()) << '\n';
    return kUnreadable;
  }

  interrupted = 0;
  struct sigaction action {};
  action.sa_handler = onInterrupt;
  struct sigaction previousInt {}, previousTerm {};
  sigaction(SIGINT, &action, &previousInt);
  sigaction(SIGTERM, &action, &previousTerm);

  std::exception_ptr failure;
  std::atomic<bool> done{false};
  std::thread saver([&] {
    try {
      file->save();
    } catch (...) {
      failure = std::current_exception();
    }
    done = true;
  });
  const bool terminal = System::standardErrorIsTerminal();
  const auto started = std::chrono::steady_clock::now();
  std::int32_t reportedTenth = -1;
  const auto showProgress = [&] {
    const double elapsed =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
    const std::int32_t now = file->current();
    const std::int32_t total = file->total();
    const std::int32_t tenth = total > 0 ? now * 10 / total : 0;
    if (terminal) {
      err << "\r" << progressLine(now, total, elapsed) << "   " << std::flush;
    } else if (total > 0 && tenth != reportedTenth) {
      reportedTenth = tenth;
      err << progressLine(now, total, elapsed) << '\n';
    }
  };
  while (!done) {
    if (interrupted && !file->cancelled()) file->cancel();
    showProgress();
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  }
  saver.join();
  showProgress();
  if (terminal) err << '\n';
  sigaction(SIGINT, &previousInt, nullptr);
  sigaction(SIGTERM, &previousTerm, nullptr);

  const std::vector<RenderServices::Problem> problems = services.takeProblems();
  reportProblems(err, options.project, problems);
  if (!problems.empty()) status = kPartlyFailed;
  if (failure) {
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& exception) {
      err << "sorvel2-cli: " << options.output << ": " << System::Text::singleLine(exception.what()) << '\n';
    }
    status = kPartlyFailed;
  }
  if (file->cancelled()) {
    err << "sorvel2-cli: " << options.output << ": cancelled; what was written stays\n";
    return kCancelled;
  }
  return status;
}

}  // namespace

const Command kExportCommand{
    "export", "export PROJECT -o OUT", "write a scene to a file with a built-in writer",
    "usage: sorvel2-cli export PROJECT -o OUT [--scene N] [--frames A-B] [--writer NAME]\n"
    "                          [--set KEY=VALUE ...]\n"
    "\n"
    "Loads PROJECT as the editor opens it and writes its current scene (or scene N), or its\n"
    "frames A to B, or else the range selected in the scene, through the editor's own\n"
    "render workers. The writer is the one named, or the first that writes OUT's\n"
    "extension:\n"
    "  AVIファイル出力   .avi   VideoType=RGB24bit|RGBA32bit|YUY2|RGBA64bit(PA64)|RGBA64bit(HF64)\n"
    "                          AudioType=PCM16bit|PCM(float)32bit\n"
    "  PNGファイル出力   .png   one picture (frame A, or the scene's cursor); transparent=0|1\n"
    "  JPEGファイル出力  .jpg   one picture; quality=1..100\n"
    "  連番ファイル出力  .png .jpg  a picture a frame, OUT's name plus the index; transparent, quality\n"
    "Settings come from the user's sorvel2.ini ([Output.NAME]); --set changes one for this\n"
    "run only. Progress goes to standard error. SIGINT or SIGTERM stops the export at its\n"
    "next frame; an AVI cut short is closed so that it plays.\n"
    "\n"
    "exit status: 0 complete, 1 finished with problems (each on standard error), 2 cannot\n"
    "start (the command line, the project, the writer), 3 cancelled\n",
    exportScene};

}  // namespace Cli
