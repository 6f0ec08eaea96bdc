// One row of an effect's item table. Each effect declares its items once, as an array
// of these at the top of its file; the effect's constructor builds the items from it,
// and everything else (the registry, the project file, the settings window, scripts)
// reads the built items. Rows are made with the functions below:
//
//   constexpr Effect::ItemRow kItems[] = {
//       Effect::number(L"X", 0, -100000, 100000, 0.01),
//       Effect::number(L"Y", 0, -100000, 100000, 0.01),
//       Effect::group(L"Group", 2),
//       Effect::check(L"サイズ固定", false),
//   };
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "effect/item/SelectList.h"

namespace Effect {

class EffectItem;

struct ItemRow {
  enum class Form : std::uint8_t {
    Number,
    PlayPosition,
    LayerObject,
    Group,
    Integer,
    HiddenInteger,
    LayerRange,
    Scene,
    Check,
    CheckInteger,
    CheckButton,
    Select,
    SelectButton,
    FontSelect,
    FigureSelect,
    MaskSelect,
    File,
    Text,
    String,
    Color,
    PickColor,
    Button,
    YUV,
  };
  using ListSource = std::shared_ptr<const SelectList> (*)();

  Form form;
  const wchar_t* name;
  // Numbers: default, range and step in user units. Integers, selects and figures use
  // `defaultValue` as their default (a key for the lists).
  double defaultValue = 0.0;
  double minimum = 0.0;
  double maximum = 0.0;
  double step = 1.0;
  ListSource list = nullptr;
  std::uint32_t rgb = 0;  // 0xRRGGBB
  bool unset = false;     // a kind 14 colour that starts without a value
  // The place of a button in its row, as fractions of the row's width.
  float left = 0.0f;
  float right = 1.0f;
  const wchar_t* filter = L"";  // the file types of a file item
  std::int32_t members = 0;     // a group links this many numbers just before it
  bool notifyChange = false;
  bool visible = true;

