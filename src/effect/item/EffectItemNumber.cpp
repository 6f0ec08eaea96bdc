#include "effect/item/EffectItemNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "edit/Object.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/item/ItemText.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/MovementBase.h"
#include "setting/SettingService.h"
#include "system/Exception.h"
#include "system/NumberText.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Effect {

namespace {

constexpr const char* kFromStringPlace = "Effect::EffectItemNumber::fromString";

// Round to nearest, halves away from zero, saturated to 32 bits.
std::int32_t roundToInt32(double value) {
  const double rounded = std::round(value);
  if (rounded >= std::numeric_limits<std::int32_t>::max()) return std::numeric_limits<std::int32_t>::max();
  if (rounded <= std::numeric_limits<std::int32_t>::min()) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(rounded);
}

std::string joinTrimmed(const std::vector<double>& values) {
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) text += ',';
    text += System::NumberText::formatTrimmed(values[i]);
  }
  return text;
}

}  // namespace

EffectItemNumber::EffectItemNumber(std::wstring name, double defaultValue, double minimum, double maximum,
                                   double step, ItemKind kind)
    : ItemValue(kind, std::move(name)),
      defaultValue_(roundToInt32(defaultValue / step)),
      minValue_(roundToInt32(minimum / step)),
      maxValue_(roundToInt32(maximum / step)),
      scale_(roundToInt32(1.0 / step)),
      movement_(BuiltinMovements::noMove()) {
  values_.push_back(defaultValue_);
}

EffectItemNumber::EffectItemNumber(const EffectItemNumber& other)
    : ItemValue(other),
      onEdited(other.onEdited),
      values_(other.values_),
      defaultValue_(other.defaultValue_),
      minValue_(other.minValue_),
      maxValue_(other.maxValue_),
      scale_(other.scale_),
      movement_(other.movement_),
      timeControl_(other.timeControl_),
      movementParams_(other.movementParams_),
      flags_(other.flags_) {}

void EffectItemNumber::copyValue(const EffectItemNumber& other) {
  values_ = other.values_;
  movement_ = other.movement_;
  timeControl_ = other.timeControl_;
  movementParams_ = other.movementParams_;
  flags_ = other.flags_;
}

bool EffectItemNumber::sameValue(const EffectItemNumber& other) const {
  return values_ == other.values_ && movement_ == other.movement_ && timeControl_ == other.timeControl_ &&
         movementParams_ == other.movementParams_ && flags_ == other.flags_;
}

std::string EffectItemNumber::formatValue(std::int32_t value) const {
  const int digits = scale_ > 1 ? static_cast<int>(std::log10(static_cast<double>(scale_)) + 1e-9) : 0;
  const auto magnitude = static_cast<std::uint64_t>(std::llabs(static_cast<long long>(value)));
  std::string text = std::to_string(magnitude);
  if (text.size() < static_cast<std::size_t>(digits) + 1) text.insert(0, digits + 1 - text.size(), '0');
  if (digits > 0) text.insert(text.size() - digits, 1, '.');
  if (value < 0) text.insert(0, 1, '-');
  return text;
}

std::string EffectItemNumber::toString() const {
  if (movement_ == BuiltinMovements::noMove()) return formatValue(values_.at(0));
  std::string text;
  for (const std::int32_t value : values_) {
    text += formatValue(value);
    text += ',';
  }
  text += System::Text::toUtf8(movement_->name());
  text += ',';
  text += std::to_string(flags_);
  if (!movementParams_.empty()) text += '|' + joinTrimmed(movementParams_);
  if (!timeControl_.empty()) text += '|' + joinTrimmed(timeControl_);
  return text;
}

void EffectItemNumber::fromString(std::string_view text) {
  const std::vector<std::string_view> parts = ItemText::split(text, '|');
  const std::vector<std::string_view> fields = ItemText::split(parts[0], ',');
  if (fields.size() < 2) {
    const double value = ItemText::parseDouble(text, kFromStringPlace);
    movement_ = BuiltinMovements::noMove();
    timeControl_.clear();
    movementParams_.clear();
    flags_ = 0;
    values_.assign(1, values_.empty() ? defaultValue_ : values_.front());
    setValue(0, value);
    return;
  }
  if (fields.size() < 3) throw System::NoteException(kFromStringPlace, "invalid effect parameter.");

  // Everything is read before anything is stored, so a bad text leaves the item whole.
  std::shared_ptr<const MovementBase> movement = findMovement(System::Text::fromUtf8(fields[fields.size() - 2]));
  // Only the three known bits mean anything; the rest of a damaged number is dropped,
  // so what is written back reads again.
  const auto flags = static_cast<std::uint32_t>(ItemText::parseInt(fields.back(), kFromStringPlace)) &
                     (Acceleration | Deceleration | TwoPoint);
  std::vector<double> numbers;
  for (std::size_t i = 0; i + 2 < fields.size(); ++i) numbers.push_back(ItemText::parseDouble(fields[i], kFromStringPlace));
  std::vector<double> params;
  std::vector<double> curve;
  std::size_t part = 1;
  if (!movement->paramDefaults().empty()) {
    params = part < parts.size() ? ItemText::parseDoubleList(parts[part++], kFromStringPlace)
                                 : movement->paramDefaults();
  }
  if (movement->timeControl() && part < parts.size()) curve = ItemText::parseDoubleList(parts[part], kFromStringPlace);

  movement_ = std::move(movement);
  flags_ = flags;
  movementParams_ = std::move(params);
  timeControl_ = std::move(curve);
  values_.assign(numbers.size(), defaultValue_);
  for (std::size_t i = 0; i < numbers.size(); ++i) setValue(static_cast<std::int32_t>(i), numbers[i]);
}

