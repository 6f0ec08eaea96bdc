// Every service a frame needs, started as the editor starts them and with nothing that
// shows a window: settings (read, never written back), images, the graphics device with
// its shared passes, events, the input service, the cache of decoded media, the effect
// registry, the edit service and the render front. The render workers log from their own
// threads, so what they report is gathered under a lock. Lives for one run.
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "cli/ReadOnlySettings.h"

namespace Edit {
class EditService;
}
namespace Effect {
class EffectService;
}
namespace Media {
class GraphicsService;
class ImageService;
}  // namespace Media
namespace Render {
class RenderService;
}

namespace Cli {

class RenderServices {
 public:
  struct Problem {
    std::string message;
    std::string place;
  };

  RenderServices();
  // Stops the cache and the render workers before anything they use goes.
  ~RenderServices();
  RenderServices(const RenderServices&) = delete;
  RenderServices& operator=(const RenderServices&) = delete;

  Edit::EditService& edit() noexcept { return *edit_; }
  Effect::EffectService& effects() noexcept { return *effects_; }
  Media::GraphicsService& graphics() noexcept { return *graphics_; }
  Media::ImageService& images() noexcept { return *images_; }
  Render::RenderService& render() noexcept { return *render_; }

  // The warnings and errors logged since the last call.
  std::vector<Problem> takeProblems();

 private:
  ReadOnlySettings settings_;
  Media::ImageService* images_ = nullptr;
  Media::GraphicsService* graphics_ = nullptr;
  Effect::EffectService* effects_ = nullptr;
  Edit::EditService* edit_ = nullptr;
  Render::RenderService* render_ = nullptr;
  std::mutex mutex_;
  std::vector<Problem> problems_;
};

}  // namespace Cli
