// シーンチェンジ: turns the frame as it stood before the object began into the frame as it
// stands now, by a built-in transition or a wipe. Only the items that the chosen
// transition uses are shown.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class SceneChange final : public EffectInstance<SceneChange> {
 public:
  static const EffectInfo kInfo;
  SceneChange() : EffectInstance(kInfo) {}

  // A change of 種類 shows the items of the new transition and draws the frame again.
  bool itemEvent(ItemEvent& event) override;
  void initialize() override;
  void updateItems() override;
};

}  // namespace Effect
