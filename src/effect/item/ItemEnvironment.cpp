#include "effect/item/ItemEnvironment.h"

#include "edit/EditService.h"
#include "edit/Scene.h"
#include "system/Singleton.h"

namespace Effect {

namespace {

ItemEnvironment defaults() {
  ItemEnvironment environment;
  environment.installedFonts = [] { return std::vector<std::wstring>{}; };
  environment.inputPluginNames = [] { return std::vector<std::wstring>{}; };
  environment.findSceneByName = [](std::wstring_view name) -> std::optional<std::int32_t> {
    const Edit::EditService* edit = System::Singleton<Edit::EditService>::get();
    if (!edit) return std::nullopt;
    for (const auto& entry : edit->project().scenes()) {
      if (entry.value->name == name) return entry.key;
    }
    return std::nullopt;
  };
  environment.sceneName = [](std::int32_t id) -> std::optional<std::wstring> {
    const Edit::EditService* edit = System::Singleton<Edit::EditService>::get();
    if (!edit) return std::nullopt;
    const auto scene = edit->project().findScene(id);
    if (!scene) return std::nullopt;
    return scene->name;
  };
  return environment;
}

}  // namespace

ItemEnvironment& ItemEnvironment::get() {
  static ItemEnvironment environment = defaults();
  return environment;
}

void ItemEnvironment::reset() { get() = defaults(); }

}  // namespace Effect
