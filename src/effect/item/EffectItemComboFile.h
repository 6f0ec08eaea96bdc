// A choice from a list or a file of the user's: the figure of 図形. The string form is
// the label of the entry, or the path of the file.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/item/EffectItem.h"
#include "effect/item/SelectList.h"

namespace Effect {

class EffectItemComboFile : public ItemValue<EffectItemComboFile, EffectItem> {
 public:
  EffectItemComboFile(ItemKind kind, std::wstring name, std::shared_ptr<const SelectList> list,
                      std::int32_t defaultKey, std::wstring fileFilter);

  void copyValue(const EffectItemComboFile& other);
  bool sameValue(const EffectItemComboFile& other) const;

  std::string toString() const override;
  // A label selects its entry; a text with a "." is a file; anything else changes nothing.
  void fromString(std::string_view text) override;
  void fromLegacy(std::string_view text, std::string_view key, std::wstring_view effectName, bool flag) override;
  std::optional<std::wstring> getFilePath() const override { return filePath_; }
  // An empty path changes nothing.
  void setFilePath(const std::wstring& path) override;

  // The entry's key, or -1 for a file.
  std::int32_t value() const noexcept { return value_; }
  void setValue(std::int32_t key);
  const SelectList& list() const noexcept { return *list_; }
  const std::wstring& fileFilter() const noexcept { return fileFilter_; }

 private:
  std::shared_ptr<const SelectList> list_;
  std::wstring fileFilter_;
  std::int32_t value_ = 0;
  std::wstring filePath_;
};

// A figure: an entry of the figure list or an SVG or image file.
class EffectItemFigureSelect : public ItemValue<EffectItemFigureSelect, EffectItemComboFile> {
 public:
  explicit EffectItemFigureSelect(std::wstring name, std::int32_t defaultKey = 1);
};

}  // namespace Effect
