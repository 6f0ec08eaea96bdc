#include "effect/output/MovieOutput.h"

#include "effect/output/BasicOutputItems.h"

namespace Effect {

namespace {

// The standard drawing, and the volume of the movie's sound.
constexpr auto kItems = joinItems(kBasicOutputItems, std::array{number(L"音量", 100, 0, 1000, 0.01)});

}  // namespace

const EffectInfo MovieOutput::kInfo{L"映像再生", EffectType::Output, EffectMedia::Both, EffectMedia::Both, L"", kItems};

}  // namespace Effect
