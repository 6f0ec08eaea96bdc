#include "effect/item/EffectItemSelect.h"

#include "effect/item/ItemEnvironment.h"
#include "effect/item/ItemText.h"
#include "setting/SettingService.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Effect {

EffectItemSelect::EffectItemSelect(std::wstring name, std::shared_ptr<const SelectList> list, std::int32_t defaultKey,
                                   ItemKind kind)
    : ItemValue(kind, std::move(name)), list_(std::move(list)) {
  setValue(defaultKey);
}

void EffectItemSelect::setValue(std::int32_t key) { value_ = list_->contains(key) ? key : list_->firstKey(); }

std::string EffectItemSelect::toString() const {
  const auto label = list_->label(value_);
  return label ? System::Text::toUtf8(*label) : std::string();
}

void EffectItemSelect::fromString(std::string_view text) {
  if (const auto key = list_->key(System::Text::fromUtf8(text))) value_ = *key;
}

void EffectItemSelect::fromLegacy(std::string_view text, std::string_view /*key*/, std::wstring_view /*effectName*/,
                                  bool /*flag*/) {
  if (text.size() > 2) {
    fromString(text);
    return;
  }
  setValue(ItemText::parseInt(text, "Effect::EffectItemSelect::fromLegacy"));
}

namespace {

std::shared_ptr<SelectList>& sharedFonts() {
  static std::shared_ptr<SelectList> fonts;
  return fonts;
}

// The family of the `DefaultFamily` setting, written "size,family".
std::wstring defaultFamily() {
  auto* settings = System::Singleton<Setting::SettingService>::get();
  if (!settings) return {};
  const std::wstring value = settings->font().find("DefaultFamily").tryString().value_or(L"");
  const std::size_t comma = value.find(L',');
  return comma == std::wstring::npos ? value : value.substr(comma + 1);
}

}  // namespace

std::shared_ptr<const SelectList> EffectItemFontSelect::fontList() {
  std::shared_ptr<SelectList>& fonts = sharedFonts();
  if (!fonts) {
    const auto& source = ItemEnvironment::get().installedFonts;
    fonts = std::make_shared<SelectList>(source ? source() : std::vector<std::wstring>{});
  }
  return fonts;
}

void EffectItemFontSelect::resetFontList() { sharedFonts().reset(); }

EffectItemFontSelect::EffectItemFontSelect(std::wstring name)
    : ItemValue(std::move(name), fontList(), 0, ItemKind::FontSelect) {
  if (const auto key = list().key(defaultFamily())) setValue(*key);
}

void EffectItemFontSelect::fromString(std::string_view text) {
  const std::wstring family = System::Text::fromUtf8(text);
  if (family.empty()) return;
  if (!list().key(family)) {
    // Only the shared font list is ever extended, on the main thread that loads files.
    const std::shared_ptr<SelectList>& fonts = sharedFonts();
    if (fonts && fonts.get() == &list()) {
      fonts->add(fonts->labels().empty() ? 0 : fonts->labels().rbegin()->first + 1, family);
    }
  }
  EffectItemSelect::fromString(text);
}

}  // namespace Effect
