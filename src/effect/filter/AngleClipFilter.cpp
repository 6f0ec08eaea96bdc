#include "effect/filter/AngleClipFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"中心X", 0, -5000, 5000, 0.1),
    number(L"中心Y", 0, -5000, 5000, 0.1),
    group(L"Group", 2),
    number(L"基準角", 0, -3600, 3600, 0.01),
    number(L"範囲角", 90, -360, 360, 0.01),
    number(L"ぼかし", 1, 0, 2000, 1),
    check(L"基準角を中央にする", false),
};

}  // namespace

const EffectInfo AngleClipFilter::kInfo{L"扇クリッピング", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                        L"クリッピング", kItems};

}  // namespace Effect
