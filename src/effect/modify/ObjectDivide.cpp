#include "effect/modify/ObjectDivide.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"横分割数", 10, 1, 100, 1),
    number(L"縦分割数", 10, 1, 100, 1),
};

}  // namespace

const EffectInfo ObjectDivide::kInfo{L"オブジェクト分割", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                     L"配置", kItems};

}  // namespace Effect
