#include "effect/EffectDefine.h"

#include "effect/EffectBase.h"
#include "effect/movement/MovementBase.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/IniFile.h"
#include "system/Log.h"
#include "system/ReplacingFile.h"
#include "system/Text.h"
#include "translate/Translate.h"

namespace Effect {

EffectMenuDefine::EffectMenuDefine(std::int32_t number, const std::wstring& key, std::wstring category)
    : MenuDefineBase("Effect", key, number, key, true), number_(number), key_(key), category_(std::move(category)) {}

std::wstring EffectMenuDefine::displayName() const { return Translate::translate("Effect", key_); }

EffectDefine::EffectDefine(std::int32_t number, std::shared_ptr<EffectBase> prototype)
    : EffectMenuDefine(number, prototype->name(), prototype->category()), prototype_(std::move(prototype)) {
  prototype_->createCommonResource();
}

EffectType EffectDefine::type() const { return prototype_->type(); }
EffectMedia EffectDefine::media() const { return prototype_->media(); }
EffectMedia EffectDefine::placement() const { return prototype_->placement(); }
bool EffectDefine::hasPairedInput() const { return prototype_->info().pairedInput != nullptr; }

EffectBase& EffectDefine::prototype() {
  if (!defaultApplied_) {
    defaultApplied_ = true;
    const std::wstring path = defaultFilePath();
    if (System::File::exists(path)) {
      System::IniFile stored;
      stored.loadFile(path);
      prototype_->loadIniSectionParameter(stored.section("Effect", 0));
    }
  }
  return *prototype_;
}

std::shared_ptr<EffectBase> EffectDefine::createInstance() const {
  std::shared_ptr<EffectBase> instance = prototype_->createInstance();
  instance->shareCommonResource(*prototype_);
  return instance;
}

std::shared_ptr<EffectBase> EffectDefine::newInstance() {
  std::shared_ptr<EffectBase> instance = createInstance();
  instance->setItemData(prototype());
  return instance;
}

bool EffectDefine::owns(const EffectBase& effect) const { return effect.name() == prototype_->name(); }

std::wstring EffectDefine::defaultFilePath() const {
  return System::FileName::expand(L"%Default%/" + key() + L".effect");
}

void EffectDefine::saveDefault(const EffectBase& effect) {
  defaultApplied_ = false;
  const std::wstring path = defaultFilePath();
  System::Log::info("System::IniFile::Save::Save", L"saveFile : %ls", path.c_str());
  System::ReplacingFile file(path);
  file.write("[Effect.0]\r\n" + effect.saveIniSectionParameter());
  file.commit();
}

void EffectDefine::resetDefault() {
  System::File::remove(defaultFilePath());
  const std::shared_ptr<EffectBase> fresh = prototype_->createInstance();
  fresh->initialize();
  prototype_->setItemData(*fresh);
  defaultApplied_ = true;
}

AliasDefine::AliasDefine(std::int32_t number, std::wstring path, EffectType type)
    : EffectMenuDefine(number, System::FileName::baseName(path), L""), path_(std::move(path)), type_(type) {}

MovementDefine::MovementDefine(std::int32_t number, std::shared_ptr<const MovementBase> movement)
    : MenuDefineBase("Movement", movement->name(), number, movement->name(), movement->showInMenu()),
      number_(number),
      movement_(std::move(movement)) {}

const std::wstring& MovementDefine::key() const noexcept { return movement_->name(); }

std::wstring MovementDefine::displayName() const { return Translate::translate("Movement", key()); }

}  // namespace Effect
