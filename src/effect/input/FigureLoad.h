// 図形: a built-in figure or an SVG file, drawn at its size in its colour.
#pragma once

#include <memory>
#include <mutex>

#include "effect/EffectBase.h"
#include "media/figure/SvgDocument.h"

namespace Media {
class ImageBuffer;
}

namespace Effect {

class FigureLoad final : public EffectInstance<FigureLoad> {
 public:
  static const EffectInfo kInfo;
  FigureLoad() : EffectInstance(kInfo) {}

  std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context) override;
  bool itemEvent(ItemEvent& event) override;
  bool acceptsFile(const std::wstring& path) const override;

  // What is drawn: the figure at its pixel size, or nothing when a side is below 1.
  struct Drawing {
    std::int32_t figure = 0;  // the list entry, or -1 for the file
    std::wstring file;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    Media::FigureColor color{};
    float lineWidth = 0.0f;
    bool fitLine = false;
    bool operator==(const Drawing&) const = default;
  };
  std::optional<Drawing> drawingAt(const Render::ObjectContext& context) const;

 private:
  std::shared_ptr<Media::ImageBuffer> draw(const Drawing& drawing);

  // The last drawing, kept so that a still figure is drawn once and not every frame.
  std::mutex mutex_;
  std::optional<Drawing> drawn_;
  std::shared_ptr<Media::ImageBuffer> image_;
};

}  // namespace Effect
