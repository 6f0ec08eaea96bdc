// The blend modes of 合成モード: the thirteen that the list offers, and the words by
// which a script names them, which reach four more modes that only scripts can choose.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "effect/item/SelectList.h"

namespace Effect::BlendModes {

std::shared_ptr<const SelectList> list();
// "none", "add", ..., "alpha_sub"; empty for an unknown word.
std::optional<std::int32_t> fromScriptWord(std::string_view word);

}  // namespace Effect::BlendModes
