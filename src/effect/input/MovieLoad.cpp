#include "effect/input/MovieLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    playPosition(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    file(L"ファイル", L"MovieFile").notifying(),
    integer(L"トラック", 1, 1, 100).notifying(),
    check(L"ループ再生", false),
    hiddenInteger(L"音声付き", 0),
    yuv(L"YUV"),
};

}  // namespace

const EffectInfo MovieLoad::kInfo{L"動画ファイル", EffectType::Input, EffectMedia::Both,
                                  EffectMedia::Both, L"", kItems};

}  // namespace Effect
