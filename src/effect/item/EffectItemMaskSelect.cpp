#include "effect/item/EffectItemMaskSelect.h"

#include "effect/item/FigureList.h"
#include "effect/item/ItemEnvironment.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace Effect {

EffectItemMaskSelect::EffectItemMaskSelect(std::wstring name, std::int32_t defaultKey)
    : ItemValue(ItemKind::MaskSelect, std::move(name)), list_(FigureList::get()) {
  selectFigure(defaultKey);
}

void EffectItemMaskSelect::copyValue(const EffectItemMaskSelect& other) {
  value_ = other.value_;
  sceneIndex_ = other.sceneIndex_;
  filePath_ = other.filePath_;
}

bool EffectItemMaskSelect::sameValue(const EffectItemMaskSelect& other) const {
  return value_ == other.value_ && sceneIndex_ == other.sceneIndex_ && filePath_ == other.filePath_;
}

void EffectItemMaskSelect::selectFigure(std::int32_t key) {
  value_ = list_->contains(key) ? key : list_->firstKey();
  sceneIndex_ = -1;
  filePath_.clear();
}

void EffectItemMaskSelect::selectScene(std::int32_t sceneId) {
  value_ = -1;
  sceneIndex_ = sceneId;
  filePath_.clear();
}

void EffectItemMaskSelect::setFilePath(const std::wstring& path) {
  value_ = -1;
  sceneIndex_ = -1;
  filePath_ = System::FileName::normalize(path);
}

std::string EffectItemMaskSelect::toString() const {
  if (sceneIndex_ >= 0) {
    const auto& sceneName = ItemEnvironment::get().sceneName;
    return System::Text::toUtf8(sceneName ? sceneName(sceneIndex_).value_or(L"") : L"");
  }
  if (value_ >= 0) return System::Text::toUtf8(list_->label(value_).value_or(L""));
  return System::Text::toUtf8(filePath_);
}

void EffectItemMaskSelect::fromString(std::string_view text) {
  const std::wstring wide = System::Text::fromUtf8(text);
  if (const auto key = list_->key(wide)) {
    selectFigure(*key);
    return;
  }
  const auto& findScene = ItemEnvironment::get().findSceneByName;
  if (const auto scene = findScene ? findScene(wide) : std::nullopt) {
    selectScene(*scene);
    return;
  }
  setFilePath(wide);
}

}  // namespace Effect
