#include "effect/modify/AudioFadeFilter.h"

namespace Effect {

namespace {

// The same times as フェード, so that picture and sound of one object can fade alike.
constexpr ItemRow kItems[] = {
    number(L"イン", 0.5, 0, 10, 0.01),
    number(L"アウト", 0.5, 0, 10, 0.01),
};

}  // namespace

const EffectInfo AudioFadeFilter::kInfo{L"音量フェード", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                        L"音声効果", kItems};

}  // namespace Effect
