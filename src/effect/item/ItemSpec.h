// One row of an effect's item table. Each effect declares its items once, as an array
// of these at the top of its file; the effect's constructor builds the items from it,
// and everything else (the registry, the project file, the settings window, scripts)
// reads the built items. Rows are made with the functions below:
//
//   constexpr Effect::ItemSpec kItems[] = {
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

struct ItemSpec {
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
  constexpr ItemSpec notifying() const {
    ItemSpec spec = *this;
    spec.notifyChange = true;
    return spec;
  }
  // The same row kept out of the settings window.
  constexpr ItemSpec hidden() const {
    ItemSpec spec = *this;
    spec.visible = false;
    return spec;
  }
};

// A number that animates: default, minimum, maximum and step, in user units.
constexpr ItemSpec number(const wchar_t* name, double defaultValue, double minimum, double maximum, double step) {
  return {.form = ItemSpec::Form::Number, .name = name, .defaultValue = defaultValue, .minimum = minimum,
          .maximum = maximum, .step = step};
}
// A number that is a play position in seconds.
constexpr ItemSpec playPosition(const wchar_t* name, double defaultValue, double minimum, double maximum,
                                double step) {
  ItemSpec spec = number(name, defaultValue, minimum, maximum, step);
  spec.form = ItemSpec::Form::PlayPosition;
  return spec;
}
// A layer number, 0 for none (0 to 1000, step 1).
constexpr ItemSpec layerObject(const wchar_t* name) { return {.form = ItemSpec::Form::LayerObject, .name = name}; }
// Links the `members` numbers just before it to one curve ("Group", "Group2").
constexpr ItemSpec group(const wchar_t* name, std::int32_t members) {
  return {.form = ItemSpec::Form::Group, .name = name, .members = members};
}
constexpr ItemSpec integer(const wchar_t* name, std::int32_t defaultValue, std::int32_t minimum,
                           std::int32_t maximum) {
  return {.form = ItemSpec::Form::Integer, .name = name, .defaultValue = static_cast<double>(defaultValue),
          .minimum = static_cast<double>(minimum), .maximum = static_cast<double>(maximum)};
}
// An integer that no control shows (kind 200).
constexpr ItemSpec hiddenInteger(const wchar_t* name, std::int32_t defaultValue) {
  return {.form = ItemSpec::Form::HiddenInteger, .name = name, .defaultValue = static_cast<double>(defaultValue),
          .visible = false};
}
// How many layers a control object governs, 0 for all (0 to 1000).
constexpr ItemSpec layerRange(const wchar_t* name) { return {.form = ItemSpec::Form::LayerRange, .name = name}; }
constexpr ItemSpec scene(const wchar_t* name) { return {.form = ItemSpec::Form::Scene, .name = name}; }
constexpr ItemSpec check(const wchar_t* name, bool on) {
  return {.form = ItemSpec::Form::Check, .name = name, .defaultValue = on ? 1.0 : 0.0};
}
// A check whose script value is 0 or 1.
constexpr ItemSpec checkInteger(const wchar_t* name, bool on) {
  return {.form = ItemSpec::Form::CheckInteger, .name = name, .defaultValue = on ? 1.0 : 0.0};
}
constexpr ItemSpec checkButton(const wchar_t* name, bool on, float left, float right) {
  return {.form = ItemSpec::Form::CheckButton, .name = name, .defaultValue = on ? 1.0 : 0.0, .left = left,
          .right = right};
}
// A choice of `list`, starting at key `defaultKey`.
constexpr ItemSpec select(const wchar_t* name, ItemSpec::ListSource list, std::int32_t defaultKey = 0) {
  return {.form = ItemSpec::Form::Select, .name = name, .defaultValue = static_cast<double>(defaultKey), .list = list};
}
constexpr ItemSpec selectButton(const wchar_t* name, ItemSpec::ListSource list, std::int32_t defaultKey, float left,
                                float right) {
  return {.form = ItemSpec::Form::SelectButton, .name = name, .defaultValue = static_cast<double>(defaultKey),
          .list = list, .left = left, .right = right};
}
constexpr ItemSpec fontSelect(const wchar_t* name) { return {.form = ItemSpec::Form::FontSelect, .name = name}; }
// A figure of the figure list (key `defaultKey`) or a file.
constexpr ItemSpec figureSelect(const wchar_t* name, std::int32_t defaultKey = 1) {
  return {.form = ItemSpec::Form::FigureSelect, .name = name, .defaultValue = static_cast<double>(defaultKey)};
}
// A mask: a figure, a scene or a file.
constexpr ItemSpec maskSelect(const wchar_t* name) { return {.form = ItemSpec::Form::MaskSelect, .name = name}; }
// A file; `filter` names the file types the dialog offers.
constexpr ItemSpec file(const wchar_t* name, const wchar_t* filter = L"") {
  return {.form = ItemSpec::Form::File, .name = name, .filter = filter};
}
constexpr ItemSpec text(const wchar_t* name) { return {.form = ItemSpec::Form::Text, .name = name}; }
constexpr ItemSpec string(const wchar_t* name) { return {.form = ItemSpec::Form::String, .name = name}; }
// A colour, 0xRRGGBB.
constexpr ItemSpec color(const wchar_t* name, std::uint32_t rgb) {
  return {.form = ItemSpec::Form::Color, .name = name, .rgb = rgb};
}
// A colour that may be "not set", picked from the preview (kind 14); it starts unset.
constexpr ItemSpec unsetColor(const wchar_t* name) {
  return {.form = ItemSpec::Form::PickColor, .name = name, .unset = true};
}
constexpr ItemSpec button(const wchar_t* name, float left, float right) {
  return {.form = ItemSpec::Form::Button, .name = name, .left = left, .right = right};
}
// The hidden decoder choice of a movie file.
constexpr ItemSpec yuv(const wchar_t* name) { return {.form = ItemSpec::Form::YUV, .name = name, .visible = false}; }

inline constexpr std::uint32_t kWhite = 0xffffff;
inline constexpr std::uint32_t kBlack = 0x000000;

// Two tables as one, for effects whose items are another's with more behind them.
template <std::size_t N, std::size_t M>
constexpr std::array<ItemSpec, N + M> joinItems(const ItemSpec (&first)[N], const std::array<ItemSpec, M>& second) {
  std::array<ItemSpec, N + M> joined{};
  for (std::size_t i = 0; i < N; ++i) joined[i] = first[i];
  for (std::size_t i = 0; i < M; ++i) joined[N + i] = second[i];
  return joined;
}

// Builds the items of a table in its order and joins the groups to their members.
std::vector<std::unique_ptr<EffectItem>> buildItems(std::span<const ItemSpec> table);

}  // namespace Effect
