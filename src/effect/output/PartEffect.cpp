#include "effect/output/PartEffect.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -5000, 5000, 1),
    number(L"Y", 0, -5000, 5000, 1),
    group(L"Group", 2),
    number(L"回転", 0, -3600, 3600, 0.01),
    number(L"サイズ", 100, 0, 4000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    number(L"ぼかし", 0, 0, 1000, 1),
    maskSelect(L"マスクの種類"),
    check(L"シーンの長さを合わせる", false),
    check(L"マスクの反転", false),
};

}  // namespace

const EffectInfo PartEffect::kInfo{L"部分フィルタ", EffectType::Control, EffectMedia::Video,
                                   EffectMedia::Video, L"", kItems};

}  // namespace Effect
