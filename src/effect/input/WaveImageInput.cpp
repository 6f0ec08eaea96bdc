#include "effect/input/WaveImageInput.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"横幅", 800, 10, 4000, 1),
    number(L"高さ", 400, 10, 4000, 1),
    number(L"再生位置", 0, 0, 20000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    number(L"音量", 100, 0, 1000, 0.01),
    file(L"ファイル", L"AudioFile").notifying(),
    color(L"波形の色", kWhite),
    button(L"波形のプリセット", 0.666f, 1.0f),
    checkButton(L"スペクトラム表示", false, 0.0f, 0.333f),
    checkButton(L"ミラー表示", false, 0.333f, 0.666f),
    integer(L"横解像度", 0, 0, 4000),
    integer(L"縦解像度", 0, 0, 4000),
    integer(L"横スペース", 0, 0, 100),
    integer(L"縦スペース", 0, 0, 100),
};

}  // namespace

const EffectInfo WaveImageInput::kInfo{L"音声波形表示", EffectType::Input, EffectMedia::Video,
                                       EffectMedia::Video, L"カスタムオブジェクト", kItems};

}  // namespace Effect
