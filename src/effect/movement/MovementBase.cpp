#include "effect/movement/MovementBase.h"

#include <algorithm>

#include "edit/Object.h"
#include "system/Exception.h"

namespace Effect {

MovementBase::MovementBase(MovementTraits traits)
    : name_(traits.name),
      valueCount_(traits.valueCount),
      paramDefaults_(std::move(traits.paramDefaults)),
      acceleration_(traits.acceleration),
      deceleration_(traits.deceleration),
      twoPoint_(traits.twoPoint),
      sectionAnchors_(traits.sectionAnchors),
      showInMenu_(traits.showInMenu),
      timeControl_(traits.timeControl) {}

double MovementBase::getValue(const EffectItemNumber& /*item*/, const TimeInfo& /*time*/,
                              const ItemContext& /*context*/) const {
  throw System::NoteException("Effect::MovementBase::getValue", "not implement.");
}

std::int32_t MovementBase::getSection(const EffectItemNumber& /*item*/, const TimeInfo& /*time*/) const { return -1; }

std::vector<double> MovementBase::getSectionPositions(const EffectItemNumber& /*item*/,
                                                      const Edit::Object& object) const {
  const double span = std::max(object.end - object.start, 1);
  std::vector<double> positions;
  positions.reserve(object.sections.size());
  for (const std::int32_t point : object.sections) positions.push_back(point / span);
  return positions;
}

bool MovementBase::isValueEditable(const EffectItemNumber& /*item*/, std::int32_t /*index*/) const { return true; }

bool MovementBase::showsPath(const EffectItemNumber& /*item*/) const { return true; }

}  // namespace Effect
