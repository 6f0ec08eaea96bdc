#include "effect/filter/ColorKeyFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"輝度範囲", 400, 0, 4096, 1),
    number(L"色差範囲", 400, 0, 4096, 1),
    number(L"境界補正", 1, 0, 80, 1),
    unsetColor(L"基準色"),
};

}  // namespace

const EffectInfo ColorKeyFilter::kInfo{L"カラーキー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                       L"抽出", kItems};

}  // namespace Effect
