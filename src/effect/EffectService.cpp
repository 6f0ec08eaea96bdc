#include "effect/EffectService.h"

#include "dialog/MessageBox.h"
#include "edit/Object.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/MovementBase.h"
#include "setting/SettingService.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/Singleton.h"

namespace Effect {

namespace {

// Media and placement of an effect against what a menu wants: 0 takes all, video and
// audio effects stand in a menu for both, and effects for both in every menu but the
// camera's.
bool mediaMatches(std::int32_t effect, std::int32_t wanted) {
  if (wanted == 0 || effect == wanted) return true;
  if ((effect == 1 || effect == 2) && wanted == 3) return true;
  return effect == 3 && wanted != 4;
}

bool typeMatches(const EffectMenuDefine& define, std::int32_t wanted) {
  const auto type = static_cast<std::int32_t>(define.type());
  switch (wanted) {
    case 0:
      return true;
    case 200:
      return type == 1 || type == 4 || type == 100 || define.hasPairedInput();
    case 201:
      return type == 3 || type == 101;
    default:
      return type == wanted;
  }
}

}  // namespace

EffectService::EffectService() {
  for (const auto& movement : BuiltinMovements::all()) registerMovement(movement);
  setMovementResolver([this](std::wstring_view key) { return findMovement(key).movement(); });
  registerBuiltinEffects();
  registerAlias(L"object", EffectType::AliasObject);
  registerAlias(L"effect", EffectType::AliasEffect);
  params_.load();
  // A control object governs the layers that its first effect names.
  Edit::Object::setControlRangeReader([](const Edit::Object& object) -> std::int32_t {
    if (object.effects.empty() || object.effects.front()->type() != EffectType::Control) return 0;
    return object.effects.front()->getLayerRange();
  });
}

EffectService::~EffectService() {
  Edit::Object::setControlRangeReader(nullptr);
  setMovementResolver(nullptr);
}

std::shared_ptr<EffectBase> EffectService::registerPrototype(const std::function<std::shared_ptr<EffectBase>()>& make) {
  std::wstring key;
  try {
    std::shared_ptr<EffectBase> prototype = make();
    key = prototype->name();
    const std::int32_t number = runningNumber_++;
    if (effects_.contains(key)) {
      Dialog::showError(L"Failed to register effect. [%ls]\n\n%ls", key.c_str(),
                        L"Duplicate effects with the same key exist.");
      return nullptr;
    }
    effects_.tryEmplace(key, std::make_unique<EffectDefine>(number, prototype));
    System::Log::info("Effect::EffectService::registerEffect", L"register effect [%ls]", key.c_str());
    prototype->initialize();
    return prototype;
  } catch (const std::exception& exception) {
    effects_.erase(key);
    Dialog::showError(L"Failed to register effect. [%ls]\n\n%ls", key.c_str(),
                      System::Text::fromUtf8(exception.what()).c_str());
    return nullptr;
  }
}

bool EffectService::registerMovement(std::shared_ptr<const MovementBase> movement) {
  const std::wstring key = movement->name();
  if (movements_.contains(key)) {
    Dialog::showError(L"Failed to register movement. [%ls]\n\n%ls", key.c_str(),
                      L"Duplicate movements with the same key exist.");
    return false;
  }
  movements_.tryEmplace(key, std::make_unique<MovementDefine>(runningNumber_++, std::move(movement)));
  System::Log::info("Effect::EffectService::registerMovement", L"register movement [%ls]", key.c_str());
  return true;
}

void EffectService::registerAlias(const std::wstring& folder, EffectType type) {
  for (const System::DirectoryEntry& file : System::listFiles(L"*." + folder, System::FileName::expand(L"%Alias%"))) {
    aliases_.push_back(std::make_unique<AliasDefine>(runningNumber_++, file.path, type));
    System::Log::info("Effect::EffectService::registerAlias", L"register alias [%ls]", aliases_.back()->key().c_str());
  }
}

EffectDefine& EffectService::findEffect(std::wstring_view key) {
  if (const auto* found = effects_.find(key)) return *found->value;
  throw System::NoteException("Effect::EffectService::findEffect", "not found effect.", System::Text::toUtf8(key));
}

EffectDefine& EffectService::findEffectOrOldName(std::wstring_view key) {
  if (effects_.contains(key)) return findEffect(key);
  if (auto* settings = System::Singleton<Setting::SettingService>::get()) {
    const std::string& renamed = settings->effectFile().section("OldScript").find(System::Text::toUtf8(key)).text;
    if (!renamed.empty()) return findEffect(System::Text::fromUtf8(renamed));
  }
  return findEffect(key);
}

std::shared_ptr<EffectBase> EffectService::createEffect(std::wstring_view key) {
  const auto* found = effects_.find(key);
  return found ? found->value->createInstance() : nullptr;
}

MovementDefine& EffectService::findMovement(std::wstring_view key) {
  if (const auto* found = movements_.find(key)) return *found->value;
  throw System::NoteException("Effect::EffectService::findMovement", "not found movement.", System::Text::toUtf8(key));
}

EffectDefine* EffectService::getPairedInputEffect(const EffectBase& output) {
  const wchar_t* paired = output.info().pairedInput;
  return paired ? &findEffect(paired) : nullptr;
}

EffectDefine& EffectService::getOutputEffect(const EffectBase& input) {
  switch (input.media()) {
    case EffectMedia::Both:
      return findEffect(L"映像再生");
    case EffectMedia::Video:
      return findEffect(std::wstring_view(input.name()) == L"フレームバッファ" ? L"基本出力" : L"標準描画");
    case EffectMedia::Audio:
      return findEffect(L"音声再生");
    default:
      throw System::NoteException("Effect::EffectService::getOutputEffect", "invalid input effect type.");
  }
}

std::vector<EffectMenuDefine*> EffectService::listEffects(std::int32_t type, std::int32_t media,
                                                          std::int32_t placement) {
  std::vector<EffectMenuDefine*> found;
  const auto consider = [&](EffectMenuDefine& define) {
    if (typeMatches(define, type) && mediaMatches(static_cast<std::int32_t>(define.media()), media) &&
        mediaMatches(static_cast<std::int32_t>(define.placement()), placement)) {
      found.push_back(&define);
    }
  };
  for (const auto& entry : effects_) consider(*entry.value);
  for (const auto& alias : aliases_) consider(*alias);
  return found;
}

}  // namespace Effect
