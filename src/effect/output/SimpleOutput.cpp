#include "effect/output/SimpleOutput.h"

#include "effect/item/BlendModes.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -10000, 10000, 1),
    number(L"Y", 0, -10000, 10000, 1),
    group(L"Group", 2),
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"透明度", 0, 0, 100, 0.01),
    select(L"合成モード", BlendModes::list),
};

}  // namespace

const EffectInfo SimpleOutput::kInfo{L"基本出力", EffectType::Output, EffectMedia::Video,
                                     EffectMedia::Video, L"", kItems};

}  // namespace Effect
