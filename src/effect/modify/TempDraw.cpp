#include "effect/modify/TempDraw.h"

namespace Effect {

const EffectInfo TempDraw::kInfo{L"オフスクリーン描画", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                 L"", std::span<const ItemRow>{}};

}  // namespace Effect
