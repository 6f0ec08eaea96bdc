#include "effect/item/EffectItemComboFile.h"

#include "effect/item/FigureList.h"
#include "effect/item/ItemText.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace Effect {

EffectItemComboFile::EffectItemComboFile(ItemKind kind, std::wstring name, std::shared_ptr<const SelectList> list,
                                         std::int32_t defaultKey, std::wstring fileFilter)
    : ItemValue(kind, std::move(name)), list_(std::move(list)), fileFilter_(std::move(fileFilter)) {
  setValue(defaultKey);
}

void EffectItemComboFile::copyValue(const EffectItemComboFile& other) {
  value_ = other.value_;
  filePath_ = other.filePath_;
}

bool EffectItemComboFile::sameValue(const EffectItemComboFile& other) const {
  return value_ == other.value_ && filePath_ == other.filePath_;
}

void EffectItemComboFile::setValue(std::int32_t key) {
  value_ = list_->contains(key) ? key : list_->firstKey();
  filePath_.clear();
}

std::string EffectItemComboFile::toString() const {
  if (value_ >= 0) return System::Text::toUtf8(list_->label(value_).value_or(L""));
  return System::Text::toUtf8(filePath_);
}

void EffectItemComboFile::fromString(std::string_view text) {
  const std::wstring wide = System::Text::fromUtf8(text);
  if (const auto key = list_->key(wide)) {
    setValue(*key);
  } else if (wide.find(L'.') != std::wstring::npos) {
    setFilePath(wide);
  }
}

void EffectItemComboFile::fromLegacy(std::string_view text, std::string_view /*key*/,
                                     std::wstring_view /*effectName*/, bool /*flag*/) {
  if (text.size() > 2) {
    fromString(text);
    return;
  }
  setValue(ItemText::parseInt(text, "Effect::EffectItemComboFile::fromLegacy"));
}

void EffectItemComboFile::setFilePath(const std::wstring& path) {
  if (path.empty()) return;
  filePath_ = System::FileName::normalize(path);
  value_ = -1;
}

EffectItemFigureSelect::EffectItemFigureSelect(std::wstring name, std::int32_t defaultKey)
    : ItemValue(ItemKind::FigureSelect, std::move(name), FigureList::get(), defaultKey, L"FigureFile") {}

}  // namespace Effect
