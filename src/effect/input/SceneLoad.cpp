#include "effect/input/SceneLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"再生位置", 0, 0, 100000, 0.001),
    number(L"再生速度", 100, -2000, 2000, 0.01).notifying(),
    scene(L"シーン").notifying(),
    check(L"ループ再生", false),
};

}  // namespace

const EffectInfo SceneLoad::kInfo{L"シーン", EffectType::Input, EffectMedia::Both, EffectMedia::Both, L"", kItems};

}  // namespace Effect
