#include "cli/MediaServices.h"

#include <utility>

#include "media/GraphicsService.h"
#include "media/image/ImageService.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "platform/qt/QtImageCodec.h"
#include "plugin/InputService.h"
#include "setting/SettingService.h"
#include "system/Log.h"
#include "system/Singleton.h"

namespace Cli {

namespace {

template <class T>
using Service = System::Singleton<T>;

// An exception logs "<message> in <place>() [<note>]"; a user wants the message.
std::string withoutPlace(const std::string& line) {
  const std::size_t at = line.find(" in ");
  return at == std::string::npos ? line : line.substr(0, at);
}

}  // namespace

MediaServices::MediaServices() {
  System::Log::setHandler([this](const System::Log::Type& type, const char*, const char* message) {
    if (type.level >= System::Log::Warn.level) problems_.push_back(withoutPlace(message));
  });
  Media::ImageService::setCodecFactory(::Platform::createQtImageCodec);
  images_ = Service<Media::ImageService>::acquire();
  input_ = Service<Plugin::InputService>::acquire();
  problems_.clear();
}

MediaServices::~MediaServices() {
  Service<Plugin::InputService>::release();
  if (graphics_) Service<Media::GraphicsService>::release();
  Service<Media::ImageService>::release();
  System::Log::resetHandler();
}

Media::GraphicsService& MediaServices::graphics() {
  if (!graphics_) {
    Media::GraphicsService::setBackendFactory(::Platform::createGlBackend);
    graphics_ = Service<Media::GraphicsService>::acquire();
    const Edit::SceneDefaults scene = Service<Setting::SettingService>::get()->sceneDefaults();
    graphics_->createSharedResources(static_cast<std::uint32_t>(scene.width), static_cast<std::uint32_t>(scene.height));
  }
  return *graphics_;
}

std::vector<std::string> MediaServices::takeProblems() { return std::exchange(problems_, {}); }

}  // namespace Cli
