#include "effect/output/CameraOption.h"

#include <utility>

namespace Effect {

namespace {

// The keys are the billboard codes that the drawing reads, hence the gap.
std::shared_ptr<const SelectList> facingList() {
  static const auto list = [] {
    auto made = std::make_shared<SelectList>();
    made->add(0, L"標準");
    made->add(3, L"カメラの方を向く");
    return std::shared_ptr<const SelectList>(std::move(made));
  }();
  return list;
}

constexpr ItemRow kItems[] = {
    select(L"オブジェクトの向き", facingList),
    check(L"裏面を表示しない", false),
};

}  // namespace

const EffectInfo CameraOption::kInfo{L"カメラ制御オプション", EffectType::Filter, EffectMedia::Video,
                                     EffectMedia::Video, L"カメラ制御", kItems};

}  // namespace Effect
