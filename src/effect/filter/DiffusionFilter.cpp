#include "effect/filter/DiffusionFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 50, 0, 100, 0.1),
    number(L"拡散", 12, 0, 500, 1),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo DiffusionFilter::kInfo{L"拡散光", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                        L"光効果", kItems};

}  // namespace Effect
