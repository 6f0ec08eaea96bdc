#include "media/reference/FramePassReference.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "media/reference/BlendModeReference.h"
#include "media/reference/BlendReference.h"
#include "media/reference/SampleReference.h"
#include "system/Exception.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::framePassReference";

struct PixelOut {
  Rgba color{};
  Rgba second{};
  bool written = true;
};

struct Context {
  std::span<const std::byte> constants;
  const PassImage* source0;
  const PassImage* source1;
  const SamplerState& sampler;

  template <typename Constants>
  Constants read() const {
    Constants value;
    std::memcpy(&value, constants.data(), sizeof(value));
    return value;
  }
};

float saturate(float v) noexcept { return std::clamp(v, 0.0f, 1.0f); }

float luma(const Rgba& c) noexcept { return 0.299f * c[0] + 0.587f * c[1] + 0.114f * c[2]; }

Rgba scaled(const Rgba& c, float k) noexcept { return {c[0] * k, c[1] * k, c[2] * k, c[3] * k}; }

// Reads outside a source give transparent black, as a load past the edge does.
Rgba fetchZero(const PassImage& image, std::int64_t x, std::int64_t y) noexcept {
  return image.contains(x, y) ? image.at(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)) : Rgba{};
}

Rgba fetchClamped(const PassImage& image, std::int64_t x, std::int64_t y) noexcept {
  if (image.width == 0 || image.height == 0) return {};
  return image.at(static_cast<std::uint32_t>(std::clamp<std::int64_t>(x, 0, image.width - 1)),
                  static_cast<std::uint32_t>(std::clamp<std::int64_t>(y, 0, image.height - 1)));
}

Rgba colorMatrix(const ColorMatrixConstants& c, const Rgba& v) noexcept {
  Rgba out;
  for (int row = 0; row < 4; ++row) {
    out[row] = 0.0f;
    for (int column = 0; column < 4; ++column) out[row] += c.transform[row * 4 + column] * v[column];
  }
  return out;
}

// Box average of `step` source pixels along one axis, starting at index * step + offset,
// with the reads clamped to the source.
Rgba boxAverage(const PassImage& source, const BoxConstants& c, std::int64_t x, std::int64_t y, bool alongX) {
  const std::int32_t step = std::max(c.step, 1);
  Rgba sum{};
  for (std::int32_t i = 0; i < step; ++i) {
    const Rgba s = alongX ? fetchClamped(source, x * step + c.offset + i, y)
                          : fetchClamped(source, x, y * step + c.offset + i);
    for (int k = 0; k < 4; ++k) sum[k] += s[k];
  }
  return scaled(sum, 1.0f / static_cast<float>(step));
}

// Taps on one axis: one above a ratio of 1.05 source pixels per target pixel, else
// ceil(ratio) of them (at most 16) spread evenly over the pixel's footprint.
int resizeTaps(float ratio) noexcept {
  return ratio > 1.05f ? std::min(static_cast<int>(std::ceil(ratio)), 16) : 1;
}

Rgba resize(const Context& ctx, float u, float v) {
  const auto c = ctx.read<ResizeConstants>();
  const PassImage& source = *ctx.source0;
  const int nx = resizeTaps(c.inverseRatio[0]);
  const int ny = resizeTaps(c.inverseRatio[1]);
  Rgba sum{};
  for (int j = 0; j < ny; ++j) {
    for (int i = 0; i < nx; ++i) {
      const float du = ((static_cast<float>(i) + 0.5f) / static_cast<float>(nx) - 0.5f) * c.inverseRatio[0] /
                       static_cast<float>(source.width);
      const float dv = ((static_cast<float>(j) + 0.5f) / static_cast<float>(ny) - 0.5f) * c.inverseRatio[1] /
                       static_cast<float>(source.height);
      const Rgba s = sampleReference(source, ctx.sampler, u + du, v + dv);
      for (int k = 0; k < 4; ++k) sum[k] += s[k];
    }
  }
  return scaled(sum, 1.0f / static_cast<float>(nx * ny));
}

