// The mask of マスク, 部分フィルタ and ディスプレイスメントマップ: a figure of the list, a
// scene of the project, or an image file. Exactly one of the three is in force.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/item/EffectItem.h"
#include "effect/item/SelectList.h"

namespace Effect {

class EffectItemMaskSelect : public ItemValue<EffectItemMaskSelect, EffectItem> {
 public:
  explicit EffectItemMaskSelect(std::wstring name, std::int32_t defaultKey = 1);

  void copyValue(const EffectItemMaskSelect& other);
  bool sameValue(const EffectItemMaskSelect& other) const;

  // The scene's name, else the figure's label, else the path.
  std::string toString() const override;
  // A figure label, else the name of a scene of the project, else a file path.
  void fromString(std::string_view text) override;
  std::optional<std::wstring> getFilePath() const override { return filePath_; }
  void setFilePath(const std::wstring& path) override;

  std::int32_t value() const noexcept { return value_; }  // -1 unless a figure
  std::int32_t sceneIndex() const noexcept { return sceneIndex_; }  // -1 unless a scene
  void selectFigure(std::int32_t key);
  void selectScene(std::int32_t sceneId);
  const SelectList& list() const noexcept { return *list_; }

 private:
  std::shared_ptr<const SelectList> list_;
  std::int32_t value_ = -1;
  std::int32_t sceneIndex_ = -1;
  std::wstring filePath_;
};

}  // namespace Effect
