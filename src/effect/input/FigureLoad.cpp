#include "effect/input/FigureLoad.h"

#include <cmath>

#include "dialog/MessageBox.h"
#include "effect/input/MediaAccess.h"
#include "effect/input/SourceFiles.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemColor.h"
#include "effect/item/EffectItemComboFile.h"
#include "effect/item/EffectItemNumber.h"
#include "media/ResourceBuffer.h"
#include "media/figure/FigureResource.h"
#include "media/image/ConvertParameters.h"
#include "media/image/ImageBuffer.h"
#include "render/ObjectContext.h"
#include "system/Exception.h"
#include "system/Singleton.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    figureSelect(L"図形の種類").notifying(),
    number(L"サイズ", 100, 0, 4000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    number(L"ライン幅", 4000, 0, 4000, 1),
    color(L"色", kWhite),
    check(L"角を丸くする", false),
};

Resource::FigureResource* figures() { return System::Singleton<Resource::FigureResource>::get(); }

}  // namespace

const EffectInfo FigureLoad::kInfo{L"図形", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", kItems};

std::optional<FigureLoad::Drawing> FigureLoad::drawingAt(const Render::ObjectContext& context) const {
  const ItemContext items = Render::itemsAt(context);
  const double size = item<EffectItemNumber>(L"サイズ").getValueAt(items);
  const double aspect = item<EffectItemNumber>(L"縦横比").getValueAt(items);
  double width = size;
  double height = size;
  if (aspect > 0.0) width *= (100.0 - aspect) * 0.01;
  if (aspect < 0.0) height = (aspect + 100.0) * 0.01 * size;
  if (width < 1.0 || height < 1.0) return std::nullopt;
  const EffectItemFigureSelect& figure = item<EffectItemFigureSelect>(L"図形の種類");
  const EffectItemColor& color = item<EffectItemColor>(L"色");
  Drawing drawing;
  drawing.figure = figure.value();
  if (drawing.figure < 0) drawing.file = *figure.getFilePath();
  drawing.width = static_cast<std::uint32_t>(std::ceil(width));
  drawing.height = static_cast<std::uint32_t>(std::ceil(height));
  drawing.color = {color.r() / 255.0f, color.g() / 255.0f, color.b() / 255.0f, 1.0f};
  drawing.lineWidth = static_cast<float>(item<EffectItemNumber>(L"ライン幅").getValueAt(items));
  drawing.fitLine = item<EffectItemCheck>(L"角を丸くする").value();
  return drawing;
}

std::shared_ptr<Media::ImageBuffer> FigureLoad::draw(const Drawing& drawing) {
  {
    std::lock_guard lock(mutex_);
    if (drawn_ == drawing) return image_;
  }
  const Resource::FigureResource* resource = figures();
  if (!resource) return nullptr;
  std::shared_ptr<Media::ImageBuffer> image;
  // An SVG file can vanish or break after the list was made, whether it is chosen from
  // the list or as a file.
  const std::wstring& source =
      drawing.figure >= 0 && static_cast<std::size_t>(drawing.figure) < resource->figures().size()
          ? resource->figures()[static_cast<std::size_t>(drawing.figure)].fileName
          : drawing.file;
  try {
    if (drawing.figure >= 0) {
      if (static_cast<std::size_t>(drawing.figure) >= resource->figures().size()) return nullptr;
      image = resource->draw(resource->figures()[static_cast<std::size_t>(drawing.figure)], drawing.width,
                             drawing.height, drawing.color, drawing.lineWidth, drawing.fitLine);
    } else {
      image = resource->drawFile(drawing.file, drawing.width, drawing.height, drawing.color);
    }
  } catch (const System::Exception&) {
    warnUnreadableOnce("Effect::FigureLoad::inputVideo", source);
    return nullptr;
  }
  std::lock_guard lock(mutex_);
  drawn_ = drawing;
  image_ = image;
  return image;
}

std::unique_ptr<Media::ResourceBuffer> FigureLoad::inputVideo(Render::ObjectContext& context) {
  const std::optional<Drawing> drawing = drawingAt(context);
  const std::shared_ptr<MediaAccess> media = MediaAccess::get();
  if (!drawing || !media) return nullptr;
  const std::shared_ptr<Media::ImageBuffer> image = draw(*drawing);
  return image ? media->toResource(*image, Media::ConvertParameters{}) : nullptr;
}

bool FigureLoad::itemEvent(ItemEvent& event) {
  if (event.type != ItemEvent::FileHanded) return false;
  if (!acceptsFile(event.path)) {
    Dialog::showError(L"このファイルには対応していません");
    return true;
  }
  item<EffectItemFigureSelect>(L"図形の種類").setFilePath(event.path);
  event.redraw = true;
  return true;
}

bool FigureLoad::acceptsFile(const std::wstring& path) const {
  const Resource::FigureResource* resource = figures();
  return resource && resource->canOpen(path);
}

}  // namespace Effect
