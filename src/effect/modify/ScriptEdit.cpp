#include "effect/modify/ScriptEdit.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    text(L"スクリプト"),
};

}  // namespace

const EffectInfo ScriptEdit::kInfo{L"スクリプト制御", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"アニメーション効果", kItems};

}  // namespace Effect
