// The services the media commands of sorvel2-cli need, started as the editor starts
// them and with nothing that shows a window: the settings (read, never written back),
// image files, the input service with its built-in readers, and, when a command draws,
// the graphics device with its frame passes and conversions. Lives for one run, on the
// one thread of the tool; the log's warnings and errors are kept for the command to
// report.
#pragma once

#include <string>
#include <vector>

#include "cli/ReadOnlySettings.h"

namespace Media {
class GraphicsService;
class ImageService;
}  // namespace Media
namespace Plugin {
class InputService;
}

namespace Cli {

class MediaServices {
 public:
  MediaServices();
  ~MediaServices();
  MediaServices(const MediaServices&) = delete;
  MediaServices& operator=(const MediaServices&) = delete;

  Plugin::InputService& input() noexcept { return *input_; }
  Media::ImageService& images() noexcept { return *images_; }
  // Starts the graphics device and its shared resources at the first call.
  Media::GraphicsService& graphics();

  // What was logged as a warning or an error since the last call, each line's text
  // without the place it came from.
  std::vector<std::string> takeProblems();

 private:
  ReadOnlySettings settings_;
  Media::ImageService* images_ = nullptr;
  Plugin::InputService* input_ = nullptr;
  Media::GraphicsService* graphics_ = nullptr;
  std::vector<std::string> problems_;
};

}  // namespace Cli
