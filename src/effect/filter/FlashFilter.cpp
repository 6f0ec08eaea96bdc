#include "effect/filter/FlashFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> blendList() {
  static const auto list = SelectList::make({L"前方に合成", L"後方に合成", L"光成分のみ"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"強さ", 100, 0, 100, 0.1),
    number(L"X", 0, -2000, 2000, 0.1),
    number(L"Y", 0, -2000, 2000, 0.1),
    group(L"Group", 2),
    select(L"合成モード", blendList),
    unsetColor(L"光色"),
    check(L"サイズ固定", false),
};

}  // namespace

const EffectInfo FlashFilter::kInfo{L"閃光", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                    L"光効果", kItems};

}  // namespace Effect
