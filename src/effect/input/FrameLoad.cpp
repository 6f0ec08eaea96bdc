#include "effect/input/FrameLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    check(L"アルファチャンネルを維持", false),
    check(L"フレームバッファをクリア", false),
};

}  // namespace

const EffectInfo FrameLoad::kInfo{L"フレームバッファ", EffectType::Input, EffectMedia::Video,
                                  EffectMedia::Video, L"", kItems};

}  // namespace Effect
