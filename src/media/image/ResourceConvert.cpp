#include "media/image/ResourceConvert.h"

#include "media/ConstantBufferCommon.h"
#include "media/CpuAccessBuffer.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/YUVformat.h"
#include "media/pass/FramePasses.h"
#include "system/Exception.h"

namespace Media {

namespace {

constexpr const char* kPlace = "Media::ResourceConvert::convert";

enum class ColorMatrix : std::uint8_t { None, Yc48, EightBit };

// Uploads into the pixel format: what the image's bytes are put into the GPU as, how
// its texels hold the pixels, and the pass that brings them to premultiplied RGBA.
struct UploadConversion {
  Format image;
  Format texture;
  TexelLayout layout;
  FramePass pass;
  ColorMatrix matrix;
};

constexpr UploadConversion kUploads[] = {
    {Format::Rgba16Float, Format::Rgba16Float, TexelLayout::Rgba, FramePass::Copy, ColorMatrix::None},
    {Format::Rgba16Unorm, Format::Rgba16Unorm, TexelLayout::Rgba, FramePass::Copy, ColorMatrix::None},
    {Format::Rgba16Snorm, Format::Rgba16Snorm, TexelLayout::Rgba, FramePass::ColorMatrixAddFirst, ColorMatrix::Yc48},
    {Format::Rgba8Unorm, Format::Rgba8Unorm, TexelLayout::Rgba, FramePass::StraightToPremultiplied, ColorMatrix::None},
    {Format::Bgra8Unorm, Format::Rgba8Unorm, TexelLayout::Bgra, FramePass::StraightToPremultiplied, ColorMatrix::None},
    {Format::Bgrx8Unorm, Format::Rgba8Unorm, TexelLayout::Bgra, FramePass::CopyOpaque, ColorMatrix::None},
    {Format::Yuy2, Format::Yuy2Packed, TexelLayout::PackedYuy2, FramePass::ColorMatrixAddFirst, ColorMatrix::EightBit},
};

// Read-backs from the pixel format: the texture the frame is drawn into, whose bytes are
// those of the CPU image, and the pass, by whether the caller wants straight alpha.
struct ReadBackConversion {
  Format image;
  Format texture;
  TexelLayout layout;
  FramePass premultipliedPass;
  FramePass straightPass;
  ColorMatrix matrix;
};

constexpr ReadBackConversion kReadBacks[] = {
    {Format::Rgba16Snorm, Format::Rgba16Snorm, TexelLayout::Rgba, FramePass::ColorMatrixAddLast,
     FramePass::ColorMatrixAddLast, ColorMatrix::Yc48},
    {Format::Yuy2, Format::Yuy2Packed, TexelLayout::PackedYuy2, FramePass::ColorMatrixAddLast,
     FramePass::ColorMatrixAddLast, ColorMatrix::EightBit},
    {Format::Bgrx8Unorm, Format::Rgba8Unorm, TexelLayout::Bgra, FramePass::CopyOpaque, FramePass::CopyOpaque,
     ColorMatrix::None},
    {Format::Bgra8Unorm, Format::Rgba8Unorm, TexelLayout::Bgra, FramePass::ClampToAlpha,
     FramePass::PremultipliedToStraight, ColorMatrix::None},
    {Format::Rgba8Unorm, Format::Rgba8Unorm, TexelLayout::Rgba, FramePass::ClampToAlpha,
     FramePass::PremultipliedToStraight, ColorMatrix::None},
    {Format::Rgba16Unorm, Format::Rgba16Unorm, TexelLayout::Rgba, FramePass::Copy, FramePass::PremultipliedToStraight,
     ColorMatrix::None},
};

template <class Conversion, std::size_t N>
const Conversion* find(const Conversion (&table)[N], Format image) noexcept {
  for (const Conversion& entry : table) {
    if (entry.image == image) return &entry;
  }
  return nullptr;
}

[[noreturn]] void unsupported(Format from, Format to) {
  throw System::NoteException(kPlace, "unsupported convert format.", L"DXGI format %d -> %d", static_cast<int>(from),
                              static_cast<int>(to));
}

const ColorMatrixConstants& matrixOf(const YUVformat::ColorValues& values, ColorMatrix matrix, bool fullRange) {
  if (matrix == ColorMatrix::Yc48) return values.yc48;
  return fullRange ? values.full : values.limited;
}

}  // namespace

ResourceConvert::ResourceConvert(GraphicsDevice& device, FramePasses& passes, const YUVformat& colors,
                                 ConvertParameters output)
    : device_(&device), passes_(&passes), colors_(&colors), output_(output) {}

ResourceConvert::~ResourceConvert() = default;

void ResourceConvert::convert(const ImageBuffer& image, ResourceBuffer& target, const ConvertParameters& parameters) {
  const UploadConversion* conversion = find(kUploads, image.format());
  if (!conversion || target.format() != Format::Rgba16Float) unsupported(image.format(), target.format());
  if (target.empty()) return;
  device_->run([&] {
    ResourceBuffer source(*device_, image.width(), image.height(), conversion->texture, image.data(), image.pitch());
    ConstantBufferCommon constants(*device_);
    PassOptions options;
    if (conversion->matrix != ColorMatrix::None) {
      const YUVformat::ColorValues& values = colors_->YUV2RGB().select(parameters.colorSpace, image.height());
      constants.create(matrixOf(values, conversion->matrix, parameters.fullRange));
      options.constants = &constants;
    }
    if (conversion->layout == TexelLayout::Rgba) {
      passes_->run(conversion->pass, target, {&source}, options);
    } else {
      passes_->pixelShader(conversion->pass, conversion->layout, TexelLayout::Rgba).draw(target, {&source}, options);
    }
  });
}

std::shared_ptr<ImageBuffer> ResourceConvert::convert(RenderBuffer& source, Format format, bool straightAlpha) {
  const bool sameFormat = format == source.format();
  const ReadBackConversion* conversion = sameFormat ? nullptr : find(kReadBacks, format);
  if (source.format() != Format::Rgba16Float || (!sameFormat && !conversion)) unsupported(source.format(), format);
  if (sameFormat) return source.toImageBuffer();
  auto image = std::make_shared<ImageBuffer>(format, source.width(), source.height());
  if (source.width() == 0 || source.height() == 0) return image;
  std::unique_ptr<CpuAccessBuffer> staging;
  device_->run([&] {
    RenderBuffer& target = scratchTarget(conversion->texture, source.width(), source.height());
    ConstantBufferCommon constants(*device_);
    PassOptions options;
    if (conversion->matrix != ColorMatrix::None) {
      const YUVformat::ColorValues& values = colors_->RGB2YUV().select(output_.colorSpace, source.height());
      constants.create(matrixOf(values, conversion->matrix, output_.fullRange));
      options.constants = &constants;
    }
    const FramePass pass = straightAlpha ? conversion->straightPass : conversion->premultipliedPass;
    passes_->pixelShader(pass, TexelLayout::Rgba, conversion->layout).draw(target, source, options);
    staging = target.startReadBack();
  });
  staging->copyTo(image->data(), image->pitch());
  return image;
}

RenderBuffer& ResourceConvert::scratchTarget(Format format, std::uint32_t width, std::uint32_t height) {
  std::unique_ptr<RenderBuffer>& target = scratchTargets_[format];
  if (!target) {
    target = std::make_unique<RenderBuffer>(*device_, width, height, format);
  } else {
    target->createTexture2D(width, height);
  }
  return *target;
}

}  // namespace Media
