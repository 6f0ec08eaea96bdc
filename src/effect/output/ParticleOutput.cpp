#include "effect/output/ParticleOutput.h"

#include "effect/item/BlendModes.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"出力頻度", 20, 0, 500, 0.1),
    number(L"出力速度", 400, 0, 20000, 0.1),
    number(L"加速度", 0, -20000, 20000, 0.1),
    number(L"出力方向", 0, -3600, 3600, 0.01),
    number(L"拡散角度", 30, 0, 360, 0.01),
    number(L"透過率", 0, 0, 100, 0.01),
    number(L"透過速度", 0, -200, 200, 0.01),
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"拡大速度", 0, -1000, 1000, 0.001),
    number(L"回転角", 0, -3600, 3600, 0.01),
    number(L"回転速度", 0, -10, 10, 0.01),
    number(L"重力", 0, -2000, 2000, 0.01),
    number(L"生存時間", 0, 0, 600, 0.1),
    check(L"移動範囲の座標からランダムに出力", false),
    check(L"出力方向の基準を移動方向にする", false),
    check(L"回転角の基準を移動方向にする", false),
    check(L"3Dランダム回転", false),
    select(L"合成モード", BlendModes::list),
};

}  // namespace

// A swarm of figures: the output is offered as an object of its own, made with 図形.
const EffectInfo ParticleOutput::kInfo{L"パーティクル出力", EffectType::Output, EffectMedia::Video,
                                       EffectMedia::Video, L"", kItems, L"図形"};

}  // namespace Effect
