#include "edit/EffectManager.h"

#include <algorithm>

#include "edit/Object.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "system/Exception.h"

namespace Edit {

namespace {

using Effect::EffectBase;
using Effect::EffectDefine;
using Effect::EffectType;

std::int32_t code(Effect::EffectMedia media) { return static_cast<std::int32_t>(media); }

[[noreturn]] void fail(const char* place, const char* text) { throw System::NoteException(place, text); }

// The control effects that govern a range of layers, and so make a control object.
bool governsLayers(std::wstring_view key) {
  return key == L"グループ制御" || key == L"カメラ制御" || key == L"グループ制御(音声)" || key == L"時間制御(オブジェクト)";
}

// As fits(), except that an effect for both stays wherever it stands but on a camera.
bool fitsAfterChange(std::int32_t holder, std::int32_t media) {
  if (media == 3) return holder != 4;
  return EffectManager::fits(holder, media);
}

}  // namespace

std::int32_t EffectManager::getObjectType(const Object& object) {
  constexpr const char* kPlace = "Edit::EffectManager::getObjectType";
  if (object.effects.empty()) fail(kPlace, "not exist effect.");
  const EffectBase& top = *object.effects.front();
  switch (top.type()) {
    case EffectType::Input: {
      const std::int32_t media = object.effects.size() > 1 ? code(object.effects[1]->media()) : 0;
      return media == 1 ? 1 : media == 2 ? 2 : 3;
    }
    case EffectType::Filter: {
      const std::int32_t media = code(top.media());
      return media == 1 ? 4 : media == 2 ? 5 : 6;
    }
    case EffectType::Control:
      return 7;
    default:
      fail(kPlace, "illegal top effect.");
  }
}

bool EffectManager::fits(std::int32_t holder, std::int32_t media) {
  if (media == holder || media == 0) return true;
  if (holder == 1 || holder == 2) return media == 3;
  if (holder == 3) return media != 4;
  return false;
}

std::shared_ptr<EffectBase> EffectManager::make(EffectDefine& define) const { return define.createInstance(); }

std::size_t EffectManager::setEffectByDefine(EffectDefine& define) {
  switch (define.type()) {
    case EffectType::Input:
      return setInputEffect(define);
    case EffectType::Output:
      return setOutputEffect(define);
    case EffectType::Filter:
      return setFilterEffect(define);
    case EffectType::Control:
      return setControlEffect(define);
    default:
      fail("Edit::EffectManager::setEffectByDefine", "invalid effect type.");
  }
}

std::size_t EffectManager::setInputEffect(EffectDefine& define) {
  constexpr const char* kPlace = "Edit::EffectManager::setInputEffect";
  auto& chain = object_.effects;
  if (chain.empty()) {
    chain.push_back(make(define));
    setOutputEffect(effects_.getOutputEffect(*chain.front()));
    return 0;
  }
  if (chain.front()->type() != EffectType::Input) fail(kPlace, "different effect type.");
  if (define.owns(*chain.front())) return 0;
  const std::int32_t placement = code(define.placement());
  for (std::size_t i = 1; i < chain.size(); ++i) {
    if (!fits(placement, code(chain[i]->media()))) fail(kPlace, "different filter effect type.");
  }
  chain.front() = make(define);
  return 0;
}

std::size_t EffectManager::setOutputEffect(EffectDefine& define) {
  constexpr const char* kPlace = "Edit::EffectManager::setOutputEffect";
  auto& chain = object_.effects;
  if (chain.empty()) {
    EffectDefine* paired = define.media() == Effect::EffectMedia::Video ? effects_.getPairedInputEffect(define.prototype())
                                                                         : nullptr;
    if (!paired) fail(kPlace, "not exist input effect.");
    chain.push_back(make(*paired));
  }
  if (chain.front()->type() != EffectType::Input) fail(kPlace, "different effect type.");
  if (!fits(code(chain.front()->placement()), code(define.media()))) fail(kPlace, "different effect type.");
  if (chain.size() == 1) {
    chain.push_back(make(define));
  } else if (!define.owns(*chain[1])) {
    chain[1] = make(define);
  }
  return 1;
}

std::size_t EffectManager::setFilterEffect(EffectDefine& define) {
  auto& chain = object_.effects;
  if (!chain.empty() && !fits(code(chain.front()->placement()), code(define.media()))) {
    fail("Edit::EffectManager::setFilterEffect", "different effect type.");
  }
  chain.push_back(make(define));
  return chain.size() - 1;
}

std::size_t EffectManager::setControlEffect(EffectDefine& define) {
  auto& chain = object_.effects;
  if (!chain.empty()) {
    const EffectBase& top = *chain.front();
    if (top.type() != EffectType::Control || top.placement() != Effect::EffectMedia::TimelineOnly) {
      fail("Edit::EffectManager::setControlEffect", "can not change control effect.");
    }
  }
  std::shared_ptr<EffectBase> effect = make(define);
  chain.clear();
  object_.control = governsLayers(define.key());
  chain.push_back(std::move(effect));
  return 0;
}

std::shared_ptr<EffectBase> EffectManager::addEffect(std::wstring_view key, const EffectBase* before) {
  EffectDefine& define = effects_.findEffect(key);
  const auto previous = object_.effects;
  const std::size_t slot = setEffectByDefine(define);
  std::shared_ptr<EffectBase> effect = object_.effects.at(slot);
  // An input effect set again is the one that was there: it keeps the user's values.
  const bool isNew = std::find(previous.begin(), previous.end(), effect) == previous.end();
  if (isNew) {
    effect->setItemData(define.prototype());
    const auto pointCount = static_cast<std::int32_t>(object_.sections.size()) + 2;
    for (const auto& item : effect->items()) {
      if (auto* number = dynamic_cast<Effect::EffectItemNumber*>(item.get())) number->resizeValues(pointCount);
    }
  }
  if (before) moveEffectBehind(*effect, *before);
  return effect;
}

std::size_t EffectManager::indexOf(const EffectBase& effect) const {
  const auto& chain = object_.effects;
  const auto found = std::find_if(chain.begin(), chain.end(), [&](const auto& held) { return held.get() == &effect; });
  return static_cast<std::size_t>(found - chain.begin());
}

bool EffectManager::isFilterAt(std::size_t index) const {
  return index < object_.effects.size() && object_.effects[index]->type() == EffectType::Filter;
}

void EffectManager::moveEffectUp(const EffectBase& effect) {
  const std::size_t index = indexOf(effect);
  if (index == 0 || !isFilterAt(index) || !isFilterAt(index - 1)) return;
  std::swap(object_.effects[index], object_.effects[index - 1]);
}

void EffectManager::moveEffectDown(const EffectBase& effect) {
  const std::size_t index = indexOf(effect);
  if (!isFilterAt(index) || !isFilterAt(index + 1)) return;
  std::swap(object_.effects[index], object_.effects[index + 1]);
}

void EffectManager::moveEffectBehind(const EffectBase& effect, const EffectBase& before) {
  auto& chain = object_.effects;
  std::size_t index = indexOf(effect);
  if (index + 1 != chain.size() || !isFilterAt(index)) return;
  while (index > 0 && chain[index - 1].get() != &before && isFilterAt(index - 1)) {
    std::swap(chain[index], chain[index - 1]);
    --index;
  }
}

void EffectManager::removeEffect(const EffectBase& effect) {
  auto& chain = object_.effects;
  const std::size_t index = indexOf(effect);
  if (index >= chain.size()) return;
  if (index == 0) {
    if (!isFilterAt(0) || !isFilterAt(1)) return;
    moveEffectDown(effect);
    chain.erase(chain.begin() + 1);
    return;
  }
  chain.erase(chain.begin() + static_cast<std::ptrdiff_t>(index));
}

void EffectManager::pruneEffects() {
  auto& chain = object_.effects;
  if (chain.empty()) return;
  const std::int32_t top = code(chain.front()->placement());
  const std::int32_t output =
      chain.size() > 1 && chain[1]->type() == EffectType::Output ? code(chain[1]->media()) : top;
  const auto misfit = [&](const std::shared_ptr<EffectBase>& effect) {
    const std::int32_t media = code(effect->media());
    return !fitsAfterChange(top, media) || !fitsAfterChange(output, media);
  };
  chain.erase(std::remove_if(chain.begin() + 1, chain.end(), misfit), chain.end());
  if (chain.front()->type() == EffectType::Input && (chain.size() < 2 || chain[1]->type() != EffectType::Output)) {
    // The default output goes to index 1, before the filters that stayed.
    std::vector<std::shared_ptr<EffectBase>> filters(chain.begin() + 1, chain.end());
    chain.resize(1);
    setOutputEffect(effects_.getOutputEffect(*chain.front()));
    chain.insert(chain.end(), filters.begin(), filters.end());
  }
}

void EffectManager::copyChainFrom(const Object& source) {
  std::vector<std::shared_ptr<EffectBase>> copies;
  for (const auto& effect : source.effects) {
    std::shared_ptr<EffectBase> copy = effects_.findEffect(effect->name()).createInstance();
    copy->setItemData(*effect);
    copy->disable = effect->disable;
    copy->hide = effect->hide;
    copies.push_back(std::move(copy));
  }
  object_.effects = std::move(copies);
  object_.control = source.control;
}

}  // namespace Edit
