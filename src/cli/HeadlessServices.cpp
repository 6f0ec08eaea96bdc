#include "cli/HeadlessServices.h"

#include <utility>

#include "edit/EditService.h"
#include "effect/EffectService.h"
#include "setting/SettingService.h"
#include "system/Log.h"
#include "system/Singleton.h"

namespace Cli {

template <class T>
using Service = System::Singleton<T>;

HeadlessServices::HeadlessServices() {
  // Lines of the warning level are what went wrong in a file; everything else the
  // editor logs is of no use on a terminal.
  System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
    if (type.level == System::Log::Warn.level) warnings_.push_back(std::string(message) + " (" + place + ")");
  });
  Setting::SettingService* settings = Service<Setting::SettingService>::get();
  effects_ = Service<Effect::EffectService>::acquire();
  edit_ = Service<Edit::EditService>::acquire();
  edit_->setSceneDefaults(settings->sceneDefaults());
  edit_->newProject();
  warnings_.clear();
}

HeadlessServices::~HeadlessServices() {
  Service<Edit::EditService>::release();
  Service<Effect::EffectService>::release();
  System::Log::resetHandler();
}

std::vector<std::string> HeadlessServices::takeWarnings() { return std::exchange(warnings_, {}); }

}  // namespace Cli
