#include "effect/input/ImageLoad.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    file(L"ファイル", L"ImageFile").notifying(),
    number(L"表示番号", 0, 0, 10000, 1),
    check(L"連番ファイル", false).notifying(),
};

}  // namespace

const EffectInfo ImageLoad::kInfo{L"画像ファイル", EffectType::Input, EffectMedia::Video,
                                  EffectMedia::Video, L"", kItems};

}  // namespace Effect
