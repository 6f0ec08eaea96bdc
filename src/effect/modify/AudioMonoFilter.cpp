#include "effect/modify/AudioMonoFilter.h"

#include <cstring>

#include "effect/item/EffectItemSelect.h"
#include "media/audio/AudioBuffer.h"

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

enum Source : std::int32_t { Mean = 0, Left = 1, Right = 2 };

}  // namespace

const EffectInfo AudioMonoFilter::kInfo{L"モノラル化", EffectType::Filter, EffectMedia::Audio, EffectMedia::Audio,
                                        L"音声効果", kItems};

AudioMonoFilter::AudioMonoFilter() : EffectInstance(kInfo), source_(item<EffectItemSelect>(L"変換方法")) {}

std::shared_ptr<Media::AudioBuffer> AudioMonoFilter::filterAudio(Render::ObjectContext& /*context*/,
                                                                 std::shared_ptr<Media::AudioBuffer> block) {
  if (!block || block->empty() || block->channels() == 1) return block;
  const std::uint32_t count = block->sampleCount();
  auto mono = std::make_shared<Media::AudioBuffer>(count, 1);
  float* out = mono->channelData(0);
  const float* left = block->channelData(0);
  const float* right = block->channelData(1);
  switch (source_.value()) {
    case Left:
      std::memcpy(out, left, std::size_t{count} * sizeof(float));
      break;
    case Right:
      std::memcpy(out, right, std::size_t{count} * sizeof(float));
      break;
    default:
      for (std::uint32_t i = 0; i < count; ++i) out[i] = (left[i] + right[i]) * 0.5f;
      break;
  }
  return mono;
}

}  // namespace Effect
