#include "effect/filter/ExpandedColorFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"R", 255, 0, 255, 1),
    number(L"G", 255, 0, 255, 1),
    number(L"B", 255, 0, 255, 1),
    group(L"Group", 3),
};

}  // namespace

const EffectInfo ExpandedColorFilter::kInfo{L"拡張色設定", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                            L"色調整", kItems};

}  // namespace Effect
