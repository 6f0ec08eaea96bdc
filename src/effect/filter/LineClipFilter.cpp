#include "effect/filter/LineClipFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"中心X", 0, -5000, 5000, 0.1),
    number(L"中心Y", 0, -5000, 5000, 0.1),
    group(L"Group", 2),
    number(L"角度", 0, -3600, 3600, 0.01),
    number(L"ぼかし", 1, 0, 2000, 1),
    number(L"幅", 0, -2000, 2000, 1),
};

}  // namespace

const EffectInfo LineClipFilter::kInfo{L"斜めクリッピング", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                       L"クリッピング", kItems};

}  // namespace Effect
