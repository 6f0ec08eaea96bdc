#include "effect/item/EffectItemFile.h"

#include "system/FileName.h"
#include "system/Text.h"

namespace Effect {

std::string EffectItemFile::toString() const { return System::Text::toUtf8(filePath_); }

void EffectItemFile::fromString(std::string_view text) { setFilePath(System::Text::fromUtf8(text)); }

void EffectItemFile::setFilePath(const std::wstring& path) { filePath_ = System::FileName::normalize(path); }

std::string EffectItemString::toString() const { return System::Text::toUtf8(value_); }

void EffectItemString::fromString(std::string_view text) { value_ = System::Text::fromUtf8(text); }

}  // namespace Effect
