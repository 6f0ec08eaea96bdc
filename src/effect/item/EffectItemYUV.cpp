#include "effect/item/EffectItemYUV.h"

#include "effect/item/ItemEnvironment.h"
#include "effect/item/ItemText.h"
#include "system/Text.h"

namespace Effect {

namespace {

std::vector<std::wstring> pluginNames() {
  const auto& source = ItemEnvironment::get().inputPluginNames;
  return source ? source() : std::vector<std::wstring>{};
}

}  // namespace

void EffectItemYUV::copyValue(const EffectItemYUV& other) {
  decoder_ = other.decoder_;
  number_ = other.number_;
}

bool EffectItemYUV::sameValue(const EffectItemYUV& other) const {
  return decoder_ == other.decoder_ && number_ == other.number_;
}

std::string EffectItemYUV::toString() const {
  if (decoder_ == 0 && number_ == 0) return {};
  const std::vector<std::wstring> names = pluginNames();
  const bool known = decoder_ > 0 && decoder_ <= static_cast<std::int32_t>(names.size());
  std::string text = System::Text::toUtf8(known ? names[decoder_ - 1] : L"自動");
  if (number_ != 0) text += ',' + std::to_string(number_);
  return text;
}

void EffectItemYUV::fromString(std::string_view text) {
  if (text.empty()) {
    set(0, 0);
    return;
  }
  const std::vector<std::string_view> fields = ItemText::split(text, ',');
  const std::int32_t number = fields.size() > 1 ? ItemText::parseInt(fields[1], "Effect::EffectItemYUV::fromString") : 0;
  const std::wstring name = System::Text::fromUtf8(fields[0]);
  const std::vector<std::wstring> names = pluginNames();
  std::int32_t decoder = 0;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) decoder = static_cast<std::int32_t>(i) + 1;
  }
  set(decoder, number);
}

}  // namespace Effect
