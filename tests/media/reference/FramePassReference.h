// The frame passes on the CPU, computed from what each pass is meant to do rather than
// from its GLSL, so that both GPU paths can be held to it. Slow and exact: for checks
// and for small images only.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "media/SamplerStateTable.h"
#include "media/pass/FramePassTable.h"
#include "media/reference/PassImage.h"

namespace Media {

struct FramePassResult {
  PassImage color;
  PassImage secondColor;              // pass 7 only; zero elsewhere
  std::vector<std::uint8_t> written;  // 0 where the pass discarded the pixel
};

// Runs `pass` over a target of `width` by `height`. `constants` are the bytes of the
// pass's constants struct; sources may be of any size (a pass reads 0 outside a source
// unless it clamps); `sampler` is the state bound for passes that sample. Throws a
// System::NoteException when the constants are too short or a source is missing.
FramePassResult framePassReference(FramePass pass, std::span<const std::byte> constants, const PassImage* source0,
                                   const PassImage* source1, std::uint32_t width, std::uint32_t height,
                                   const SamplerState& sampler = kSamplerStates[1]);

// What `target` becomes when `result` is drawn onto it under blend state `blendState`
// with the blend factor `factor`; discarded pixels keep the target's value.
PassImage blendResultReference(const FramePassResult& result, std::uint32_t blendState, const Rgba& factor,
                               const PassImage& target);

template <typename Constants>
std::span<const std::byte> constantBytes(const Constants& constants) noexcept {
  return std::as_bytes(std::span<const Constants, 1>(&constants, 1));
}

}  // namespace Media
