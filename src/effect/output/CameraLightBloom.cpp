#include "effect/output/CameraLightBloom.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 500, 0.1),
    number(L"拡散", 400, 0, 2000, 1),
};

}  // namespace

const EffectInfo CameraLightBloom::kInfo{L"ライトブルーム(カメラ制御)", EffectType::Filter, EffectMedia::Camera,
                                         EffectMedia::Camera, L"カメラ制御", kItems};

}  // namespace Effect
