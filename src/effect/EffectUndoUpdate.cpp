#include "effect/EffectUndoUpdate.h"

#include "edit/EditSection.h"
#include "effect/EffectBase.h"
#include "effect/item/EffectItem.h"
#include "system/Exception.h"

namespace Effect {

namespace {

constexpr const char* kDifferentCount = "different number of items.";

}  // namespace

void EffectUndoUpdate::store(const EffectBase& effect) {
  items_.clear();
  items_.reserve(effect.items().size());
  for (const auto& item : effect.items()) items_.push_back(item->clone());
  disable_ = effect.disable;
  lock_ = effect.lock;
}

void EffectUndoUpdate::restore(const std::shared_ptr<EffectBase>& effect, Edit::EditSection& section) const {
  apply(*effect);
  using Request = Edit::EditSection::Request;
  section.request(Request::Rebuild);
  section.request(Request::Time);
  section.request(Request::Colour);
  section.request(Request::Text);
}

void EffectUndoUpdate::apply(EffectBase& effect) const {
  if (effect.items().size() != items_.size()) {
    throw System::NoteException("Effect::EffectUndoUpdate::restore", kDifferentCount);
  }
  for (std::size_t index = 0; index < items_.size(); ++index) {
    if (items_[index]) effect.items()[index]->assign(*items_[index]);
  }
  effect.disable = disable_;
  effect.lock = lock_;
}

bool EffectUndoUpdate::equal(const EffectUndoUpdate& other) const {
  if (disable_ != other.disable_ || lock_ != other.lock_ || items_.size() != other.items_.size()) return false;
  for (std::size_t index = 0; index < items_.size(); ++index) {
    const EffectItem* mine = items_[index].get();
    const EffectItem* theirs = other.items_[index].get();
    if (!mine || !theirs) {
      if (mine != theirs) return false;
    } else if (!mine->equals(*theirs)) {
      return false;
    }
  }
  return true;
}

bool EffectUndoUpdate::commit(EffectUndoUpdate& before, EffectUndoUpdate& after) {
  // The after-list has just been read from the effect, so its length is the effect's
  // item count.
  if (before.items_.size() != after.items_.size()) {
    throw System::NoteException("Effect::EffectUndoUpdate::commit", kDifferentCount);
  }
  bool changed = before.disable_ != after.disable_ || before.lock_ != after.lock_;
  for (std::size_t index = 0; index < before.items_.size(); ++index) {
    std::unique_ptr<EffectItem>& mine = before.items_[index];
    std::unique_ptr<EffectItem>& theirs = after.items_[index];
    if (!mine && !theirs) continue;
    if (mine && theirs && mine->equals(*theirs)) {
      mine.reset();
      theirs.reset();
      continue;
    }
    changed = true;
  }
  return changed;
}

bool EffectUndoUpdate::holdsOnly(std::size_t index) const {
  if (index >= items_.size()) return false;
  for (std::size_t slot = 0; slot < items_.size(); ++slot) {
    if (static_cast<bool>(items_[slot]) != (slot == index)) return false;
  }
  return true;
}

}  // namespace Effect
