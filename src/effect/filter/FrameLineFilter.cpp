#include "effect/filter/FrameLineFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -1000, 1000, 1),
    number(L"Y", 0, -1000, 1000, 1),
    group(L"Group", 2),
    number(L"サイズ", 10, 0, 1000, 1),
    number(L"丸み", 0, 0, 1000, 1),
    color(L"枠色", kWhite),
    file(L"パターン画像", L"PngFile (*.png)"),
};

}  // namespace

const EffectInfo FrameLineFilter::kInfo{L"枠線", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                        L"装飾", kItems};

}  // namespace Effect
