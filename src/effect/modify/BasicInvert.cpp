#include "effect/modify/BasicInvert.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    check(L"上下反転", false), check(L"左右反転", false),   check(L"輝度反転", false),
    check(L"色相反転", false), check(L"透明度反転", false),
};

}  // namespace

const EffectInfo BasicInvert::kInfo{L"反転", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"基本効果", kItems};

}  // namespace Effect
