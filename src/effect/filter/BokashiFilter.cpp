#include "effect/filter/BokashiFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 5, 0, 1000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    number(L"光の強さ", 0, 0, 60, 0.1),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo BokashiFilter::kInfo{L"ぼかし", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                      L"ぼかし", kItems};

}  // namespace Effect
