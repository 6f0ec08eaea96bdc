#include "effect/input/BeforeObjectLoad.h"

namespace Effect {

const EffectInfo BeforeObjectLoad::kInfo{L"直前オブジェクト", EffectType::Input, EffectMedia::Video,
                                         EffectMedia::Video, L"", std::span<const ItemRow>{}};

}  // namespace Effect
