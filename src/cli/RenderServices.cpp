#include "cli/RenderServices.h"

#include <utility>

#include "cache/CacheInstance.h"
#include "edit/EditService.h"
#include "effect/EffectService.h"
#include "event/EventService.h"
#include "media/GraphicsService.h"
#include "media/figure/FigureResource.h"
#include "media/image/ImageService.h"
#include "platform/egl_gl/GlBackendFactory.h"
#include "platform/qt/QtFigureRasterizer.h"
#include "platform/qt/QtImageCodec.h"
#include "plugin/InputService.h"
#include "render/RenderService.h"
#include "setting/SettingService.h"
#include "system/Log.h"
#include "system/Singleton.h"

namespace Cli {

template <class T>
using Service = System::Singleton<T>;

RenderServices::RenderServices() {
  System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
    if (type.level < System::Log::Warn.level) return;
    std::lock_guard lock(mutex_);
    problems_.push_back(Problem{message, place});
  });
  const Edit::SceneDefaults scene = Service<Setting::SettingService>::get()->sceneDefaults();
  Media::ImageService::setCodecFactory(::Platform::createQtImageCodec);
  images_ = Service<Media::ImageService>::acquire();
  Resource::FigureResource::setRasterizerFactory(::Platform::createQtFigureRasterizer);
  Service<Resource::FigureResource>::acquire();
  Media::GraphicsService::setBackendFactory(::Platform::createGlBackend);
  graphics_ = Service<Media::GraphicsService>::acquire();
  graphics_->createSharedResources(static_cast<std::uint32_t>(scene.width), static_cast<std::uint32_t>(scene.height));
  Service<Event::EventService>::acquire();
  Service<Plugin::InputService>::acquire();
  Service<Cache::CacheInstance>::acquire();
  effects_ = Service<Effect::EffectService>::acquire();
  edit_ = Service<Edit::EditService>::acquire();
  edit_->setSceneDefaults(scene);
  edit_->newProject();
  render_ = Service<Render::RenderService>::acquire();
  takeProblems();
}

RenderServices::~RenderServices() {
  Service<Cache::CacheInstance>::get()->stop();
  render_->stop();
  Service<Render::RenderService>::release();
  Service<Edit::EditService>::release();
  Service<Effect::EffectService>::release();
  Service<Cache::CacheInstance>::release();
  Service<Plugin::InputService>::release();
  Service<Event::EventService>::release();
  Service<Media::GraphicsService>::release();
  Service<Resource::FigureResource>::release();
  Service<Media::ImageService>::release();
  System::Log::resetHandler();
}

std::vector<RenderServices::Problem> RenderServices::takeProblems() {
  std::lock_guard lock(mutex_);
  return std::exchange(problems_, {});
}

}  // namespace Cli
