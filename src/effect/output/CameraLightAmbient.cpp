#include "effect/output/CameraLightAmbient.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"明るさ", 50, 0, 200, 0.01),
    color(L"色", kWhite),
};

}  // namespace

const EffectInfo CameraLightAmbient::kInfo{L"環境光(カメラ制御)", EffectType::Filter, EffectMedia::Camera,
                                           EffectMedia::Camera, L"カメラ制御", kItems};

}  // namespace Effect
