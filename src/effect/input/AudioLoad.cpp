#include "effect/input/AudioLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    file(L"ファイル", L"AudioFile").notifying(),
    integer(L"トラック", 1, 1, 100).notifying(),
    check(L"ループ再生", false),
};

}  // namespace

const EffectInfo AudioLoad::kInfo{L"音声ファイル", EffectType::Input, EffectMedia::Audio,
                                  EffectMedia::Audio, L"", kItems};

}  // namespace Effect
