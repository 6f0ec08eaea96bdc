#include "effect/filter/BlurFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 20, 0, 80, 0.01),
    number(L"X", 0, -2000, 2000, 0.1),
    number(L"Y", 0, -2000, 2000, 0.1),
    group(L"Group", 2),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo BlurFilter::kInfo{L"放射ブラー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"ぼかし", kItems};

}  // namespace Effect
