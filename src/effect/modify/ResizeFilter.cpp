#include "effect/modify/ResizeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"X", 100, 0, 10000, 0.001),
    number(L"Y", 100, 0, 10000, 0.001),
    group(L"Group", 2),
    check(L"補間なし", false),
    check(L"ピクセル数でサイズ指定", false),
};

}  // namespace

const EffectInfo ResizeFilter::kInfo{L"リサイズ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"変形", kItems};

}  // namespace Effect
