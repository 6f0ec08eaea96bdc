// render: frames of a project composed headless by the editor's own render workers and
// written as PNG.
#include <cctype>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "cli/RenderServices.h"
#include "cli/RenderedProject.h"
#include "edit/EditService.h"
#include "edit/Project.h"
#include "edit/ProjectFile.h"
#include "edit/Scene.h"
#include "media/GraphicsService.h"
#include "media/RenderBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ImageService.h"
#include "media/image/ResourceConvert.h"
#include "render/RenderService.h"
#include "render/RenderVideoWorker.h"
#include "system/FileName.h"
#include "system/Terminal.h"
#include "system/Text.h"

namespace Cli {

namespace {

struct RenderOptions {
  std::string project;
  std::optional<std::int32_t> scene;
  std::int32_t first = -1;
  std::int32_t last = -1;
  std::string output;
  bool sixteenBits = false;
};

// Where the frame number goes in a name: one "%d" or "%0Nd", and nothing else after a '%'.
struct NamePattern {
  std::size_t at = std::string::npos;  // the '%'
  std::size_t length = 0;
  int width = 0;
};

std::optional<NamePattern> findPattern(const std::string& name) {
  NamePattern pattern;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (name[i] != '%') continue;
    std::size_t j = i + 1;
    while (j < name.size() && std::isdigit(static_cast<unsigned char>(name[j]))) ++j;
    if (j == name.size() || name[j] != 'd' || pattern.at != std::string::npos) return std::nullopt;
    pattern.at = i;
    pattern.length = j + 1 - i;
    pattern.width = j > i + 1 ? std::atoi(name.substr(i + 1, j - i - 1).c_str()) : 0;
    if (pattern.width > 10) return std::nullopt;
    i = j;
  }
  return pattern;
}

std::string frameName(const std::string& name, const NamePattern& pattern, std::int32_t frame) {
  if (pattern.at == std::string::npos) return name;
  std::string digits = std::to_string(frame);
  if (static_cast<int>(digits.size()) < pattern.width) digits.insert(0, pattern.width - digits.size(), '0');
  return name.substr(0, pattern.at) + digits + name.substr(pattern.at + pattern.length);
}

std::optional<std::string> parse(const Arguments& arguments, RenderOptions& options) {
  const auto option = [&](const std::string& argument, const std::string& value) -> std::optional<std::string> {
    if (argument == "-o") {
      options.output = value;
    } else if (argument == "--depth") {
      if (value != "8" && value != "16") return "--depth is 8 or 16";
      options.sixteenBits = value == "16";
    } else if (argument == "--scene") {
      options.scene = parseNumber(value);
      if (!options.scene) return "--scene takes a scene number";
    } else if (options.first >= 0) {
      return "give either --frame or --frames, once";
    } else if (argument == "--frame") {
      const std::optional<std::int32_t> frame = parseNumber(value);
      if (!frame) return "--frame takes a frame number";
      options.first = options.last = *frame;
    } else {
      const std::optional<std::pair<std::int32_t, std::int32_t>> range = parseFrameRange(value);
      if (!range) return "--frames takes a range FIRST-LAST";
      options.first = range->first;
      options.last = range->second;
    }
    return std::nullopt;
  };
  if (std::optional<std::string> wrong = walkProjectArguments(
          arguments, "render", {"--scene", "--frame", "--frames", "-o", "--depth"}, options.project, option)) {
    return wrong;
  }
  if (options.project.empty()) return "render takes a project file";
  if (options.first < 0) return "render needs --frame or --frames";
  if (options.output.empty()) return "render needs -o OUT.png";
  if (System::FileName::extension(System::Text::fromUtf8(options.output)) != L"png") return "-o writes a .png file";
  const std::optional<NamePattern> pattern = findPattern(options.output);
  if (!pattern) return "-o takes one %d or %0Nd for the frame number";
  if (options.first != options.last && pattern->at == std::string::npos) return "-o needs %d or %0Nd for a range";
  return std::nullopt;
}

int render(const Arguments& arguments, std::ostream&, std::ostream& err) {
  RenderOptions options;
  if (const std::optional<std::string> wrong = parse(arguments, options)) return usageError(err, *wrong);
  const NamePattern pattern = *findPattern(options.output);
  RenderServices services;
  int status = openRenderedProject(services, options.project, options.scene, err);
  if (status == kUnreadable) return status;

  Render::RenderVideoWorker& worker = services.render().video();
  Media::ResourceConvert& convert = *services.graphics().resourceConvert();
  const bool progress = System::standardErrorIsTerminal() && options.last > options.first;
  const std::int32_t count = options.last - options.first + 1;
  for (std::int32_t frame = options.first; frame <= options.last; ++frame) {
    if (progress) err << "\rframe " << frame << " (" << (frame - options.first + 1) << " of " << count << ")" << std::flush;
    std::shared_ptr<Media::ImageBuffer> image;
    worker.requestRenderingFrame(Render::RenderVideoWorker::Single, frame,
                                 [&](std::int32_t, Media::RenderBuffer& buffer, Anchor::AnchorList&) {
                                   image = buffer.toImageBuffer(convert,
                                                                options.sixteenBits ? Media::Format::Rgba16Unorm
                                                                                    : Media::Format::Rgba8Unorm,
                                                                true);
                                 });
    worker.waitRendering();
    const std::string where = options.project + ": frame " + std::to_string(frame);
    const std::vector<RenderServices::Problem> problems = services.takeProblems();
    if (progress && (!problems.empty() || !image)) err << '\n';
    reportProblems(err, where, problems);
    if (!problems.empty()) status = kPartlyFailed;
    if (!image) {
      err << "sorvel2-cli: " << where << ": not rendered\n";
      status = kPartlyFailed;
      continue;
    }
    const std::string name = frameName(options.output, pattern, frame);
    try {
      services.images().saveToFile(absolutePath(name), Media::ImageContainer::Png, *image, Media::ImageWriteOptions{});
    } catch (const std::exception& exception) {
      if (progress) err << '\n';
      err << "sorvel2-cli: " << name << ": cannot be written: " << System::Text::singleLine(exception.what()) << '\n';
      return kUnreadable;
    }
  }
  if (progress) err << '\n';
  return status;
}

}  // namespace

const Command kRenderCommand{
    "render", "render PROJECT --frame F", "compose frames of a project and write them as PNG",
    "usage: sorvel2-cli render PROJECT [--scene N] --frame F -o OUT.png [--depth 16]\n"
    "       sorvel2-cli render PROJECT [--scene N] --frames A-B -o name_%05d.png [--depth 16]\n"
    "\n"
    "Loads PROJECT as the editor opens it and composes frame F (or each frame from A to B)\n"
    "of its current scene, or of scene N, through the editor's own render workers, then\n"
    "writes it as a PNG with straight alpha, 8 bits a channel or 16 with --depth 16. For a\n"
    "range, OUT holds %d or %0Nd where the frame number goes. Each file is replaced whole\n"
    "or not at all. Progress goes to standard error when that is a terminal; everything\n"
    "that was left out while loading or rendering (an object whose effect does not draw\n"
    "yet, a scene shown inside itself) gets one line there.\n"
    "\n"
    "exit status: 0 every frame rendered cleanly, 1 something was left out, 2 the project\n"
    "cannot be read, the scene does not exist, the output cannot be written, or the\n"
    "command line is wrong.\n",
    render};

}  // namespace Cli
