#include "effect/modify/ImageLoop.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"横回数", 1, 1, 100, 1),
    number(L"縦回数", 1, 1, 100, 1),
    number(L"オフセットX", 0, -10000, 10000, 0.001),
    number(L"オフセットY", 0, -10000, 10000, 0.001),
    check(L"個別オブジェクト", false),
};

}  // namespace

const EffectInfo ImageLoop::kInfo{L"画像ループ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                  L"配置", kItems};

}  // namespace Effect
