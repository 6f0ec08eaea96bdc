// The hidden pair of 動画ファイル: which input plug-in decodes the file (0 for the
// automatic choice, else 1 plus its index in the plug-in table) and a number that the
// plug-in gives meaning to. Written as the plug-in's name, so that files survive a
// change in the order of installed plug-ins.
#pragma once

#include <cstdint>

#include "effect/item/EffectItem.h"

namespace Effect {

class EffectItemYUV : public ItemValue<EffectItemYUV, EffectItem> {
 public:
  explicit EffectItemYUV(std::wstring name) : ItemValue(ItemKind::YUV, std::move(name)) { setVisible(false); }

  void copyValue(const EffectItemYUV& other);
  bool sameValue(const EffectItemYUV& other) const;

  // Empty when both are 0; else the plug-in's name ("自動" for the automatic choice),
  // and "," and the number when that isn't 0.
  std::string toString() const override;
  // An unknown plug-in name is the automatic choice.
  void fromString(std::string_view text) override;

  std::int32_t decoder() const noexcept { return decoder_; }
  std::int32_t number() const noexcept { return number_; }
  void set(std::int32_t decoder, std::int32_t number) noexcept {
    decoder_ = decoder;
    number_ = number;
  }

 private:
  std::int32_t decoder_ = 0;
  std::int32_t number_ = 0;
};

}  // namespace Effect
