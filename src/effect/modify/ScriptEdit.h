// スクリプト制御: a script written into the object itself, run on the image at each frame.
#pragma once

#include "effect/EffectBase.h"

namespace Effect {

class ScriptEdit final : public EffectInstance<ScriptEdit> {
 public:
  static const EffectInfo kInfo;
  ScriptEdit() : EffectInstance(kInfo) {}
};

}  // namespace Effect
