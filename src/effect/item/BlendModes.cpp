#include "effect/item/BlendModes.h"

#include <array>
#include <utility>

namespace Effect::BlendModes {

namespace {

struct Mode {
  std::int32_t value;
  const wchar_t* label;  // empty for the modes that only scripts reach
  std::string_view word;
};

constexpr std::array<Mode, 17> kModes{{
    {0, L"通常", "none"},
    {1, L"加算", "add"},
    {2, L"減算", "sub"},
    {3, L"乗算", "mul"},
    {4, L"スクリーン", "screen"},
    {5, L"オーバーレイ", "overlay"},
    {6, L"比較(明)", "light"},
    {7, L"比較(暗)", "dark"},
    {8, L"輝度", "brightness"},
    {9, L"色差", "chroma"},
    {10, L"陰影", "shadow"},
    {11, L"明暗", "light_dark"},
    {12, L"差分", "diff"},
    {20, L"", "alpha_add"},
    {21, L"", "alpha_add2"},
    {22, L"", "alpha_max"},
    {23, L"", "alpha_sub"},
}};

}  // namespace

std::shared_ptr<const SelectList> list() {
  static const std::shared_ptr<const SelectList> modes = [] {
    auto built = std::make_shared<SelectList>();
    for (const Mode& mode : kModes) {
      if (*mode.label) built->add(mode.value, mode.label);
    }
    return std::shared_ptr<const SelectList>(std::move(built));
  }();
  return modes;
}

std::optional<std::int32_t> fromScriptWord(std::string_view word) {
  for (const Mode& mode : kModes) {
    if (mode.word == word) return mode.value;
  }
  return std::nullopt;
}

}  // namespace Effect::BlendModes
