#include "effect/filter/ChromaKeyFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"色相範囲", 16, 0, 256, 1),
    number(L"彩度範囲", 96, 0, 256, 1),
    number(L"境界補正", 1, 0, 8, 1),
    unsetColor(L"基準色"),
    check(L"色彩補正", false),
    check(L"透過補正", false),
};

}  // namespace

const EffectInfo ChromaKeyFilter::kInfo{L"クロマキー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                        L"抽出", kItems};

}  // namespace Effect
