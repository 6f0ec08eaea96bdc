#include "effect/modify/NoiseReductionFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 100, 0.1),
    number(L"範囲", 2, 1, 8, 1),
    number(L"しきい値", 20, 0, 200, 1),
};

}  // namespace

const EffectInfo NoiseReductionFilter::kInfo{L"ノイズ除去", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                             L"加工", kItems};

}  // namespace Effect
