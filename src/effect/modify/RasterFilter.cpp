#include "effect/modify/RasterFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"横幅", 100, 0, 2000, 1), number(L"高さ", 100, 0, 2000, 1), number(L"周期", 1, -40, 40, 0.01),
    check(L"縦ラスター", false),      check(L"ランダム振幅", false),
};

}  // namespace

const EffectInfo RasterFilter::kInfo{L"ラスター", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"変形", kItems};

}  // namespace Effect