void EffectItemNumber::fromLegacy(std::string_view text, std::string_view /*key*/, std::wstring_view /*effectName*/,
                                  bool flag) {
  const std::vector<std::string_view> fields = ItemText::split(text, ',');
  if (flag || fields.size() < 3) {
    fromString(text);
    return;
  }
  // start,end,mode[@name][,parameter]
  const std::string_view modeField = fields[2];
  const std::size_t at = modeField.find('@');
  const std::int32_t mode = ItemText::parseInt(modeField.substr(0, at), "Effect::EffectItemNumber::fromLegacy");
  const std::int32_t number = mode & 0xf;

  std::string key;
  std::int32_t singleSection = -1;
  if (auto* settings = System::Singleton<Setting::SettingService>::get()) {
    System::IniFile::SectionRef section = settings->effectFile().section("OldScript.trackmode");
    key = section.find(std::to_string(number)).text;
    singleSection = section.find("SingleSection").tryInt().value_or(-1);
  }
  if (key.empty() && at != std::string_view::npos) key = std::string(modeField.substr(at + 1));

  std::uint32_t flags = 0;
  if (mode & (1 << 6)) flags |= Acceleration;
  if (mode & (1 << 5)) flags |= Deceleration;
  if (number == singleSection) flags |= TwoPoint;

  std::string rewritten = std::string(fields[0]) + ',' + std::string(fields[1]) + ',' + key + ',' + std::to_string(flags);
  if (fields.size() > 3) rewritten += '|' + std::string(fields[3]);
  fromString(rewritten);
}

std::int32_t EffectItemNumber::toFixed(double value) const {
  return std::clamp(roundToInt32(scale_ * value), minValue_, maxValue_);
}

double EffectItemNumber::getValue(std::int32_t index) const {
  if (values_.empty()) {
    throw System::NoteException("Effect::EffectItemNumber::clampValueIndex", "item value index out of range.");
  }
  const auto clamped = std::clamp<std::int32_t>(index, 0, valueCount() - 1);
  return static_cast<double>(values_[clamped]) / scale_;
}

void EffectItemNumber::setValue(std::int32_t index, double value) {
  if (index < 0 || index >= valueCount()) return;
  values_[index] = toFixed(value);
}

bool EffectItemNumber::addValue(std::int32_t index, double delta) {
  if (index < 0 || index >= valueCount()) return false;
  const std::int64_t sum = static_cast<std::int64_t>(values_[index]) + roundToInt32(scale_ * delta);
  const auto updated = static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, minValue_, maxValue_));
  if (updated == values_[index]) return false;
  values_[index] = updated;
  return true;
}

void EffectItemNumber::applyMovement(std::shared_ptr<const MovementBase> movement, std::int32_t pointCount) {
  movement_ = std::move(movement);
  flags_ = 0;
  if (movement_->acceleration() == 1) flags_ |= Acceleration;
  if (movement_->deceleration() == 1) flags_ |= Deceleration;
  if (movement_->twoPoint() >= 1) flags_ |= TwoPoint;
  movementParams_ = movement_->paramDefaults();
  if (!movement_->timeControl()) timeControl_.clear();
  resizeValues(pointCount);
}

void EffectItemNumber::setMovement(std::shared_ptr<const MovementBase> movement, std::int32_t pointCount) {
  if (group_ && group_->linked()) {
    for (EffectItemNumber* member : group_->members()) member->applyMovement(movement, pointCount);
    if (std::find(group_->members().begin(), group_->members().end(), this) != group_->members().end()) return;
  }
  applyMovement(std::move(movement), pointCount);
}

void EffectItemNumber::followMovementOf(const EffectItemNumber& leader, std::int32_t pointCount) {
  movement_ = leader.movement_;
  flags_ = leader.flags_;
  movementParams_ = leader.movementParams_;
  timeControl_ = leader.timeControl_;
  resizeValues(pointCount);
}

void EffectItemNumber::setFlag(Flag flag, bool on, std::int32_t pointCount) {
  flags_ = on ? (flags_ | flag) : (flags_ & ~static_cast<std::uint32_t>(flag));
  resizeValues(pointCount);
}

