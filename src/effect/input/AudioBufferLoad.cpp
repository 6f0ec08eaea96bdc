#include "effect/input/AudioBufferLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    check(L"オーディオバッファをクリア", false),
};

}  // namespace

const EffectInfo AudioBufferLoad::kInfo{L"オーディオバッファ", EffectType::Input, EffectMedia::Audio,
                                        EffectMedia::Audio, L"", kItems};

}  // namespace Effect
