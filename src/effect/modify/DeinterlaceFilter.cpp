#include "effect/modify/DeinterlaceFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> methodList() {
  static const auto list = SelectList::make({L"奇数", L"偶数", L"二重化"});
  return list;
}

constexpr ItemRow kItems[] = {
    select(L"解除方法", methodList),
};

}  // namespace

const EffectInfo DeinterlaceFilter::kInfo{L"インターレース解除", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                          L"加工", kItems};

}  // namespace Effect
