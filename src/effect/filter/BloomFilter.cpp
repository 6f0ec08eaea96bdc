#include "effect/filter/BloomFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 500, 0.1),
    number(L"拡散", 250, 10, 1000, 1),
    number(L"しきい値", 80, 0, 200, 0.1),
    number(L"拡散速度", 0, 0, 60, 1),
    unsetColor(L"光色"),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo BloomFilter::kInfo{L"発光", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"光効果", kItems};

}  // namespace Effect
