#include "cli/RenderOutputSource.h"

#include "cli/RenderServices.h"
#include "edit/EditService.h"
#include "media/GraphicsService.h"
#include "media/RenderBuffer.h"
#include "media/audio/AudioBuffer.h"
#include "media/image/ImageBuffer.h"
#include "render/RenderAudioWorker.h"
#include "render/RenderService.h"
#include "render/RenderVideoWorker.h"

namespace Cli {

std::shared_ptr<Media::ImageBuffer> RenderOutputSource::video(std::int32_t frame, Media::Format format,
                                                              bool straightAlpha) {
  Render::RenderVideoWorker& worker = services_.render().video();
  Media::ResourceConvert& convert = *services_.graphics().resourceConvert();
  std::shared_ptr<Media::ImageBuffer> image;
  worker.requestRenderingFrame(Render::RenderVideoWorker::Single, frame,
                               [&](std::int32_t, Media::RenderBuffer& buffer, Anchor::AnchorList&) {
                                 image = buffer.toImageBuffer(convert, format, straightAlpha);
                               });
  worker.waitRendering();
  return image;
}

std::shared_ptr<Media::AudioBuffer> RenderOutputSource::audio(std::int32_t frame) {
  const std::shared_ptr<Render::RenderAudioWorker::RenderingBuffer> rendering =
      services_.render().audio().startRendering(services_.edit().currentScene(), frame);
  rendering->done.wait();
  if (rendering->buffer.empty()) return nullptr;
  return std::make_shared<Media::AudioBuffer>(rendering->buffer.clone());
}

}  // namespace Cli
