#include "effect/item/ItemSpec.h"

#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemColor.h"
#include "effect/item/EffectItemComboFile.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemMaskSelect.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemNumberGroup.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/item/EffectItemText.h"
#include "effect/item/EffectItemYUV.h"
#include "system/Exception.h"
#include "system/Text.h"

namespace Effect {

namespace {

std::int32_t key(const ItemSpec& spec) { return static_cast<std::int32_t>(spec.defaultValue); }

std::unique_ptr<EffectItem> buildItem(const ItemSpec& spec) {
  using Form = ItemSpec::Form;
  switch (spec.form) {
    case Form::Number:
      return std::make_unique<EffectItemNumber>(spec.name, spec.defaultValue, spec.minimum, spec.maximum, spec.step);
    case Form::PlayPosition:
      return std::make_unique<EffectItemNumber>(spec.name, spec.defaultValue, spec.minimum, spec.maximum, spec.step,
                                                ItemKind::PlayPosition);
    case Form::LayerObject:
      return std::make_unique<EffectItemLayerObject>(spec.name);
    case Form::Group:
      return std::make_unique<EffectItemNumberGroup>(spec.name);
    case Form::Integer:
      return std::make_unique<EffectItemInteger>(spec.name, key(spec), static_cast<std::int32_t>(spec.minimum),
                                                 static_cast<std::int32_t>(spec.maximum));
    case Form::HiddenInteger:
      return std::make_unique<EffectItemInteger>(spec.name, key(spec), key(spec), key(spec), ItemKind::HiddenInteger);
    case Form::LayerRange:
      return std::make_unique<EffectItemLayerRange>(spec.name);
    case Form::Scene:
      return std::make_unique<EffectItemScene>(spec.name);
    case Form::Check:
      return std::make_unique<EffectItemCheck>(spec.name, spec.defaultValue != 0.0);
    case Form::CheckInteger:
      return std::make_unique<EffectItemCheckInteger>(spec.name, spec.defaultValue != 0.0);
    case Form::CheckButton:
      return std::make_unique<EffectItemCheckButton>(spec.name, spec.defaultValue != 0.0, spec.left, spec.right);
    case Form::Select:
      return std::make_unique<EffectItemSelect>(spec.name, spec.list(), key(spec));
    case Form::SelectButton:
      return std::make_unique<EffectItemSelectButton>(spec.name, spec.list(), key(spec), spec.left, spec.right);
    case Form::FontSelect:
      return std::make_unique<EffectItemFontSelect>(spec.name);
    case Form::FigureSelect:
      return std::make_unique<EffectItemFigureSelect>(spec.name, key(spec));
    case Form::MaskSelect:
      return std::make_unique<EffectItemMaskSelect>(spec.name);
    case Form::File:
      return std::make_unique<EffectItemFile>(spec.name, spec.filter);
    case Form::Text:
      return std::make_unique<EffectItemText>(spec.name);
    case Form::String:
      return std::make_unique<EffectItemString>(spec.name, L"");
    case Form::Color:
      return std::make_unique<EffectItemColor>(spec.name, spec.rgb);
    case Form::PickColor:
      return std::make_unique<EffectItemColor>(spec.name, spec.rgb, spec.unset, ItemKind::PickColor);
    case Form::Button:
      return std::make_unique<EffectItemButton>(spec.name, spec.left, spec.right);
    case Form::YUV:
      return std::make_unique<EffectItemYUV>(spec.name);
  }
  throw System::NoteException("Effect::buildItems", "invalid item table.");
}

}  // namespace

std::vector<std::unique_ptr<EffectItem>> buildItems(std::span<const ItemSpec> table) {
  std::vector<std::unique_ptr<EffectItem>> items;
  items.reserve(table.size());
  for (const ItemSpec& spec : table) {
    std::unique_ptr<EffectItem> item = buildItem(spec);
    item->setNotifyChange(spec.notifyChange);
    if (!spec.visible) item->setVisible(false);
    if (spec.form == ItemSpec::Form::Group) {
      auto& linker = static_cast<EffectItemNumberGroup&>(*item);
      if (spec.members < 2 || static_cast<std::size_t>(spec.members) > items.size()) {
        throw System::NoteException("Effect::buildItems", "invalid item table.", System::Text::toUtf8(spec.name));
      }
      for (std::size_t k = items.size() - spec.members; k < items.size(); ++k) {
        auto* member = dynamic_cast<EffectItemNumber*>(items[k].get());
        if (!member) throw System::NoteException("Effect::buildItems", "invalid item table.", System::Text::toUtf8(spec.name));
        linker.join(*member);
      }
    }
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace Effect
