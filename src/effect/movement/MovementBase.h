// How a numeric item's value runs between the section points of its object. Movements
// are stateless and shared by all items, so getValue may run on any render thread at
// once. The built-in ones take their fixed properties from one table; script movements
// fill them from their file's header lines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "effect/movement/ItemContext.h"
#include "effect/movement/TimeInfo.h"

namespace Edit {
class Object;
}

namespace Effect {

class EffectItemNumber;

// -1: the option is not offered. 0: offered, off by default. 1 (2 for the two-point
// option): offered, on by default.
struct MovementTraits {
  const wchar_t* name;
  std::int32_t valueCount;  // a fixed count of values, or -1 to follow the section points
  std::int32_t acceleration;
  std::int32_t deceleration;
  std::int32_t twoPoint;
  bool sectionAnchors;  // a section's value can be edited at its frame in the preview
  bool showInMenu;
  bool timeControl;  // the movement reads the item's time-control curve
  std::vector<double> paramDefaults{};
};

class MovementBase {
 public:
  explicit MovementBase(MovementTraits traits);
  virtual ~MovementBase() = default;
  MovementBase(const MovementBase&) = delete;
  MovementBase& operator=(const MovementBase&) = delete;

  const std::wstring& name() const noexcept { return name_; }
  std::int32_t valueCount() const noexcept { return valueCount_; }
  const std::vector<double>& paramDefaults() const noexcept { return paramDefaults_; }
  std::int32_t acceleration() const noexcept { return acceleration_; }
  std::int32_t deceleration() const noexcept { return deceleration_; }
  std::int32_t twoPoint() const noexcept { return twoPoint_; }
  bool sectionAnchors() const noexcept { return sectionAnchors_; }
  bool showInMenu() const noexcept { return showInMenu_; }
  bool timeControl() const noexcept { return timeControl_; }

  // Throws "not implement." in the base.
  virtual double getValue(const EffectItemNumber& item, const TimeInfo& time, const ItemContext& context) const;
  // The section in which the value lies, for the movements that run at even speed over
  // the whole object; -1 means the section of `time`.
  virtual std::int32_t getSection(const EffectItemNumber& item, const TimeInfo& time) const;
  // Where each section point stands, 0 to 1, for the settings window.
  virtual std::vector<double> getSectionPositions(const EffectItemNumber& item, const Edit::Object& object) const;
  virtual bool isValueEditable(const EffectItemNumber& item, std::int32_t index) const;
  // Whether the preview draws the path of an anchor that this movement drives.
  virtual bool showsPath(const EffectItemNumber& item) const;

 protected:
  // Script movements learn these from their header lines after construction.
  std::wstring name_;
  std::int32_t valueCount_;
  std::vector<double> paramDefaults_;
  std::int32_t acceleration_;
  std::int32_t deceleration_;
  std::int32_t twoPoint_;
  bool sectionAnchors_;
  bool showInMenu_;
  bool timeControl_;
};

}  // namespace Effect
