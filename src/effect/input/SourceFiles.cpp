#include "effect/input/SourceFiles.h"

#include <mutex>
#include <unordered_set>

#include "effect/EffectBase.h"
#include "effect/item/EffectItemYUV.h"
#include "system/FileName.h"
#include "system/Log.h"

namespace Effect {

namespace {

constexpr std::int32_t kFullRangeBit = 1 << 16;
constexpr std::int32_t kColorSpaceMask = 0xffff;

}  // namespace

std::wstring fileDisplayName(const EffectBase& effect, const EffectItem& fileItem) {
  const std::optional<std::wstring> path = fileItem.getFilePath();
  if (!path || path->empty()) return effect.EffectBase::getDisplayName();
  return System::FileName::fileName(*path);
}

bool canReadSource(const std::wstring& path, MediaAccess::Kind kind) {
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  return media && media->canRead(path, kind);
}

void warnUnreadableOnce(const char* place, const std::wstring& path) {
  static std::mutex mutex;
  static std::unordered_set<std::wstring> told;
  {
    std::lock_guard lock(mutex);
    if (!told.insert(path).second) return;
  }
  System::Log::warn(place, L"file cannot be read. [%ls]", path.c_str());
}

Media::ConvertParameters yuvConvertParameters(const EffectItemYUV& item) {
  return {item.number() & kColorSpaceMask, (item.number() & kFullRangeBit) != 0};
}

}  // namespace Effect
