// The registered types of the effect menus: a built-in or script effect with its
// prototype, an alias file, and a movement. Each is also the user's menu settings of
// its entry (group "Effect.<key>" or "Movement.<key>" of the main ini). Main thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "effect/EffectInfo.h"
#include "menu/MenuDefineBase.h"
#include "system/OrderedMap.h"

namespace Effect {

class EffectBase;
class MovementBase;

// An entry of the effect menus: an effect or an alias.
class EffectMenuDefine : public Menu::MenuDefineBase {
 public:
  EffectMenuDefine(std::int32_t number, const std::wstring& key, std::wstring category);

  std::int32_t number() const noexcept { return number_; }
  const std::wstring& key() const noexcept { return key_; }
  const std::wstring& category() const noexcept { return category_; }
  // The key, translated when a language is active.
  std::wstring displayName() const;
  virtual EffectType type() const = 0;
  virtual EffectMedia media() const = 0;
  virtual EffectMedia placement() const = 0;
  // Whether the effect pairs with an input effect and so can be offered as an object.
  virtual bool hasPairedInput() const { return false; }

 private:
  std::int32_t number_;
  std::wstring key_;
  std::wstring category_;
};

class EffectDefine final : public EffectMenuDefine {
 public:
  using OrderedEffects = System::OrderedMap<std::wstring, std::unique_ptr<EffectDefine>>;

  EffectDefine(std::int32_t number, std::shared_ptr<EffectBase> prototype);

  EffectType type() const override;
  EffectMedia media() const override;
  EffectMedia placement() const override;
  bool hasPairedInput() const override;

  // The prototype, with the stored default of %Default%/<key>.effect read into it the
  // first time it is asked for.
  EffectBase& prototype();
  // A new instance as an object on the timeline starts: the prototype's values.
  std::shared_ptr<EffectBase> newInstance();
  // A new instance with its constructor's values, as a loader fills it.
  std::shared_ptr<EffectBase> createInstance() const;
  // Whether `effect` is an instance of this define: the same key pointer.
  bool owns(const EffectBase& effect) const;

  // %Default%/<key>.effect, expanded.
  std::wstring defaultFilePath() const;
  // Writes `effect`'s values as the stored default; the prototype takes them on its
  // next use. Throws what the file writer throws.
  void saveDefault(const EffectBase& effect);
  // Deletes the stored default; the prototype returns to the constructor's values.
  void resetDefault();

 private:
  std::shared_ptr<EffectBase> prototype_;
  bool defaultApplied_ = false;
};

// An alias file of %Alias%: a saved object (type 100) or a saved chain of filters (101).
class AliasDefine final : public EffectMenuDefine {
 public:
  AliasDefine(std::int32_t number, std::wstring path, EffectType type);

  EffectType type() const override { return type_; }
  // What an alias holds is known only once its file is read, so it is offered on video
  // and audio layers alike.
  EffectMedia media() const override { return EffectMedia::Both; }
  EffectMedia placement() const override { return EffectMedia::Both; }
  const std::wstring& path() const noexcept { return path_; }

 private:
  std::wstring path_;
  EffectType type_;
};

class MovementDefine final : public Menu::MenuDefineBase {
 public:
  MovementDefine(std::int32_t number, std::shared_ptr<const MovementBase> movement);

  std::int32_t number() const noexcept { return number_; }
  const std::wstring& key() const noexcept;
  std::wstring displayName() const;
  const std::shared_ptr<const MovementBase>& movement() const noexcept { return movement_; }

 private:
  std::int32_t number_;
  std::shared_ptr<const MovementBase> movement_;
};

}  // namespace Effect
