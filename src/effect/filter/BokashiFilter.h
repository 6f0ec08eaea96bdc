// ぼかし: the box blur of an image. Its prototype holds the one blur of the program:
// every effect that blurs (glow, light, shadows, masks, wipes) reaches it through
// getDefaultEffect<BokashiFilter>() and calls blur() or boxBlur() there. Instances share
// the prototype's blur. Drawing runs on the object thread (the GPU thread), which is
// why the shared blur and its constants need no lock.
#pragma once

#include <cstdint>
#include <memory>

#include "effect/EffectBase.h"
#include "media/blur/BoxBlur.h"

namespace Media {
class FramePasses;
}

namespace Effect {

class EffectItemCheck;
class EffectItemNumber;

class BokashiFilter final : public EffectInstance<BokashiFilter> {
 public:
  static const EffectInfo kInfo;

  // The values of the items at one frame, as the drawing uses them.
  struct Settings {
    std::int32_t range = 5;  // round(範囲)
    double aspect = 0.0;     // 縦横比 * 0.01
    std::int32_t light = 0;  // round(光の強さ)
    bool fixedSize = false;  // サイズ固定
  };

  BokashiFilter();
  ~BokashiFilter() override;

  std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                     std::unique_ptr<Media::ResourceBuffer> image) override;
  void createCommonResource() override;
  void shareCommonResource(const EffectBase& prototype) override;

  // The shared blur (see Media::BoxBlur): radius in pixels, aspect from -1 to 1. The
  // image is consumed; the result may be it, a kept scratch image or a new one.
  std::unique_ptr<Media::ResourceBuffer> blur(std::unique_ptr<Media::ResourceBuffer> image, std::int32_t radius,
                                              double aspect, Media::BlurMode mode);
  // One y pass and one x pass of the full radius; the image grows by 2 * radius.
  std::unique_ptr<Media::ResourceBuffer> boxBlur(std::unique_ptr<Media::ResourceBuffer> image, std::int32_t radius);

  // What filterVideo draws once the items are read. `passes` are the frame passes of
  // the render; null uses a set of the filter's own.
  std::unique_ptr<Media::ResourceBuffer> apply(Media::FramePasses* passes, std::unique_ptr<Media::ResourceBuffer> image,
                                               const Settings& settings);
  // The blur of the device the image lives on, made at the first call.
  Media::BoxBlur& boxBlurFor(Media::GraphicsDevice& device);

 private:
  struct Common;
  Common& common();

  EffectItemNumber& range_;
  EffectItemNumber& aspect_;
  EffectItemNumber& light_;
  EffectItemCheck& fixedSize_;
  std::shared_ptr<Common> common_;
};

}  // namespace Effect
