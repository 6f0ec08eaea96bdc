#include "effect/filter/BlurDirectionFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 20, 0, 1000, 1),
    number(L"角度", 50, -3600, 3600, 0.01),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo BlurDirectionFilter::kInfo{L"方向ブラー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                            L"ぼかし", kItems};

}  // namespace Effect
