#include "effect/modify/MosaicFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"サイズ", 12, 1, 2000, 1),
};

}  // namespace

const EffectInfo MosaicFilter::kInfo{L"モザイク", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"加工", kItems};

}  // namespace Effect
