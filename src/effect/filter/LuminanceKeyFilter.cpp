#include "effect/filter/LuminanceKeyFilter.h"

namespace Effect {

namespace {

std::shared_ptr<const SelectList> modeList() {
  static const auto list =
      SelectList::make({L"暗い部分を透過", L"明るい部分を透過", L"明暗部分を透過", L"明暗部分を透過(補間無し)",
                        L"基準部分を透過", L"基準部分を透過(補間無し)"});
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"基準輝度", 2048, -4096, 8192, 1),
    number(L"輝度範囲", 512, 0, 4096, 1),
    select(L"モード", modeList),
};

}  // namespace

const EffectInfo LuminanceKeyFilter::kInfo{L"ルミナンスキー", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                           L"抽出", kItems};

}  // namespace Effect
