#include "effect/item/ItemRow.h"

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

std::int32_t key(const ItemRow& row) { return static_cast<std::int32_t>(row.defaultValue); }

std::unique_ptr<EffectItem> buildItem(const ItemRow& row) {
  using Form = ItemRow::Form;
  switch (row.form) {
    case Form::Number:
      return std::make_unique<EffectItemNumber>(row.name, row.defaultValue, row.minimum, row.maximum, row.step);
    case Form::PlayPosition:
      return std::make_unique<EffectItemNumber>(row.name, row.defaultValue, row.minimum, row.maximum, row.step,
                                                ItemKind::PlayPosition);
    case Form::LayerObject:
      return std::make_unique<EffectItemLayerObject>(row.name);
    case Form::Group:
      return std::make_unique<EffectItemNumberGroup>(row.name);
    case Form::Integer:
      return std::make_unique<EffectItemInteger>(row.name, key(row), static_cast<std::int32_t>(row.minimum),
                                                 static_cast<std::int32_t>(row.maximum));
    case Form::HiddenInteger:
      return std::make_unique<EffectItemInteger>(row.name, key(row), key(row), key(row), ItemKind::HiddenInteger);
    case Form::LayerRange:
      return std::make_unique<EffectItemLayerRange>(row.name);
    case Form::Scene:
      return std::make_unique<EffectItemScene>(row.name);
    case Form::Check:
      return std::make_unique<EffectItemCheck>(row.name, row.defaultValue != 0.0);
    case Form::CheckInteger:
      return std::make_unique<EffectItemCheckInteger>(row.name, row.defaultValue != 0.0);
    case Form::CheckButton:
      return std::make_unique<EffectItemCheckButton>(row.name, row.defaultValue != 0.0, row.left, row.right);
    case Form::Select:
      return std::make_unique<EffectItemSelect>(row.name, row.list(), key(row));
    case Form::SelectButton:
      return std::make_unique<EffectItemSelectButton>(row.name, row.list(), key(row), row.left, row.right);
    case Form::FontSelect:
      return std::make_unique<EffectItemFontSelect>(row.name);
    case Form::FigureSelect:
      return std::make_unique<EffectItemFigureSelect>(row.name, key(row));
    case Form::MaskSelect:
      return std::make_unique<EffectItemMaskSelect>(row.name);
    case Form::File:
      return std::make_unique<EffectItemFile>(row.name, row.filter);
    case Form::Text:
      return std::make_unique<EffectItemText>(row.name);
    case Form::String:
      return std::make_unique<EffectItemString>(row.name, L"");
    case Form::Color:
      return std::make_unique<EffectItemColor>(row.name, row.rgb);
    case Form::PickColor:
      return std::make_unique<EffectItemColor>(row.name, row.rgb, row.unset, ItemKind::PickColor);
    case Form::Button:
      return std::make_unique<EffectItemButton>(row.name, row.left, row.right);
    case Form::YUV:
      return std::make_unique<EffectItemYUV>(row.name);
  }
  throw System::NoteException("Effect::buildItems", "invalid item table.");
}

}  // namespace

std::vector<std::unique_ptr<EffectItem>> buildItems(std::span<const ItemRow> table) {
  std::vector<std::unique_ptr<EffectItem>> items;
  items.reserve(table.size());
  for (const ItemRow& row : table) {
    std::unique_ptr<EffectItem> item = buildItem(row);
    item->setNotifyChange(row.notifyChange);
    if (!row.visible) item->setVisible(false);
    if (row.form == ItemRow::Form::Group) {
      auto& linker = static_cast<EffectItemNumberGroup&>(*item);
      if (row.members < 2 || static_cast<std::size_t>(row.members) > items.size()) {
        throw System::NoteException("Effect::buildItems", "invalid item table.", System::Text::toUtf8(row.name));
      }
      for (std::size_t k = items.size() - row.members; k < items.size(); ++k) {
        auto* member = dynamic_cast<EffectItemNumber*>(items[k].get());
        if (!member) throw System::NoteException("Effect::buildItems", "invalid item table.", System::Text::toUtf8(row.name));
        linker.join(*member);
      }
    }
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace Effect
