#include "effect/filter/LightFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 300, 0.1),
    number(L"拡散", 25, 0, 500, 1),
    number(L"比率", 0, -100, 100, 0.1),
    check(L"逆光", false),
    color(L"色", kWhite),
};

}  // namespace

const EffectInfo LightFilter::kInfo{L"ライト", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"光効果", kItems};

}  // namespace Effect
