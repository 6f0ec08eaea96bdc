// The choices of シーンチェンジ and ワイプ: the built-in transitions, the built-in wipes, and
// one wipe per picture of %Transition%. シーンチェンジ offers transitions then wipes; ワイプ
// offers the wipes alone. Both lists come from one reading of the folder, so a wipe has
// the same place behind the transitions in one as at the start of the other. Built on
// first use on the main thread.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/item/SelectList.h"

namespace Effect::TransitionList {

// Which of the items of シーンチェンジ besides 種類 a transition uses.
enum Flag : std::uint32_t {
  kInvert = 1,       // 反転
  kAngle = 2,        // 角度
  kDivide = 4,       // 分割数
  kBlur = 8,         // ぼかし
  kKeepAspect = 16,  // 縦横比固定
  kVertical = 32,    // 縦方向
};

// How many built-in transitions stand before the wipes in the list of シーンチェンジ.
inline constexpr std::int32_t kTransitionCount = 13;
// What every wipe uses.
inline constexpr std::uint32_t kWipeFlags = kInvert | kKeepAspect;

// The flags of the entry at `index` of the list of シーンチェンジ; any index behind the
// built-in transitions is a wipe.
std::uint32_t flags(std::int32_t index);

// 種類 of シーンチェンジ.
std::shared_ptr<const SelectList> sceneChangeList();
// ワイプの種類 of ワイプ.
std::shared_ptr<const SelectList> wipeList();
// Reads the folder again on the next use (after a reload, and in tests).
void reset();

}  // namespace Effect::TransitionList
