#include "effect/modify/WipeFilter.h"

#include "effect/modify/TransitionList.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"イン", 0.5, 0, 10, 0.01), number(L"アウト", 0.5, 0, 10, 0.01),
    number(L"ぼかし", 2, 0, 100, 1),   select(L"ワイプの種類", TransitionList::wipeList),
    check(L"縦横比固定", true),        check(L"反転(イン)", false),
    check(L"反転(アウト)", false),
};

}  // namespace

const EffectInfo WipeFilter::kInfo{L"ワイプ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"切り替え効果", kItems};

}  // namespace Effect
