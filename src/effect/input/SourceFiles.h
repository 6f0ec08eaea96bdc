// Small things the file inputs share: their title, the test of a dropped file, and the
// colour conversion that the YUV item of a movie chooses.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "effect/input/MediaAccess.h"
#include "media/image/ConvertParameters.h"

namespace Effect {

class EffectBase;
class EffectItem;
class EffectItemYUV;

// The file's name without its folder, or the effect's own title while it has no file.
std::wstring fileDisplayName(const EffectBase& effect, const EffectItem& fileItem);
bool canReadSource(const std::wstring& path, MediaAccess::Kind kind);

// Logs that a file of an input cannot be read, once per file for the life of the
// program: an object whose file is gone is empty on every frame, and says so once.
void warnUnreadableOnce(const char* place, const std::wstring& path);

// The number of the YUV item holds the colour space in its low 16 bits (0 automatic,
// else a table index plus 1) and the full range in bit 16; its decoder part chooses the
// reader and says nothing about colours.
Media::ConvertParameters yuvConvertParameters(const EffectItemYUV& item);

}  // namespace Effect
