#include "effect/modify/DisplacementFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> deformList() {
  static const auto list = SelectList::make({L"移動変形", L"拡大変形", L"回転変形"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"X", 0, -5000, 5000, 0.1),
    number(L"Y", 0, -5000, 5000, 0.1),
    group(L"Group", 2),
    number(L"回転", 0, -3600, 3600, 0.01),
    number(L"サイズ", 200, 0, 4000, 1),
    number(L"縦横比", 0, -100, 100, 0.001),
    number(L"ぼかし", 5, 0, 1000, 1),
    number(L"変形X", 0, -5000, 5000, 0.01),
    number(L"変形Y", 0, -5000, 5000, 0.01),
    number(L"拡大変形", 0, -5000, 5000, 0.01),
    number(L"拡大縦横", 0, -100, 100, 0.001),
    number(L"回転変形", 0, -5000, 5000, 0.01),
    select(L"変形方法", deformList),
    maskSelect(L"マップの種類"),
    check(L"シーンの長さを合わせる", false),
    check(L"元のサイズに合わせる", false),
};

}  // namespace

const EffectInfo DisplacementFilter::kInfo{L"ディスプレイスメントマップ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                           L"変形", kItems};

}  // namespace Effect
