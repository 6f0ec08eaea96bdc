#include "effect/output/MaterialSetting.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"光沢度", 70, 0, 100, 1),
};

}  // namespace

const EffectInfo MaterialSetting::kInfo{L"材質設定(カメラ制御)", EffectType::Filter, EffectMedia::Video,
                                        EffectMedia::Video, L"カメラ制御", kItems};

}  // namespace Effect
