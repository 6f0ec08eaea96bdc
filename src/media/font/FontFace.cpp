#include "media/font/FontFace.h"

#include "media/font/FontManager.h"
#include "system/Exception.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Resource {

void FontFace::setFont(const std::wstring& name, float size, bool vertical, bool bold, bool italic, bool strike) {
  constexpr const char* kPlace = "Resource::FontFace::setFont";
  const Media::FontManager* fonts = System::Singleton<Media::FontManager>::get();
  if (!fonts) throw System::NoteException(kPlace, "font list not created.");
  const Media::FontHandle font = fonts->getFont(name, bold, italic);
  const std::optional<Media::FontDesignMetrics> metrics = fonts->designMetrics(font);
  if (!metrics || metrics->designUnitsPerEm <= 0.0) {
    throw System::NoteException(kPlace, "font face not available.", System::Text::toUtf8(font.family));
  }
  setMetrics(font, *metrics, size, vertical, strike);
}

void FontFace::setMetrics(const Media::FontHandle& font, const Media::FontDesignMetrics& metrics, float size,
                          bool vertical, bool strike) {
  font_ = font;
  emSize_ = size;
  vertical_ = vertical;
  const double scale = size / metrics.designUnitsPerEm;
  scale_ = static_cast<float>(scale);
  if (vertical) {
    lineHeight_ = size;
    ascent_ = size / 2.0f;
  } else {
    ascent_ = static_cast<float>(metrics.ascent * scale);
    lineHeight_ = static_cast<float>((metrics.ascent + metrics.descent + metrics.lineGap) * scale);
  }
  strikeThickness_ = strike ? static_cast<float>(metrics.strikethroughThickness * scale) : 0.0f;
  strikePosition_ = static_cast<float>(metrics.strikethroughPosition * scale);
}

}  // namespace Resource
