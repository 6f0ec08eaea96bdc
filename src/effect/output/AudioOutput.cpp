#include "effect/output/AudioOutput.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"音量", 100, 0, 1000, 0.01),
    number(L"左右", 0, -100, 100, 0.01),
};

}  // namespace

const EffectInfo AudioOutput::kInfo{L"音声再生", EffectType::Output, EffectMedia::Audio,
                                    EffectMedia::Audio, L"", kItems};

}  // namespace Effect
