// One font at one size, as text drawing measures and places glyphs with it: the font,
// the em size, the line height and ascent of a line in it, and the strike line. Vertical
// text centres every glyph in a column as wide as the em size. A stack object of one
// drawing; it reads the font list (Media::FontManager), so any thread may set it.
#pragma once

#include <string>

#include "media/font/FontSource.h"

namespace Resource {

class FontFace {
 public:
  // Looks the font up (unknown names give the default family) and reads its metrics.
  // A font that the platform cannot make throws System::NoteException.
  void setFont(const std::wstring& name, float size, bool vertical, bool bold, bool italic, bool strike);
  // The same with metrics already at hand.
  void setMetrics(const Media::FontHandle& font, const Media::FontDesignMetrics& metrics, float size, bool vertical,
                  bool strike);

  const Media::FontHandle& font() const noexcept { return font_; }
  float emSize() const noexcept { return emSize_; }
  bool vertical() const noexcept { return vertical_; }
  float lineHeight() const noexcept { return lineHeight_; }
  float ascent() const noexcept { return ascent_; }
  // 0 unless the strike line is on.
  float strikeThickness() const noexcept { return strikeThickness_; }
  // Upwards from the baseline.
  float strikePosition() const noexcept { return strikePosition_; }
  // Pixels per design unit.
  float scale() const noexcept { return scale_; }

 private:
  Media::FontHandle font_;
  float emSize_ = 0.0f;
  bool vertical_ = false;
  float lineHeight_ = 0.0f;
  float ascent_ = 0.0f;
  float strikeThickness_ = 0.0f;
  float strikePosition_ = 0.0f;
  float scale_ = 0.0f;
};

}  // namespace Resource
