// An export's frames and sound as the editor's render workers make them: each frame a
// single render of the current scene, read back in the writer's format, and its mix.
#pragma once

#include "plugin/OutputFile.h"

namespace Cli {

class RenderServices;

class RenderOutputSource final : public Plugin::OutputSource {
 public:
  explicit RenderOutputSource(RenderServices& services) : services_(services) {}

  std::shared_ptr<Media::ImageBuffer> video(std::int32_t frame, Media::Format format, bool straightAlpha) override;
  std::shared_ptr<Media::AudioBuffer> audio(std::int32_t frame) override;

 private:
  RenderServices& services_;
};

}  // namespace Cli
