// The rule book of an object's chain of effects: every path that puts an effect on an
// object (menus, the project reader, aliases, pasting, plug-ins) goes through it, so a
// chain always has one of three shapes. A media object: input, output, then filters.
// A filter object: filters only. A control object: a control effect, then filters.
// Made for one object for the length of a command, on the main thread inside an edit
// section. A rule that is broken throws the system's text and changes nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace Effect {
class EffectBase;
class EffectDefine;
class EffectService;
}  // namespace Effect

namespace Edit {

class Object;

class EffectManager {
 public:
  // The timeline's colour and mark of an object: 1 video, 2 audio, 3 both (media
  // objects, by their output), 4 to 6 the same for filter objects, 7 control.
  static std::int32_t getObjectType(const Object& object);
  // Whether an effect of `media` may stand in a chain whose top or output effect has
  // the placement or media `holder`.
  static bool fits(std::int32_t holder, std::int32_t media);

  EffectManager(Object& object, Effect::EffectService& effects) : object_(object), effects_(effects) {}

  // Each returns the index in the chain of the effect it set.
  std::size_t setEffectByDefine(Effect::EffectDefine& define);
  std::size_t setInputEffect(Effect::EffectDefine& define);
  std::size_t setOutputEffect(Effect::EffectDefine& define);
  std::size_t setFilterEffect(Effect::EffectDefine& define);
  std::size_t setControlEffect(Effect::EffectDefine& define);

  // An effect from a menu: set by its key, given the define's stored default values
  // and as many values as the object's section points ask, then put behind `before`
  // when one is given. Returns the effect.
  std::shared_ptr<Effect::EffectBase> addEffect(std::wstring_view key, const Effect::EffectBase* before = nullptr);

  // Only filters move, and only past filters: input, output and control effects stay.
  void moveEffectUp(const Effect::EffectBase& effect);
  void moveEffectDown(const Effect::EffectBase& effect);
  // A filter that stands last moves forward until it stands directly behind `before`.
  void moveEffectBehind(const Effect::EffectBase& effect, const Effect::EffectBase& before);
  // The top effect stays, unless it is a filter with a filter behind it.
  void removeEffect(const Effect::EffectBase& effect);
  // After a menu changed the chain: drops what no longer fits the top and output
  // effects, and gives a media object its default output again if it lost it.
  void pruneEffects();

  // Makes the chain a copy of `source`'s: fresh instances with the source's values and
  // switches (not its locks), and the control flag.
  void copyChainFrom(const Object& source);

 private:
  std::shared_ptr<Effect::EffectBase> make(Effect::EffectDefine& define) const;
  std::size_t indexOf(const Effect::EffectBase& effect) const;
  bool isFilterAt(std::size_t index) const;

  Object& object_;
  Effect::EffectService& effects_;
};

}  // namespace Edit
