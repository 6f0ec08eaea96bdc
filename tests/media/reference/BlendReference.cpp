#include "media/reference/BlendReference.h"

#include <algorithm>

namespace Media {

namespace {

Rgba splat(float value) noexcept { return {value, value, value, value}; }

Rgba inverse(const Rgba& value) noexcept {
  return {1.0f - value[0], 1.0f - value[1], 1.0f - value[2], 1.0f - value[3]};
}

Rgba factorValue(BlendFactor factor, const Rgba& src, const Rgba& src1, const Rgba& dst,
                 const Rgba& constant) noexcept {
  switch (factor) {
    case BlendFactor::Zero: return splat(0.0f);
    case BlendFactor::One: return splat(1.0f);
    case BlendFactor::SrcColor: return src;
    case BlendFactor::InvSrcColor: return inverse(src);
    case BlendFactor::SrcAlpha: return splat(src[3]);
    case BlendFactor::InvSrcAlpha: return splat(1.0f - src[3]);
    case BlendFactor::DestAlpha: return splat(dst[3]);
    case BlendFactor::InvDestAlpha: return splat(1.0f - dst[3]);
    case BlendFactor::DestColor: return dst;
    case BlendFactor::InvDestColor: return inverse(dst);
    case BlendFactor::BlendFactor: return constant;
    case BlendFactor::InvBlendFactor: return inverse(constant);
    case BlendFactor::Src1Color: return src1;
    case BlendFactor::InvSrc1Color: return inverse(src1);
    case BlendFactor::Src1Alpha: return splat(src1[3]);
    case BlendFactor::InvSrc1Alpha: return splat(1.0f - src1[3]);
  }
  return splat(0.0f);
}

float combine(BlendOp op, float s, float fs, float d, float fd) noexcept {
  switch (op) {
    case BlendOp::Add: return s * fs + d * fd;
    case BlendOp::Subtract: return s * fs - d * fd;
    case BlendOp::RevSubtract: return d * fd - s * fs;
    case BlendOp::Min: return std::min(s, d);
    case BlendOp::Max: return std::max(s, d);
  }
  return s;
}

}  // namespace

Rgba blendReference(const BlendStateDesc& state, const Rgba& src, const Rgba& src1, const Rgba& dst,
                    const Rgba& factor) noexcept {
  if (!state.enable) return src;
  const Rgba fs = factorValue(state.src, src, src1, dst, factor);
  const Rgba fd = factorValue(state.dest, src, src1, dst, factor);
  const Rgba fsa = factorValue(state.srcAlpha, src, src1, dst, factor);
  const Rgba fda = factorValue(state.destAlpha, src, src1, dst, factor);
  Rgba out;
  for (int c = 0; c < 3; ++c) out[c] = combine(state.op, src[c], fs[c], dst[c], fd[c]);
  out[3] = combine(state.opAlpha, src[3], fsa[3], dst[3], fda[3]);
  return out;
}

}  // namespace Media
