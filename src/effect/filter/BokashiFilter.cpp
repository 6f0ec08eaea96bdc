#include "effect/filter/BokashiFilter.h"

#include <cmath>

#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/ItemContext.h"
#include "media/ConstantBufferCommon.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePasses.h"
#include "render/ObjectContext.h"
#include "render/RenderVideoWorker.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"範囲", 5, 0, 1000, 1),
    number(L"縦横比", 0, -100, 100, 0.01),
    number(L"光の強さ", 0, 0, 60, 0.1),
    check(L"サイズ固定", false),
};

// The measuring size of the filter's own frame passes, used only where the render
// hands none: the size of a full frame, so their choices match the render's own.
constexpr std::uint32_t kMeasureWidth = 1920;
constexpr std::uint32_t kMeasureHeight = 1080;

}  // namespace

// What the prototype makes once and its instances share: the blur with its shaders and
// kept images, the constants of the exponential detour, and frame passes for a caller
// without a render.
struct BokashiFilter::Common {
  Media::GraphicsDevice* device = nullptr;
  std::unique_ptr<Media::BoxBlur> blur;
  std::unique_ptr<Media::FramePasses> passes;
  std::unique_ptr<Media::ConstantBufferCommon> expConstants;
  std::unique_ptr<Media::ConstantBufferCommon> logConstants;
  float base = 0.0f;
};

const EffectInfo BokashiFilter::kInfo{L"ぼかし", EffectType::Filter, EffectMedia::Video, EffectMedia::Video,
                                      L"ぼかし", kItems};

BokashiFilter::BokashiFilter()
    : EffectInstance(kInfo),
      range_(item<EffectItemNumber>(L"範囲")),
      aspect_(item<EffectItemNumber>(L"縦横比")),
      light_(item<EffectItemNumber>(L"光の強さ")),
      fixedSize_(item<EffectItemCheck>(L"サイズ固定")) {}

BokashiFilter::~BokashiFilter() = default;

void BokashiFilter::createCommonResource() { common(); }

void BokashiFilter::shareCommonResource(const EffectBase& prototype) {
  if (const auto* other = dynamic_cast<const BokashiFilter*>(&prototype); other && other->common_) {
    common_ = other->common_;
  }
}

BokashiFilter::Common& BokashiFilter::common() {
  if (!common_) common_ = std::make_shared<Common>();
  return *common_;
}

Media::BoxBlur& BokashiFilter::boxBlurFor(Media::GraphicsDevice& device) {
  Common& shared = common();
  // The program has one device; a test that makes another starts the blur afresh.
  if (!shared.blur || shared.device != &device) {
    shared = Common{};
    shared.device = &device;
    shared.blur = std::make_unique<Media::BoxBlur>(device);
  }
  return *shared.blur;
}

std::unique_ptr<Media::ResourceBuffer> BokashiFilter::blur(std::unique_ptr<Media::ResourceBuffer> image,
                                                           std::int32_t radius, double aspect, Media::BlurMode mode) {
  if (!image || image->empty() || radius <= 0) return image;
  return boxBlurFor(image->device()).blur(std::move(image), radius, aspect, mode);
}

std::unique_ptr<Media::ResourceBuffer> BokashiFilter::boxBlur(std::unique_ptr<Media::ResourceBuffer> image,
                                                              std::int32_t radius) {
  if (!image || image->empty() || radius <= 0) return image;
  return boxBlurFor(image->device()).boxBlur(std::move(image), radius);
}

std::unique_ptr<Media::ResourceBuffer> BokashiFilter::filterVideo(Render::ObjectContext& context,
                                                                  std::unique_ptr<Media::ResourceBuffer> image) {
  const ItemContext items = Render::itemsAt(context);
  Settings settings;
  settings.range = static_cast<std::int32_t>(std::lround(range_.getValueAt(items)));
  settings.aspect = aspect_.getValueAt(items) * 0.01;
  settings.light = static_cast<std::int32_t>(std::lround(light_.getValueAt(items)));
  settings.fixedSize = fixedSize_.value();
  return apply(context.worker ? context.worker->framePasses() : nullptr, std::move(image), settings);
}

std::unique_ptr<Media::ResourceBuffer> BokashiFilter::apply(Media::FramePasses* passes,
                                                            std::unique_ptr<Media::ResourceBuffer> image,
                                                            const Settings& settings) {
  if (!image || image->empty()) return image;
  const Media::BlurMode mode = settings.fixedSize ? Media::BlurMode::KeepClamped : Media::BlurMode::Grow;
  Media::BoxBlur& box = boxBlurFor(image->device());
  if (settings.light <= 0) return box.blur(std::move(image), settings.range, settings.aspect, mode);

  // The exponential detour: blurring e^(rgb * base + 1) and taking the logarithm after
  // lets a bright pixel outweigh its dark neighbours, so highlights spread as light does.
  Common& shared = common();
  if (!passes) {
    if (!shared.passes) {
      shared.passes = std::make_unique<Media::FramePasses>(image->device(), kMeasureWidth, kMeasureHeight);
    }
    passes = shared.passes.get();
  }
  const float base = static_cast<float>(settings.light) * 0.15f + 1.0f;
  if (!shared.expConstants || shared.base != base) {
    if (!shared.expConstants) {
      shared.expConstants = std::make_unique<Media::ConstantBufferCommon>(image->device());
      shared.logConstants = std::make_unique<Media::ConstantBufferCommon>(image->device());
      shared.expConstants->create(Media::ExpRemapConstants{base});
      shared.logConstants->create(Media::LogRemapConstants{1.0f / base});
    } else {
      const Media::ExpRemapConstants exp{base};
      const Media::LogRemapConstants log{1.0f / base};
      shared.expConstants->update(&exp);
      shared.logConstants->update(&log);
    }
    shared.base = base;
  }

  Media::PassOptions options;
  options.constants = shared.expConstants.get();
  std::unique_ptr<Media::ResourceBuffer> raised = box.scratch(image->width(), image->height(), image->format());
  passes->run(Media::FramePass::ExpRemap, *raised, {image.get()}, options);
  box.recycle(std::move(image));

  std::unique_ptr<Media::ResourceBuffer> blurred = box.blur(std::move(raised), settings.range, settings.aspect, mode);
  options.constants = shared.logConstants.get();
  std::unique_ptr<Media::ResourceBuffer> result = box.scratch(blurred->width(), blurred->height(), blurred->format());
  passes->run(Media::FramePass::LogRemap, *result, {blurred.get()}, options);
  box.recycle(std::move(blurred));
  return result;
}

}  // namespace Effect
