#include "effect/modify/NoiseFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> blendList() {
  static const auto list = SelectList::make({L"アルファ値と乗算", L"明るさと乗算"});
  return list;
}

std::shared_ptr<const SelectList> typeList() {
  static const auto list = SelectList::make({L"Type1", L"Type2", L"Type3", L"Type4", L"Type5", L"Type6"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 200, 0.1),   number(L"速度X", 0, -800, 800, 0.1), number(L"速度Y", 0, -800, 800, 0.1),
    number(L"変化速度", 0, 0, 800, 0.1), number(L"周期X", 1, 0, 100, 0.01),   number(L"周期Y", 1, 0, 100, 0.01),
    number(L"しきい値", 0, 0, 100, 0.1), integer(L"シード", 0, 0, 100),       select(L"合成モード", blendList),
    select(L"ノイズの種類", typeList),
};

}  // namespace

const EffectInfo NoiseFilter::kInfo{L"ノイズ", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"加工", kItems};

}  // namespace Effect
