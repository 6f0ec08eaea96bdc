// Conversions between the CPU images of readers, plug-ins and exports and the frame's
// pixel format, on the GPU. An upload puts the image's bytes into a texture as they lie
// (rows at the image's pitch) and runs one frame pass from it into the frame's format; a
// read-back draws the frame into a texture whose bytes already are the CPU image and
// copies them out unchanged, since a format conversion inside the copy costs far more.
// Made by the graphics service with the shared frame passes and the colour tables. Any
// thread may convert: the GPU work runs on the GPU thread, one conversion at a time, and
// the bytes of a read-back are copied out on the caller's thread.
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "media/Format.h"
#include "media/image/ConvertParameters.h"

namespace Media {

class FramePasses;
class GraphicsDevice;
class ImageBuffer;
class RenderBuffer;
class ResourceBuffer;
class YUVformat;

class ResourceConvert {
 public:
  // `output` says which colour space and range read-backs in YUV formats write.
  ResourceConvert(GraphicsDevice& device, FramePasses& passes, const YUVformat& colors, ConvertParameters output);
  ~ResourceConvert();
  ResourceConvert(const ResourceConvert&) = delete;
  ResourceConvert& operator=(const ResourceConvert&) = delete;

  GraphicsDevice& device() const noexcept { return *device_; }

  // Draws `image` into `target`, a buffer of the image's size (clamped) in format 10:
  // YC48 and YUY2 through the colour matrix of YUV2RGB that `parameters` choose, straight
  // RGBA and BGRA premultiplied, BGRX opaque, 16-bit RGBA copied. Any other pair of
  // formats throws "unsupported convert format." with the note "DXGI format %d -> %d".
  void convert(const ImageBuffer& image, ResourceBuffer& target, const ConvertParameters& parameters);

  // The frame `source`, of format 10, as a new CPU image of `format`: YC48 and YUY2
  // through the colour matrix of RGB2YUV that the output settings choose (YUY2 takes the
  // chroma of the left pixel of each pair), RGBA and BGRA with straight alpha where
  // `straightAlpha` is set and else clamped to their alpha, BGRX opaque, others copied.
  // Other formats throw as above.
  std::shared_ptr<ImageBuffer> convert(RenderBuffer& source, Format format, bool straightAlpha);

 private:
  RenderBuffer& scratchTarget(Format format, std::uint32_t width, std::uint32_t height);

  GraphicsDevice* device_;
  FramePasses* passes_;
  const YUVformat* colors_;
  ConvertParameters output_;
  // The textures read-backs draw into, one per format, kept from one frame to the next.
  std::map<Format, std::unique_ptr<RenderBuffer>> scratchTargets_;
};

}  // namespace Media
