#include "media/image/YUVformat.h"

#include <string>

#include "system/Exception.h"
#include "system/Log.h"

namespace Media {

namespace {

constexpr const char* kLogPlace = "Media::YUVformat::InitializeColorTable";
constexpr std::size_t kFieldCount = 11;
constexpr int kMaxEntries = 100;

// 8-bit offsets: 16/255 for Y, 128/255 for Cb and Cr, rounded as the tables always were.
constexpr float kLuma = 0.062745f;
constexpr float kChroma = 0.50196f;

// The scale between YC48 (Y from 0 to 4096) and a signed 16-bit normalised texel.
constexpr float kYc48ToSnorm = 32767.0f / 4096.0f;

void setRow(ColorMatrixConstants& matrix, int row, float c0, float c1, float c2) {
  matrix.transform[row * 4 + 0] = c0;
  matrix.transform[row * 4 + 1] = c1;
  matrix.transform[row * 4 + 2] = c2;
  matrix.transform[row * 4 + 3] = 0.0f;
}

void setOffset(ColorMatrixConstants& matrix, float o0, float o1, float o2) {
  matrix.offset[0] = o0;
  matrix.offset[1] = o1;
  matrix.offset[2] = o2;
  matrix.offset[3] = 0.0f;
}

// Alpha passes through every matrix.
void setAlphaRow(ColorMatrixConstants& matrix) {
  matrix.transform[12] = matrix.transform[13] = matrix.transform[14] = 0.0f;
  matrix.transform[15] = 1.0f;
}

}  // namespace

YUVformat::ColorValues::ColorValues(const System::IniFile::VALUE& value, Direction direction) {
  const std::vector<System::IniFile::VALUE> fields = value.split(",");
  if (fields.size() != kFieldCount) {
    throw System::NoteException("Media::YUVformat::ColorValues::ColorValues", "yuv color setting invalid",
                                value.note());
  }
  name = fields[0].toString();
  heightLimit = fields[1].toInt();
  float a[9];
  for (int i = 0; i < 9; ++i) a[i] = fields[2 + i].toFloat();

  for (int row = 0; row < 3; ++row) {
    const float* r = a + row * 3;
    if (direction == Direction::ToRgb) {
      setRow(yc48, row, r[0] * kYc48ToSnorm, r[1] * kYc48ToSnorm, r[2] * kYc48ToSnorm);
      // Packed YUY2 reads as Cb, Y, Cr, so the columns of Y and Cb change places.
      setRow(limited, row, r[1] * 255.0f / 224.0f, r[0] * 255.0f / 219.0f, r[2] * 255.0f / 224.0f);
      setRow(full, row, r[1], r[0], r[2]);
    } else {
      setRow(yc48, row, r[0] / kYc48ToSnorm, r[1] / kYc48ToSnorm, r[2] / kYc48ToSnorm);
      // Y spans 219 of 255 steps in limited range, Cb and Cr 224.
      const float scale = row == 0 ? 219.0f / 255.0f : 224.0f / 255.0f;
      setRow(limited, row, r[0] * scale, r[1] * scale, r[2] * scale);
      setRow(full, row, r[0], r[1], r[2]);
    }
  }
  for (ColorMatrixConstants* matrix : {&yc48, &limited, &full}) setAlphaRow(*matrix);
  if (direction == Direction::ToRgb) {
    setOffset(limited, -kChroma, -kLuma, -kChroma);
    setOffset(full, -kChroma, 0.0f, -kChroma);
  } else {
    setOffset(limited, kLuma, kChroma, kChroma);
    setOffset(full, 0.0f, kChroma, kChroma);
  }
}

YUVformat::ColorTable::ColorTable(System::IniFile::SectionRef section, Direction direction) {
  const wchar_t* format = direction == Direction::ToRgb ? L"[YUV2RGB] %d: %ls" : L"[RGB2YUV] %d: %ls";
  for (int i = 0; i < kMaxEntries; ++i) {
    const std::string key = std::to_string(i);
    if (!section.contains(key)) break;
    entries_.emplace_back(section[key], direction);
    names_.emplace(entries_.back().name, i);
    System::Log::info(kLogPlace, format, i, entries_.back().name.c_str());
  }
}

std::int32_t YUVformat::ColorTable::find(const std::wstring& name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? -1 : found->second;
}

const YUVformat::ColorValues& YUVformat::ColorTable::select(std::int32_t colorSpace, std::uint32_t height) const {
  if (colorSpace > 0) {
    const std::size_t index = static_cast<std::size_t>(colorSpace) - 1;
    return entries_.at(index < entries_.size() ? index : entries_.size() - 1);
  }
  // Later entries win on an equal limit, so a table can put a preferred space last.
  std::size_t best = 0;
  for (std::size_t i = 1; i < entries_.size(); ++i) {
    const std::int32_t limit = entries_[i].heightLimit;
    if (static_cast<std::int64_t>(height) >= limit && limit >= entries_[best].heightLimit) best = i;
  }
  return entries_.at(best);
}

YUVformat::YUVformat(System::IniFile& systemFile)
    : toRgb_(systemFile.section("YUV2RGB"), Direction::ToRgb), toYuv_(systemFile.section("RGB2YUV"), Direction::ToYuv) {
  if (toRgb_.empty() || toYuv_.empty()) throw System::NoteException(kLogPlace, "no yuv color setting");
}

}  // namespace Media
