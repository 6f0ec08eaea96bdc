// A numeric parameter that animates: one fixed-point value per section point of its
// object and a movement that says how the value runs between them. The string form
// written here is the one that project, alias and default files hold.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "effect/item/EffectItem.h"
#include "effect/movement/ItemContext.h"
#include "effect/movement/TimeInfo.h"

namespace Effect {

class EffectItemNumberGroup;
class MovementBase;

class EffectItemNumber : public ItemValue<EffectItemNumber, EffectItem> {
 public:
  enum Flag : std::uint32_t {
    Acceleration = 1,  // "加速"
    Deceleration = 2,  // "減速"
    TwoPoint = 4,      // "中間点無視": the section points are ignored
  };
  // The section index that stands for every entry at once (the alt-drag of the preview).
  static constexpr std::int32_t kAllSections = 100000000;

  // A new value (and an index of its own) for some items of an edit, keyed by item.
  using Overrides = std::unordered_map<const EffectItemNumber*, std::pair<double, std::int32_t>>;

  // Default, range and step are given in user units; the step fixes the scale.
  EffectItemNumber(std::wstring name, double defaultValue, double minimum, double maximum, double step,
                   ItemKind kind = ItemKind::Number);
  // A copy belongs to no group until an effect joins it to one.
  EffectItemNumber(const EffectItemNumber& other);

  void copyValue(const EffectItemNumber& other);
  bool sameValue(const EffectItemNumber& other) const;

  std::string toString() const override;
  void fromString(std::string_view text) override;
  void fromLegacy(std::string_view text, std::string_view key, std::wstring_view effectName, bool flag) override;

  // Fixed point: `scale` units per 1.0.
  std::int32_t scale() const noexcept { return scale_; }
  std::int32_t defaultValue() const noexcept { return defaultValue_; }
  std::int32_t minValue() const noexcept { return minValue_; }
  std::int32_t maxValue() const noexcept { return maxValue_; }
  const std::vector<std::int32_t>& values() const noexcept { return values_; }
  std::int32_t valueCount() const noexcept { return static_cast<std::int32_t>(values_.size()); }

  // Any index is clamped into the entries first.
  double getValue(std::int32_t index) const;
  // An index outside the entries is ignored; the value is rounded and clamped.
  void setValue(std::int32_t index, double value);
  // Reports whether the entry changed; false for an index outside the entries.
  bool addValue(std::int32_t index, double delta);

  const MovementBase& movement() const noexcept { return *movement_; }
  const std::shared_ptr<const MovementBase>& movementPointer() const noexcept { return movement_; }
  std::uint32_t flags() const noexcept { return flags_; }
  bool hasFlag(Flag flag) const noexcept { return (flags_ & flag) != 0; }
  const std::vector<double>& timeControl() const noexcept { return timeControl_; }
  void setTimeControl(std::vector<double> curve) { timeControl_ = std::move(curve); }
  const std::vector<double>& movementParams() const noexcept { return movementParams_; }
  void setMovementParams(std::vector<double> params) { movementParams_ = std::move(params); }

  EffectItemNumberGroup* group() const noexcept { return group_; }
  void setGroup(EffectItemNumberGroup* group) noexcept { group_ = group; }
  // Fired by the control after the user edited the value; clones keep it.
  std::function<void()> onEdited;

  // Sets the movement with its default flags and parameters and fits the entries to
  // `pointCount` (section points + 2). A linked group's members take it together.
  void setMovement(std::shared_ptr<const MovementBase> movement, std::int32_t pointCount);
  // Takes over another item's movement, flags, parameters and time-control curve, as a
  // member of a group does when the group is linked, and fits the entries to
  // `pointCount`.
  void followMovementOf(const EffectItemNumber& leader, std::int32_t pointCount);
  // A flag the user chose from the menu; two-point changes the count of entries.
  void setFlag(Flag flag, bool on, std::int32_t pointCount);
  // After the section points or the movement may have changed: a flag that the movement
  // does not offer is cleared, the entries follow the points, and empty parameters take
  // the movement's defaults. A choice the user made on an offered flag stays.
  void syncWithMovement(std::int32_t pointCount);
  // The count the movement wants: its fixed count, 2 with two-point, else `pointCount`.
  std::int32_t wantedValueCount(std::int32_t pointCount) const;
  // Shrinking keeps the last value; growing repeats it.
  void resizeValues(std::int32_t pointCount);
  // A new section point after entry `index` (movements with a fixed count or the
  // two-point flag keep their entries). The value is the default unless `overrides`
  // holds this item.
  void insertSectionPoint(std::int32_t index, const Overrides* overrides = nullptr);
  void setSectionPointValue(std::int32_t index, const Overrides* overrides = nullptr);
  // Inner section point `index` (1-based, as entry `index`) went away.
  void removeSectionPoint(std::int32_t index);

  // The entry that the edited section selects: `section` of `sectionCount`, or
  // kAllSections. Reports whether anything changed.
  bool addValueAtSection(std::int32_t section, std::int32_t sectionCount, double delta);
  bool setValueAtSection(std::int32_t section, std::int32_t sectionCount, double value);
  bool isEditable(std::int32_t section, std::int32_t sectionCount) const;

  // The value at the context's exact frame, or at another frame of the same object.
  double getValueAt(const ItemContext& context) const;
  double getValueAtFrame(const ItemContext& context, std::int32_t frame) const;
  // The section index plus the fraction that has passed, at `frame`.
  double getSectionPosition(const ItemContext& context, std::int32_t frame) const;
  TimeInfo timeAt(const Edit::Object& object, std::int32_t frame, double exactFrame) const;

  // "123.45" for 12345 at scale 100: at least one digit before the point.
  std::string formatValue(std::int32_t value) const;

 private:
  // The entry that a section selects, or none when the edit does not apply.
  std::optional<std::int32_t> entryOfSection(std::int32_t section, std::int32_t sectionCount) const;
  std::int32_t toFixed(double value) const;
  void applyMovement(std::shared_ptr<const MovementBase> movement, std::int32_t pointCount);

  std::vector<std::int32_t> values_;
  std::int32_t defaultValue_;
  std::int32_t minValue_;
  std::int32_t maxValue_;
  std::int32_t scale_;
  std::shared_ptr<const MovementBase> movement_;
  std::vector<double> timeControl_;
  std::vector<double> movementParams_;
  std::uint32_t flags_ = 0;
  EffectItemNumberGroup* group_ = nullptr;
};

// A number whose value names a layer, the camera's target: 0 shows "---".
class EffectItemLayerObject : public ItemValue<EffectItemLayerObject, EffectItemNumber> {
 public:
  explicit EffectItemLayerObject(std::wstring name) : ItemValue(std::move(name), 0, 0, 1000, 1) {}
};

}  // namespace Effect