void EffectItemNumber::syncWithMovement(std::int32_t pointCount) {
  if (movement_->acceleration() < 0) flags_ &= ~static_cast<std::uint32_t>(Acceleration);
  if (movement_->deceleration() < 0) flags_ &= ~static_cast<std::uint32_t>(Deceleration);
  if (movement_->twoPoint() < 0) flags_ &= ~static_cast<std::uint32_t>(TwoPoint);
  resizeValues(pointCount);
  if (movementParams_.empty()) movementParams_ = movement_->paramDefaults();
}

std::int32_t EffectItemNumber::wantedValueCount(std::int32_t pointCount) const {
  if (movement_->valueCount() >= 0) return movement_->valueCount();
  if (hasFlag(TwoPoint)) return 2;
  return pointCount;
}

void EffectItemNumber::resizeValues(std::int32_t pointCount) {
  const auto wanted = static_cast<std::size_t>(std::max(wantedValueCount(pointCount), 1));
  while (values_.size() > wanted) values_.erase(values_.end() - 2);
  if (values_.size() < wanted) values_.resize(wanted, values_.back());
}

void EffectItemNumber::insertSectionPoint(std::int32_t index, const Overrides* overrides) {
  if (movement_->valueCount() >= 0 || hasFlag(TwoPoint)) return;
  double value = static_cast<double>(defaultValue_) / scale_;
  if (overrides) {
    if (const auto found = overrides->find(this); found != overrides->end()) std::tie(value, index) = found->second;
  }
  const auto at = std::clamp<std::int32_t>(index + 1, 0, valueCount());
  values_.insert(values_.begin() + at, toFixed(value));
}

void EffectItemNumber::setSectionPointValue(std::int32_t index, const Overrides* overrides) {
  double value = static_cast<double>(defaultValue_) / scale_;
  if (overrides) {
    if (const auto found = overrides->find(this); found != overrides->end()) std::tie(value, index) = found->second;
  }
  setValue(index, value);
}

void EffectItemNumber::removeSectionPoint(std::int32_t index) {
  if (movement_->valueCount() >= 0 || hasFlag(TwoPoint)) return;
  if (index <= 0 || index >= valueCount() - 1) return;
  values_.erase(values_.begin() + index);
}

std::optional<std::int32_t> EffectItemNumber::entryOfSection(std::int32_t section, std::int32_t sectionCount) const {
  if (valueCount() == 1) return 0;
  if (section == sectionCount) return valueCount() - 1;
  if (section == 0) return 0;
  if (valueCount() != sectionCount + 1 || section < 0 || section > sectionCount) return std::nullopt;
  return section;
}

bool EffectItemNumber::addValueAtSection(std::int32_t section, std::int32_t sectionCount, double delta) {
  if (section == kAllSections) {
    bool changed = false;
    for (std::int32_t i = 0; i < valueCount(); ++i) {
      if (movement_->isValueEditable(*this, i)) changed = addValue(i, delta) || changed;
    }
    return changed;
  }
  const auto entry = entryOfSection(section, sectionCount);
  return entry && addValue(*entry, delta);
}

bool EffectItemNumber::setValueAtSection(std::int32_t section, std::int32_t sectionCount, double value) {
  const std::vector<std::int32_t> before = values_;
  if (section == kAllSections) {
    for (std::int32_t i = 0; i < valueCount(); ++i) {
      if (movement_->isValueEditable(*this, i)) setValue(i, value);
    }
  } else if (const auto entry = entryOfSection(section, sectionCount)) {
    setValue(*entry, value);
  }
  return values_ != before;
}

bool EffectItemNumber::isEditable(std::int32_t section, std::int32_t sectionCount) const {
  const auto entry = entryOfSection(section, sectionCount);
  return entry && movement_->isValueEditable(*this, *entry);
}

TimeInfo EffectItemNumber::timeAt(const Edit::Object& object, std::int32_t frame, double exactFrame) const {
  return hasFlag(TwoPoint) ? TimeInfo::ofWhole(object, exactFrame) : TimeInfo::ofSections(object, frame, exactFrame);
}

double EffectItemNumber::getValueAt(const ItemContext& context) const {
  if (!context.object) return getValue(0);
  return movement_->getValue(*this, timeAt(*context.object, context.frame, context.exactFrame), context);
}

double EffectItemNumber::getValueAtFrame(const ItemContext& context, std::int32_t frame) const {
  if (!context.object) return getValue(0);
  ItemContext atFrame = context;
  atFrame.frame = frame;
  atFrame.exactFrame = frame;
  return movement_->getValue(*this, timeAt(*context.object, frame, frame), atFrame);
}

double EffectItemNumber::getSectionPosition(const ItemContext& context, std::int32_t frame) const {
  if (!context.object) return 0.0;
  return timeAt(*context.object, frame, frame).sectionPosition();
}

}  // namespace Effect
