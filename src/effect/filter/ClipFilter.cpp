#include "effect/filter/ClipFilter.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"上", 0, 0, 4000, 1),
    number(L"下", 0, 0, 4000, 1),
    number(L"左", 0, 0, 4000, 1),
    number(L"右", 0, 0, 4000, 1),
    check(L"中心の位置を変更", false),
};

}  // namespace

const EffectInfo ClipFilter::kInfo{L"クリッピング", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"クリッピング", kItems};

}  // namespace Effect
