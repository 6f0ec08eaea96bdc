#include "effect/filter/GlowFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> shapeList() {
  static const auto list = SelectList::make(
      {L"通常", L"クロス(4本)", L"クロス(6本)", L"クロス(8本)", L"クロス(10本)", L"クロス(12本)", L"ライン"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"強さ", 40, 0, 500, 0.01),
    number(L"拡散", 50, 0, 500, 1),
    number(L"角度", 25, -3600, 3600, 0.01),
    number(L"しきい値", 80, 0, 200, 0.1),
    number(L"比率", 100, 0, 100, 0.1),
    number(L"ぼかし", 1, 0, 50, 1),
    select(L"形状", shapeList),
    unsetColor(L"光色"),
    check(L"光成分のみ", false),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo GlowFilter::kInfo{L"グロー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                   L"光効果", kItems};

}  // namespace Effect