  // The same row with the effect told of each change the user makes to it.
  constexpr ItemRow notifying() const {
    ItemRow row = *this;
    row.notifyChange = true;
    return row;
  }
  // The same row kept out of the settings window.
  constexpr ItemRow hidden() const {
    ItemRow row = *this;
    row.visible = false;
    return row;
  }
};

// A number that animates: default, minimum, maximum and step, in user units.
constexpr ItemRow number(const wchar_t* name, double defaultValue, double minimum, double maximum, double step) {
  return {.form = ItemRow::Form::Number, .name = name, .defaultValue = defaultValue, .minimum = minimum,
          .maximum = maximum, .step = step};
}
// A number that is a play position in seconds.
constexpr ItemRow playPosition(const wchar_t* name, double defaultValue, double minimum, double maximum,
                                double step) {
  ItemRow row = number(name, defaultValue, minimum, maximum, step);
  row.form = ItemRow::Form::PlayPosition;
  return row;
}
// A layer number, 0 for none (0 to 1000, step 1).
constexpr ItemRow layerObject(const wchar_t* name) { return {.form = ItemRow::Form::LayerObject, .name = name}; }
// Links the `members` numbers just before it to one curve ("Group", "Group2").
constexpr ItemRow group(const wchar_t* name, std::int32_t members) {
  return {.form = ItemRow::Form::Group, .name = name, .members = members};
}
constexpr ItemRow integer(const wchar_t* name, std::int32_t defaultValue, std::int32_t minimum,
                           std::int32_t maximum) {
  return {.form = ItemRow::Form::Integer, .name = name, .defaultValue = static_cast<double>(defaultValue),
          .minimum = static_cast<double>(minimum), .maximum = static_cast<double>(maximum)};
}
// An integer that no control shows (kind 200).
constexpr ItemRow hiddenInteger(const wchar_t* name, std::int32_t defaultValue) {
  return {.form = ItemRow::Form::HiddenInteger, .name = name, .defaultValue = static_cast<double>(defaultValue),
          .visible = false};
}
// How many layers a control object governs, 0 for all (0 to 1000).
constexpr ItemRow layerRange(const wchar_t* name) { return {.form = ItemRow::Form::LayerRange, .name = name}; }
constexpr ItemRow scene(const wchar_t* name) { return {.form = ItemRow::Form::Scene, .name = name}; }
constexpr ItemRow check(const wchar_t* name, bool on) {
  return {.form = ItemRow::Form::Check, .name = name, .defaultValue = on ? 1.0 : 0.0};
}
// A check whose script value is 0 or 1.
constexpr ItemRow checkInteger(const wchar_t* name, bool on) {
  return {.form = ItemRow::Form::CheckInteger, .name = name, .defaultValue = on ? 1.0 : 0.0};
}
constexpr ItemRow checkButton(const wchar_t* name, bool on, float left, float right) {
  return {.form = ItemRow::Form::CheckButton, .name = name, .defaultValue = on ? 1.0 : 0.0, .left = left,
          .right = right};
}
// A choice of `list`, starting at key `defaultKey`.
constexpr ItemRow select(const wchar_t* name, ItemRow::ListSource list, std::int32_t defaultKey = 0) {
  return {.form = ItemRow::Form::Select, .name = name, .defaultValue = static_cast<double>(defaultKey), .list = list};
}
constexpr ItemRow selectButton(const wchar_t* name, ItemRow::ListSource list, std::int32_t defaultKey, float left,
                                float right) {
  return {.form = ItemRow::Form::SelectButton, .name = name, .defaultValue = static_cast<double>(defaultKey),
          .list = list, .left = left, .right = right};
}
constexpr ItemRow fontSelect(const wchar_t* name) { return {.form = ItemRow::Form::FontSelect, .name = name}; }
// A figure of the figure list (key `defaultKey`) or a file.
constexpr ItemRow figureSelect(const wchar_t* name, std::int32_t defaultKey = 1) {
  return {.form = ItemRow::Form::FigureSelect, .name = name, .defaultValue = static_cast<double>(defaultKey)};
}
// A mask: a figure, a scene or a file.
constexpr ItemRow maskSelect(const wchar_t* name) { return {.form = ItemRow::Form::MaskSelect, .name = name}; }
// A file; `filter` names the file types the dialog offers.
constexpr ItemRow file(const wchar_t* name, const wchar_t* filter = L"") {
  return {.form = ItemRow::Form::File, .name = name, .filter = filter};
}
constexpr ItemRow text(const wchar_t* name) { return {.form = ItemRow::Form::Text, .name = name}; }
constexpr ItemRow string(const wchar_t* name) { return {.form = ItemRow::Form::String, .name = name}; }
// A colour, 0xRRGGBB.
constexpr ItemRow color(const wchar_t* name, std::uint32_t rgb) {
  return {.form = ItemRow::Form::Color, .name = name, .rgb = rgb};
}
// A colour that may be "not set", picked from the preview (kind 14); it starts unset.
constexpr ItemRow unsetColor(const wchar_t* name) {
  return {.form = ItemRow::Form::PickColor, .name = name, .unset = true};
}
constexpr ItemRow button(const wchar_t* name, float left, float right) {
  return {.form = ItemRow::Form::Button, .name = name, .left = left, .right = right};
}
// The hidden decoder choice of a movie file.
constexpr ItemRow yuv(const wchar_t* name) { return {.form = ItemRow::Form::YUV, .name = name, .visible = false}; }

inline constexpr std::uint32_t kWhite = 0xffffff;
inline constexpr std::uint32_t kBlack = 0x000000;

// Two tables as one, for effects whose items are another's with more behind them.
template <std::size_t N, std::size_t M>
constexpr std::array<ItemRow, N + M> joinItems(const ItemRow (&first)[N], const std::array<ItemRow, M>& second) {
  std::array<ItemRow, N + M> joined{};
  for (std::size_t i = 0; i < N; ++i) joined[i] = first[i];
  for (std::size_t i = 0; i < M; ++i) joined[N + i] = second[i];
  return joined;
}

// Builds the items of a table in its order and joins the groups to their members.
std::vector<std::unique_ptr<EffectItem>> buildItems(std::span<const ItemRow> table);

}  // namespace Effect
