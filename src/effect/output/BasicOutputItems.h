// The items of the standard drawing, shared by 標準描画 and 映像再生, which draw alike.
#pragma once

#include "effect/item/BlendModes.h"
#include "effect/item/ItemRow.h"

namespace Effect {

inline constexpr ItemRow kBasicOutputItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"中心X", 0, -5000, 5000, 0.01),
    number(L"中心Y", 0, -5000, 5000, 0.01),
    number(L"中心Z", 0, -5000, 5000, 0.01),
    number(L"X軸回転", 0, -3600, 3600, 0.01),
    number(L"Y軸回転", 0, -3600, 3600, 0.01),
    number(L"Z軸回転", 0, -3600, 3600, 0.01),
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"縦横比", 0, -100, 100, 0.001),
    number(L"透明度", 0, 0, 100, 0.01),
    select(L"合成モード", BlendModes::list),
};

}  // namespace Effect
