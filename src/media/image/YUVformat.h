// The colour tables of YUV: YUV2RGB for reading (uploads of YC48 and YUY2) and RGB2YUV
// for writing (read-backs in those formats), each entry a colour space with its matrices
// for 8-bit limited range, 8-bit full range and YC48. The tables are data of the
// installation (sections YUV2RGB and RGB2YUV of system.conf). The graphics service reads
// them once at start; afterwards they are read-only and any thread may use them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "media/pass/FramePassConstants.h"
#include "system/IniFile.h"

namespace Media {

class YUVformat {
 public:
  enum class Direction : std::uint8_t { ToRgb, ToYuv };

  // One colour space. The matrices are the constants of frame passes 0 (to RGB, offset
  // added first) and 1 (to YUV, offset added last).
  struct ColorValues {
    // From "name,heightLimit,a0,...,a8": in each row of `a` the coefficient of Y comes
    // first (to RGB: rows R, G, B over Y, Cb, Cr; to YUV: rows Y, Cb, Cr over R, G, B).
    // Another number of fields throws "yuv color setting invalid".
    ColorValues(const System::IniFile::VALUE& value, Direction direction);

    std::wstring name;
    ColorMatrixConstants limited{};
    ColorMatrixConstants full{};
    ColorMatrixConstants yc48{};
    // The smallest image height for which this entry is the automatic choice.
    std::int32_t heightLimit = 0;
  };

  class ColorTable {
   public:
    // Keys "0", "1", ... of `section`, up to the first that is missing (at most 100).
    ColorTable(System::IniFile::SectionRef section, Direction direction);

    bool empty() const noexcept { return entries_.empty(); }
    std::size_t size() const noexcept { return entries_.size(); }
    const ColorValues& operator[](std::size_t index) const { return entries_.at(index); }
    // The index of the entry of that name; -1 for none.
    std::int32_t find(const std::wstring& name) const;
    // The entry `colorSpace` names (a table index plus 1; lowered to the last entry),
    // or for 0 the automatic choice by the image's height.
    const ColorValues& select(std::int32_t colorSpace, std::uint32_t height) const;

   private:
    std::vector<ColorValues> entries_;
    std::map<std::wstring, std::int32_t> names_;
  };

  // Reads both tables from the system file and logs each entry. Either table empty
  // throws "no yuv color setting", which ends the start.
  explicit YUVformat(System::IniFile& systemFile);

  const ColorTable& YUV2RGB() const noexcept { return toRgb_; }
  const ColorTable& RGB2YUV() const noexcept { return toYuv_; }

 private:
  ColorTable toRgb_;
  ColorTable toYuv_;
};

}  // namespace Media
