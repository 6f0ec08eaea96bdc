// Whole-number items: a spin control, a hidden integer, a count of layers and a scene.
#pragma once

#include <cstdint>

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemInteger : public ItemValue<EffectItemInteger, EffectItem> {
 public:
  EffectItemInteger(std::wstring name, std::int32_t defaultValue, std::int32_t minimum, std::int32_t maximum,
                    ItemKind kind = ItemKind::Integer);

  void copyValue(const EffectItemInteger& other) { value_ = other.value_; }
  bool sameValue(const EffectItemInteger& other) const { return value_ == other.value_; }

  std::string toString() const override { return std::to_string(value_); }
  // The text is stored as it reads, as a script may hold any number; the control keeps
  // the range when the user edits.
  void fromString(std::string_view text) override;

  std::int32_t value() const noexcept { return value_; }
  void setValue(std::int32_t value) noexcept { value_ = value; }
  std::int32_t defaultValue() const noexcept { return defaultValue_; }
  std::int32_t minValue() const noexcept { return minValue_; }
  std::int32_t maxValue() const noexcept { return maxValue_; }

 private:
  std::int32_t value_;
  std::int32_t minValue_;
  std::int32_t defaultValue_;
  std::int32_t maxValue_;
};

// How many layers below a control object it governs; 0 means all of them.
class EffectItemLayerRange : public ItemValue<EffectItemLayerRange, EffectItemInteger> {
 public:
  explicit EffectItemLayerRange(std::wstring name) : ItemValue(std::move(name), 0, 0, 1000, ItemKind::LayerRange) {}
};

// A scene of the project by its number.
class EffectItemScene : public ItemValue<EffectItemScene, EffectItemInteger> {
 public:
  explicit EffectItemScene(std::wstring name) : ItemValue(std::move(name), 0, 0, 1000000, ItemKind::Scene) {}
};

}  // namespace Effect
