#include "effect/filter/DropShadowFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", -40, -1000, 1000, 1),
    number(L"Y", 24, -1000, 1000, 1),
    number(L"濃さ", 40, 0, 100, 0.1),
    number(L"拡散", 10, 0, 500, 1),
    color(L"影色", kBlack),
    check(L"影を別オブジェクトで描画", true),
};

}  // namespace

const EffectInfo DropShadowFilter::kInfo{L"ドロップシャドウ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                         L"装飾", kItems};

}  // namespace Effect
