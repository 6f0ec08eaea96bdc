#include "effect/input/ModelLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    file(L"ファイル", L"ModelFile").notifying(),
    check(L"座標系を調整", false),
};

}  // namespace

const EffectInfo ModelLoad::kInfo{L"モデルファイル", EffectType::Input, EffectMedia::Video,
                                  EffectMedia::Video, L"", kItems};

}  // namespace Effect
