#include "effect/input/FigureLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    figureSelect(L"図形の種類").notifying(),
    number(L"サイズ", 100, 0, 4000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    number(L"ライン幅", 4000, 0, 4000, 1),
    color(L"色", kWhite),
    check(L"角を丸くする", false),
};

}  // namespace

const EffectInfo FigureLoad::kInfo{L"図形", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", kItems};

}  // namespace Effect
