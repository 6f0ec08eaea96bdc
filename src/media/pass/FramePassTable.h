// The numbered full-image passes that effects cite by number, and what each needs of
// the device: its constants, its sources and whether it reads texture coordinates.
// The shader texts, the CPU reference and the benchmarks all walk this one table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "media/pass/FramePassConstants.h"

namespace Media {

enum class FramePass : std::uint32_t {
  ColorMatrixAddFirst = 0,
  ColorMatrixAddLast = 1,
  Copy = 2,
  Fill = 3,
  FillWhite = 4,
  CopyOffset = 5,
  CopyOffsetClamped = 6,
  CopyTwo = 7,
  MaskToColor = 8,
  CopyAlpha = 9,
  CopyOffsetAlpha = 10,
  Sample = 11,
  StraightToPremultiplied = 12,
  PremultipliedToStraight = 13,
  CopyOpaque = 14,
  ClampToAlpha = 15,
  Saturate = 16,
  BoxX = 17,
  BoxY = 18,
  Resize = 19,
  Glow = 20,
  ExpRemap = 21,
  LogRemap = 22,
  SoftMask = 23,
  BlendMode = 24,
  BlendModeOffset = 25,
};

inline constexpr std::size_t kFramePassCount = 26;

struct FramePassInfo {
  const char* name;              // for logs, test names and benchmark labels
  std::uint32_t constantsSize;   // bytes of the std140 block; 0 for none
  std::uint8_t sourceCount;      // sources at texture units 0 and 1
  bool textureCoordinates;       // samples through a sampler at the texture coordinates
  bool secondOutput;             // writes the second colour of dual-source blending
};

inline constexpr std::array<FramePassInfo, kFramePassCount> kFramePasses{{
    {"ColorMatrixAddFirst", sizeof(ColorMatrixConstants), 1, false, false},
    {"ColorMatrixAddLast", sizeof(ColorMatrixConstants), 1, false, false},
    {"Copy", 0, 1, false, false},
    {"Fill", sizeof(ColorConstants), 0, false, false},
    {"FillWhite", 0, 0, false, false},
    {"CopyOffset", sizeof(OffsetConstants), 1, false, false},
    {"CopyOffsetClamped", sizeof(OffsetConstants), 1, false, false},
    {"CopyTwo", 0, 2, false, true},
    {"MaskToColor", sizeof(ColorConstants), 1, false, false},
    {"CopyAlpha", sizeof(AlphaConstants), 1, false, false},
    {"CopyOffsetAlpha", sizeof(OutputConstants), 1, false, false},
    {"Sample", 0, 1, true, false},
    {"StraightToPremultiplied", 0, 1, false, false},
    {"PremultipliedToStraight", 0, 1, false, false},
    {"CopyOpaque", 0, 1, false, false},
    {"ClampToAlpha", 0, 1, false, false},
    {"Saturate", 0, 1, false, false},
    {"BoxX", sizeof(BoxConstants), 1, false, false},
    {"BoxY", sizeof(BoxConstants), 1, false, false},
    {"Resize", sizeof(ResizeConstants), 1, true, false},
    {"Glow", sizeof(GlowConstants), 1, false, false},
    {"ExpRemap", sizeof(ExpRemapConstants), 1, false, false},
    {"LogRemap", sizeof(LogRemapConstants), 1, false, false},
    {"SoftMask", sizeof(SoftMaskConstants), 1, true, false},
    {"BlendMode", sizeof(OutputConstants), 2, false, false},
    {"BlendModeOffset", sizeof(OutputConstants), 2, false, false},
}};

constexpr const FramePassInfo& framePassInfo(FramePass pass) noexcept {
  return kFramePasses[static_cast<std::size_t>(pass)];
}

}  // namespace Media
