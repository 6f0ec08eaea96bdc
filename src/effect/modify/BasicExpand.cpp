#include "effect/modify/BasicExpand.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"上", 0, 0, 4000, 1), number(L"下", 0, 0, 4000, 1), number(L"左", 0, 0, 4000, 1),
    number(L"右", 0, 0, 4000, 1), check(L"塗りつぶし", false),
};

}  // namespace

const EffectInfo BasicExpand::kInfo{L"領域拡張", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"基本効果", kItems};

}  // namespace Effect
