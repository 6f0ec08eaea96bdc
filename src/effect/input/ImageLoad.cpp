#include "effect/input/ImageLoad.h"

#include <cmath>

#include "dialog/MessageBox.h"
#include "edit/Object.h"
#include "effect/input/FileSequence.h"
#include "effect/input/MediaAccess.h"
#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemFile.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    file(L"ファイル", L"ImageFile").notifying(),
    number(L"表示番号", 0, 0, 10000, 1),
    check(L"連番ファイル", false).notifying(),
};

}  // namespace

const EffectInfo ImageLoad::kInfo{L"画像ファイル", EffectType::Input, EffectMedia::Video,
                                  EffectMedia::Video, L"", kItems};

ImageLoad::ImageLoad() : EffectInstance(kInfo) {}

std::shared_ptr<const FileSequence> ImageLoad::sequence() {
  const std::wstring path = *item<EffectItemFile>(L"ファイル").getFilePath();
  std::lock_guard lock(mutex_);
  if (!sequence_ || sequencePath_ != path) {
    sequence_ = std::make_shared<const FileSequence>(path);
    sequencePath_ = path;
  }
  return sequence_;
}

std::wstring ImageLoad::pathAt(const Render::ObjectContext& context) {
  const std::wstring path = *item<EffectItemFile>(L"ファイル").getFilePath();
  if (path.empty() || !item<EffectItemCheck>(L"連番ファイル").value() || !context.object) return path;
  const EffectItemNumber& shown = item<EffectItemNumber>(L"表示番号");
  std::int64_t number = 0;
  if (shown.movementPointer() == BuiltinMovements::noMove() && shown.getValue(0) == 0.0) {
    number = context.frame - context.object->start;
  } else {
    number = std::llround(shown.getValueAt(Render::itemsAt(context)));
  }
  return sequence()->pick(number);
}

void ImageLoad::prepareVideo(Render::ObjectContext& context) {
  const std::wstring path = pathAt(context);
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!path.empty() && media) media->preloadResourceImage(path);
}

std::unique_ptr<Media::ResourceBuffer> ImageLoad::inputVideo(Render::ObjectContext& context) {
  const std::wstring path = pathAt(context);
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (path.empty() || !media) return nullptr;
  std::unique_ptr<Media::ResourceBuffer> image = media->getResourceImageCopy(path);
  if (!image) warnUnreadableOnce("Effect::ImageLoad::inputVideo", path);
  return image;
}

std::wstring ImageLoad::getDisplayName() const { return fileDisplayName(*this, item<EffectItemFile>(L"ファイル")); }

bool ImageLoad::itemEvent(ItemEvent& event) {
  EffectItemFile& file = item<EffectItemFile>(L"ファイル");
  switch (event.type) {
    case ItemEvent::ItemChanged:
      event.redraw = true;
      if (event.item != findItem(L"連番ファイル") && !file.getFilePath()->empty() &&
          !canReadSource(*file.getFilePath(), MediaAccess::Kind::Image)) {
        file.setFilePath(L"");
        Dialog::showError(L"このファイルには対応していません");
      }
      return true;
    case ItemEvent::FileHanded:
      file.setFilePath(event.path);
      event.redraw = true;
      return true;
    default:
      return false;
  }
}

bool ImageLoad::acceptsFile(const std::wstring& path) const { return canReadSource(path, MediaAccess::Kind::Image); }

}  // namespace Effect
