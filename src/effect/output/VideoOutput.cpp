#include "effect/output/VideoOutput.h"

#include "effect/output/BasicOutputItems.h"

namespace Effect {

const EffectInfo VideoOutput::kInfo{L"標準描画", EffectType::Output, EffectMedia::Video,
                                    EffectMedia::Video, L"", kBasicOutputItems};

}  // namespace Effect
