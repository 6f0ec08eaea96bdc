#include "effect/modify/AudioVolume.h"

namespace Effect {

namespace {

// The same ranges as 音声再生, so that a value means the same in either place.
constexpr ItemRow kItems[] = {
    number(L"音量", 100, 0, 1000, 0.01),
    number(L"左右", 0, -100, 100, 0.01),
};

}  // namespace

const EffectInfo AudioVolume::kInfo{L"音量調整", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                    L"音声効果", kItems};

}  // namespace Effect
