#include "effect/filter/BorderFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"サイズ", 5, 0, 500, 1),
    number(L"ぼかし", 5, 0, 100, 1),
    color(L"縁色", kWhite),
    file(L"パターン画像", L"PngFile (*.png)"),
};

}  // namespace

const EffectInfo BorderFilter::kInfo{L"縁取り", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"装飾", kItems};

}  // namespace Effect
