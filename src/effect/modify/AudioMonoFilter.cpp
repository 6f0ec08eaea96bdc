#include "effect/modify/AudioMonoFilter.h"

namespace Effect {

namespace {

// The mean keeps a centred voice at its level; one side alone rescues a recording whose
// other channel is broken or carries something else.
std::shared_ptr<const SelectList> mixList() {
  static const auto list = SelectList::make({L"左右の平均", L"左チャンネル", L"右チャンネル"});
  return list;
}

constexpr ItemRow kItems[] = {
    select(L"変換方法", mixList),
};

}  // namespace

const EffectInfo AudioMonoFilter::kInfo{L"モノラル化", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                        L"音声効果", kItems};

}  // namespace Effect
