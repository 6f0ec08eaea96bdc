#include "effect/filter/MonochromeFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 100, 0.1),
    color(L"色", kWhite),
    check(L"輝度を保持する", true),
};

}  // namespace

const EffectInfo MonochromeFilter::kInfo{L"単色化", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                         L"色調整", kItems};

}  // namespace Effect
