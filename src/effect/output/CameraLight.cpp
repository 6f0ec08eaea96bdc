#include "effect/output/CameraLight.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"緯度", 0, -3600, 3600, 0.01),
    number(L"経度", 0, -3600, 3600, 0.01),
    number(L"傾き", 0, -3600, 3600, 0.01),
    number(L"明るさ", 50, 0, 200, 0.01),
    color(L"色", kWhite),
    check(L"影を付ける", true),
    integer(L"影の範囲", 1000, 1, 100000),
};

}  // namespace

const EffectInfo CameraLight::kInfo{L"並行光源(カメラ制御)", EffectType::Filter, EffectMedia::Camera,
                                    EffectMedia::Camera, L"カメラ制御", kItems};

}  // namespace Effect
