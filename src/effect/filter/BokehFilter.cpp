#include "effect/filter/BokehFilter.h"

#include "effect/item/FigureList.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 5, 0, 1000, 1),
    number(L"光の強さ", 32, 0, 60, 0.1),
    select(L"形状", FigureList::get, 1),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo BokehFilter::kInfo{L"レンズブラー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"ぼかし", kItems};

}  // namespace Effect
