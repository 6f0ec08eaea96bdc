// What every effect of one class shares: its key, its role, what it works on, where it
// is offered, its menu category and its item table. A built-in effect declares one as a
// constant next to its item table.
#pragma once

#include <cstdint>
#include <span>

#include "effect/item/ItemRow.h"

namespace Effect {

// The role of an effect in its object's chain. The two alias values never stand in an
// effect; the menu lists compare them with the same field.
enum class EffectType : std::uint8_t {
  Input = 1,
  Output = 2,
  Filter = 3,
  Control = 4,
  AliasObject = 100,
  AliasEffect = 101,
};

// What an effect works on, and where it is offered. `Both` is video and audio;
// `TimelineOnly` is offered on video and audio layers but not as media.
enum class EffectMedia : std::uint8_t {
  Video = 1,
  Audio = 2,
  Both = 3,
  Camera = 4,
  TimelineOnly = 5,
};

struct EffectInfo {
  const wchar_t* name;  // the key, the label before translation, and `effect.name` in files
  EffectType type;
  EffectMedia media;
  EffectMedia placement;
  const wchar_t* category;  // the submenu, empty at the top level
  std::span<const ItemRow> items;
  // The input effect that makes an object of this output effect, so that the output
  // can be offered as an object; only パーティクル出力 has one (図形).
  const wchar_t* pairedInput = nullptr;
};

}  // namespace Effect