PixelOut runPixel(FramePass pass, const Context& ctx, std::int64_t x, std::int64_t y, float u, float v) {
  const PassImage* s0 = ctx.source0;
  switch (pass) {
    case FramePass::ColorMatrixAddFirst: {
      const auto c = ctx.read<ColorMatrixConstants>();
      const Rgba s = fetchZero(*s0, x, y);
      return {colorMatrix(c, {s[0] + c.offset[0], s[1] + c.offset[1], s[2] + c.offset[2], 1.0f})};
    }
    case FramePass::ColorMatrixAddLast: {
      const auto c = ctx.read<ColorMatrixConstants>();
      const Rgba s = fetchZero(*s0, x, y);
      Rgba out = colorMatrix(c, {saturate(s[0]), saturate(s[1]), saturate(s[2]), saturate(s[3])});
      for (int k = 0; k < 4; ++k) out[k] += c.offset[k];
      return {out};
    }
    case FramePass::Copy: return {fetchZero(*s0, x, y)};
    case FramePass::Fill: {
      const auto c = ctx.read<ColorConstants>();
      return {{c.color[0], c.color[1], c.color[2], c.color[3]}};
    }
    case FramePass::FillWhite: return {{1.0f, 1.0f, 1.0f, 1.0f}};
    case FramePass::CopyOffset: {
      const auto c = ctx.read<OffsetConstants>();
      return {fetchZero(*s0, x + c.offset[0], y + c.offset[1])};
    }
    case FramePass::CopyOffsetClamped: {
      const auto c = ctx.read<OffsetConstants>();
      return {fetchClamped(*s0, x + c.offset[0], y + c.offset[1])};
    }
    case FramePass::CopyTwo: return {fetchZero(*s0, x, y), fetchZero(*ctx.source1, x, y)};
    case FramePass::MaskToColor: {
      const auto c = ctx.read<ColorConstants>();
      const float a = fetchZero(*s0, x, y)[3];
      return {{c.color[0] * a, c.color[1] * a, c.color[2] * a, c.color[3] * a}};
    }
    case FramePass::CopyAlpha: return {scaled(fetchZero(*s0, x, y), ctx.read<AlphaConstants>().alpha)};
    case FramePass::CopyOffsetAlpha: {
      const auto c = ctx.read<OutputConstants>();
      return {scaled(fetchZero(*s0, x + c.offset[0], y + c.offset[1]), c.alpha)};
    }
    case FramePass::Sample: return {sampleReference(*s0, ctx.sampler, u, v)};
    case FramePass::StraightToPremultiplied: {
      const Rgba s = fetchZero(*s0, x, y);
      return {{s[0] * s[3], s[1] * s[3], s[2] * s[3], s[3]}};
    }
    case FramePass::PremultipliedToStraight: {
      const Rgba s = fetchZero(*s0, x, y);
      if (s[3] <= 0.0f) return {{0.0f, 0.0f, 0.0f, s[3]}};
      return {{s[0] / s[3], s[1] / s[3], s[2] / s[3], s[3]}};
    }
    case FramePass::CopyOpaque: {
      const Rgba s = fetchZero(*s0, x, y);
      return {{s[0], s[1], s[2], 1.0f}};
    }
    case FramePass::ClampToAlpha: {
      const Rgba s = fetchZero(*s0, x, y);
      const float a = saturate(s[3]);
      return {{std::clamp(s[0], 0.0f, a), std::clamp(s[1], 0.0f, a), std::clamp(s[2], 0.0f, a), a}};
    }
    case FramePass::Saturate: {
      const Rgba s = fetchZero(*s0, x, y);
      return {{saturate(s[0]), saturate(s[1]), saturate(s[2]), saturate(s[3])}};
    }
    case FramePass::BoxX: return {boxAverage(*s0, ctx.read<BoxConstants>(), x, y, true)};
    case FramePass::BoxY: return {boxAverage(*s0, ctx.read<BoxConstants>(), x, y, false)};
    case FramePass::Resize: return {resize(ctx, u, v)};
    case FramePass::Glow: {
      const auto c = ctx.read<GlowConstants>();
      const Rgba s = fetchZero(*s0, x, y);
      const float w = std::max(luma(s) - c.threshold, 0.0f) * c.ratio;
      return {{std::min(s[0] * w, c.limit), std::min(s[1] * w, c.limit), std::min(s[2] * w, c.limit),
               std::min(w, 1.0f)}};
    }
    case FramePass::ExpRemap: {
      const float base = ctx.read<ExpRemapConstants>().base;
      Rgba s = fetchZero(*s0, x, y);
      for (int k = 0; k < 3; ++k) s[k] = std::exp2((saturate(s[k]) * base + 1.0f) * 1.442695f);
      return {s};
    }
    case FramePass::LogRemap: {
      // Channels below e (which pass 21 never puts out) read as e, so the result stays
      // finite and never drops below 0.
      const float baseInverse = ctx.read<LogRemapConstants>().baseInverse;
      Rgba s = fetchZero(*s0, x, y);
      for (int k = 0; k < 3; ++k) s[k] = (std::log(std::max(s[k], 2.7182817f)) - 1.0f) * baseInverse;
      return {s};
    }
    case FramePass::SoftMask: {
      const auto c = ctx.read<SoftMaskConstants>();
      const Rgba s = sampleReference(*s0, ctx.sampler, (u - 0.5f) * c.scale[0] + 0.5f, (v - 0.5f) * c.scale[1] + 0.5f);
      const float t = saturate((1.0f - luma(s) - c.limitMin) / std::max(c.limitMax - c.limitMin, 1e-6f));
      return {{0.0f, 0.0f, 0.0f, t * t * (3.0f - 2.0f * t)}};
    }
    case FramePass::BlendMode:
    case FramePass::BlendModeOffset: {
      const auto c = ctx.read<OutputConstants>();
      const bool shifted = pass == FramePass::BlendModeOffset;
      const Rgba s = fetchZero(*s0, x + (shifted ? c.offset[0] : 0), y + (shifted ? c.offset[1] : 0));
      PixelOut out;
      out.written = blendModeReference(c.blend, c.alpha, s, fetchZero(*ctx.source1, x, y), out.color);
      return out;
    }
  }
  return {};
}

}  // namespace

