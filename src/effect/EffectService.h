// The registry of all effects, movements and aliases: built once at start in a fixed
// order, which is the order of the effect menus. Filled and changed on the main thread
// before the render workers start (a script reload runs with rendering stopped); the
// prototypes are never touched by workers.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "effect/EffectBase.h"
#include "effect/EffectDefine.h"
#include "effect/movement/MovementParams.h"
#include "system/Exception.h"
#include "system/OrderedMap.h"
#include "system/Text.h"

namespace Effect {

class MovementBase;

class EffectService {
 public:
  static constexpr const char* kClassName = "Effect::EffectService";

  // Registers the built-in movements, the built-in effects, then the aliases, and
  // reads the time-control presets. Installs the lookups that items and objects use.
  EffectService();
  ~EffectService();
  EffectService(const EffectService&) = delete;
  EffectService& operator=(const EffectService&) = delete;

  // Registration never aborts: a failure shows its message and returns empty.
  template <class T>
  std::shared_ptr<EffectBase> registerEffect() {
    return registerPrototype([] { return std::shared_ptr<EffectBase>(std::make_shared<T>()); });
  }
  std::shared_ptr<EffectBase> registerPrototype(const std::function<std::shared_ptr<EffectBase>()>& make);
  bool registerMovement(std::shared_ptr<const MovementBase> movement);
  // One alias define per file %Alias%/*.<folder>.
  void registerAlias(const std::wstring& folder, EffectType type);

  // Throws "not found effect." with the key.
  EffectDefine& findEffect(std::wstring_view key);
  // As findEffect, after mapping an old effect name through [OldScript] of effect.conf.
  EffectDefine& findEffectOrOldName(std::wstring_view key);
  // A new instance with the constructor's values; empty for an unknown key.
  std::shared_ptr<EffectBase> createEffect(std::wstring_view key);
  // Throws "not found movement." with the key.
  MovementDefine& findMovement(std::wstring_view key);

  // The prototype of a built-in class, for effects that borrow another's work.
  template <class T>
  T& getDefaultEffect() {
    const EffectDefine::OrderedEffects::Entry* found = effects_.find(T::kInfo.name);
    T* prototype = found ? dynamic_cast<T*>(&found->value->prototype()) : nullptr;
    if (!prototype) {
      throw System::NoteException("Effect::EffectService::getDefaultEffect", "default effect not found",
                                  System::Text::toUtf8(T::kInfo.name));
    }
    return *prototype;
  }

  // The input effect that goes with an output effect, or null.
  EffectDefine* getPairedInputEffect(const EffectBase& output);
  // The output effect that completes a chain that starts with `input`.
  EffectDefine& getOutputEffect(const EffectBase& input);

  // The effect defines, then the alias defines, that a menu of this role and media
  // offers, in registration order. `type` 0 takes all, 200 what can be an object, 201
  // what can follow one; media and placement 0 take all.
  std::vector<EffectMenuDefine*> listEffects(std::int32_t type, std::int32_t media, std::int32_t placement);

  const EffectDefine::OrderedEffects& effects() const noexcept { return effects_; }
  const System::OrderedMap<std::wstring, std::unique_ptr<MovementDefine>>& movements() const noexcept {
    return movements_;
  }
  const std::vector<std::unique_ptr<AliasDefine>>& aliases() const noexcept { return aliases_; }
  const MovementParamsManager& movementParams() const noexcept { return params_; }

 private:
  void registerBuiltinEffects();

  EffectDefine::OrderedEffects effects_;
  System::OrderedMap<std::wstring, std::unique_ptr<MovementDefine>> movements_;
  std::vector<std::unique_ptr<AliasDefine>> aliases_;
  // Shared by effects, movements and presets: the order of the menus.
  std::int32_t runningNumber_ = 0;
  MovementParamsManager params_{runningNumber_};
};

}  // namespace Effect
