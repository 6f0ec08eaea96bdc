#include "effect/output/CameraControl.h"

#include "effect/item/EffectItemInteger.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    // A camera that sits in front of the frame at the default focal length sees the
    // plane z = 0 at its natural size.
    number(L"Z", -1024, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"目標X", 0, -100000, 100000, 0.01),
    number(L"目標Y", 0, -100000, 100000, 0.01),
    number(L"目標Z", 0, -100000, 100000, 0.01),
    group(L"Group2", 3),
    layerObject(L"目標レイヤー"),
    number(L"傾き", 0, -3600, 3600, 0.01),
    number(L"視野角", 0, 0, 120, 0.01),
    layerRange(L"対象レイヤー数"),
};

}  // namespace

// Drawn like video but placed on camera layers.
const EffectInfo CameraControl::kInfo{L"カメラ制御", EffectType::Control, EffectMedia::Video,
                                      EffectMedia::Camera, L"オブジェクト制御", kItems};

CameraControl::CameraControl() : EffectInstance(kInfo), layerRange_(item<EffectItemLayerRange>(L"対象レイヤー数")) {}

std::int32_t CameraControl::getLayerRange() const { return layerRange_.value(); }

}  // namespace Effect