FramePassResult framePassReference(FramePass pass, std::span<const std::byte> constants, const PassImage* source0,
                                   const PassImage* source1, std::uint32_t width, std::uint32_t height,
                                   const SamplerState& sampler) {
  const FramePassInfo& info = framePassInfo(pass);
  if (constants.size() < info.constantsSize) throw System::NoteException(kPlace, "constants too short.", info.name);
  if ((info.sourceCount >= 1 && source0 == nullptr) || (info.sourceCount >= 2 && source1 == nullptr)) {
    throw System::NoteException(kPlace, "missing source.", info.name);
  }
  const Context ctx{constants, source0, source1, sampler};
  FramePassResult result{PassImage(width, height), PassImage(width, height),
                         std::vector<std::uint8_t>(std::size_t{width} * height, 0)};
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const float u = (static_cast<float>(x) + 0.5f) / static_cast<float>(width);
      const float v = (static_cast<float>(y) + 0.5f) / static_cast<float>(height);
      const PixelOut out = runPixel(pass, ctx, x, y, u, v);
      if (!out.written) continue;
      result.color.set(x, y, out.color);
      result.secondColor.set(x, y, out.second);
      result.written[std::size_t{y} * width + x] = 1;
    }
  }
  return result;
}

PassImage blendResultReference(const FramePassResult& result, std::uint32_t blendState, const Rgba& factor,
                               const PassImage& target) {
  if (blendState >= kBlendStateCount) {
    throw System::NoteException("Media::blendResultReference", "invalid blend state.");
  }
  if (target.width != result.color.width || target.height != result.color.height) {
    throw System::NoteException("Media::blendResultReference", "target size differs from the pass's.");
  }
  PassImage out = target;
  for (std::uint32_t y = 0; y < target.height; ++y) {
    for (std::uint32_t x = 0; x < target.width; ++x) {
      if (!result.written[std::size_t{y} * target.width + x]) continue;
      out.set(x, y, blendReference(kBlendStates[blendState], result.color.at(x, y), result.secondColor.at(x, y),
                                   target.at(x, y), factor));
    }
  }
  return out;
}

}  // namespace Media
