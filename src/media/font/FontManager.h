// The installed fonts: the list the font menus show, in the user's order, and the
// lookup of one font by name and style for text drawing. A System::Singleton service,
// made on the main thread at start from the platform's font library; after that it only
// reads what it holds, so any thread may look fonts up and ask for their metrics.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "media/font/FontDefine.h"
#include "media/font/FontSource.h"

namespace Media {

class FontManager {
 public:
  using SourceFactory = std::function<std::unique_ptr<FontSource>()>;

  // The family asked for an unknown name when the settings name none.
  static constexpr const wchar_t* kDefaultFamily = L"Yu Gothic UI";

  // The platform installs its font library before the service is acquired.
  static void setSourceFactory(SourceFactory factory);

  // The installed library, and the default family of the `Font` section of style.conf.
  FontManager();
  // `defaultFamily` is asked for unknown names; where it is not installed either, the
  // library's own default family is.
  FontManager(std::unique_ptr<FontSource> source, std::wstring defaultFamily);
  ~FontManager();
  FontManager(const FontManager&) = delete;
  FontManager& operator=(const FontManager&) = delete;

  // Display names in the order of the font menu: the user's order for fonts met before,
  // then new ones in the library's order.
  std::vector<std::wstring> getFontList() const;
  const std::vector<std::unique_ptr<FontDefine>>& defines() const noexcept { return defines_; }
  bool isSymbol(const std::wstring& name) const;

  // The font of that family with the style asked for: bold adds 200 to the family's
  // weight (at most 999), italic slants it. A name that is not installed gives the
  // default family at 400, or 600 when bold, so that projects from other machines open.
  FontHandle getFont(const std::wstring& name, bool bold, bool italic) const;
  // Nothing for a font the library cannot make.
  std::optional<FontDesignMetrics> designMetrics(const FontHandle& font) const;

 private:
  void registerFont();

  std::unique_ptr<FontSource> source_;
  std::wstring defaultFamily_;
  std::unordered_map<std::wstring, FontFamily> fonts_;
  std::vector<std::unique_ptr<FontDefine>> defines_;
};

}  // namespace Media
