#include "media/font/FontManager.h"

#include <algorithm>

#include "setting/SettingService.h"
#include "system/Exception.h"
#include "system/Log.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Media {

namespace {

constexpr const char* kRegisterPlace = "Media::FontManager::registerFont";

FontManager::SourceFactory& sourceFactory() {
  static FontManager::SourceFactory factory;
  return factory;
}

std::unique_ptr<FontSource> makeSource() {
  if (!sourceFactory()) throw System::NoteException("Media::FontManager::FontManager", "font library not installed.");
  return sourceFactory()();
}

// The family of the `DefaultFamily` setting, written "size,family" like every font value.
std::wstring configuredDefaultFamily() {
  auto* settings = System::Singleton<Setting::SettingService>::get();
  if (!settings) return FontManager::kDefaultFamily;
  const std::optional<std::wstring> value = settings->font().find("DefaultFamily").tryString();
  if (!value || value->empty()) return FontManager::kDefaultFamily;
  const std::size_t comma = value->find(L',');
  return comma == std::wstring::npos ? *value : value->substr(comma + 1);
}

}  // namespace

void FontManager::setSourceFactory(SourceFactory factory) { sourceFactory() = std::move(factory); }

FontManager::FontManager() : FontManager(makeSource(), configuredDefaultFamily()) {}

FontManager::FontManager(std::unique_ptr<FontSource> source, std::wstring defaultFamily)
    : source_(std::move(source)), defaultFamily_(std::move(defaultFamily)) {
  registerFont();
}

FontManager::~FontManager() = default;

void FontManager::registerFont() {
  for (FontFamily& family : source_->families()) {
    if (family.name.empty() || fonts_.contains(family.name)) continue;
    System::Log::verbose(kRegisterPlace, "register font [%s]%c", System::Text::toUtf8(family.name).c_str(),
                         family.symbol ? '*' : ' ');
    defines_.push_back(std::make_unique<FontDefine>(family.name));
    fonts_.emplace(family.name, std::move(family));
  }
  // Fonts the main ini knows keep their places; the others follow in the library's order.
  std::stable_sort(defines_.begin(), defines_.end(),
                   [](const auto& a, const auto& b) { return a->menuOrder() < b->menuOrder(); });
  for (std::size_t i = 0; i < defines_.size(); ++i) defines_[i]->setMenuOrder(static_cast<std::int32_t>(i));
  if (!fonts_.contains(defaultFamily_)) {
    System::Log::verbose(kRegisterPlace, "default font [%s] not installed",
                         System::Text::toUtf8(defaultFamily_).c_str());
    defaultFamily_ = source_->systemDefaultFamily();
  }
}

std::vector<std::wstring> FontManager::getFontList() const {
  std::vector<std::wstring> names;
  names.reserve(defines_.size());
  for (const auto& define : defines_) names.push_back(define->name());
  return names;
}

bool FontManager::isSymbol(const std::wstring& name) const {
  const auto found = fonts_.find(name);
  return found != fonts_.end() && found->second.symbol;
}

FontHandle FontManager::getFont(const std::wstring& name, bool bold, bool italic) const {
  const auto found = fonts_.find(name);
  if (found == fonts_.end()) return FontHandle{defaultFamily_, bold ? 600 : 400, 5, italic};
  const FontFamily& family = found->second;
  FontHandle font{family.name, family.weight, family.stretch, family.italic};
  if (bold) font.weight = std::clamp(family.weight + 200, 1, 999);
  if (italic) font.italic = true;
  return font;
}

std::optional<FontDesignMetrics> FontManager::designMetrics(const FontHandle& font) const {
  return source_->designMetrics(font);
}

}  // namespace Media
