// The graphics device as a global service of the start sequence (System::Singleton):
// it keeps the section Direct3D of the main ini, reads the pixel, mask and shadow map
// sizes and the YUV colour tables from the system file, and starts the device. At the
// start's later step it also makes the frame passes that every effect shares, which
// measure their paths on frames of the size given there, and the conversions of CPU
// images that run through them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "media/GraphicsDevice.h"
#include "media/image/ConvertParameters.h"
#include "system/ConfigGroup.h"
#include "system/IniFile.h"

namespace Media {

class FramePasses;
class ResourceConvert;
class SurfaceShaders;
class YUVformat;

class GraphicsService {
 public:
  // The platform installs how to make its back end before the service is acquired.
  static void setBackendFactory(GraphicsDevice::BackendFactory factory);
  // The device's settings from the section Config of the system file. A missing or
  // malformed ShadowBufferSize, or a format the program does not know, throws.
  static DeviceSettings readSettings(System::IniFile::SectionRef config);

  GraphicsService();
  ~GraphicsService();
  GraphicsService(const GraphicsService&) = delete;
  GraphicsService& operator=(const GraphicsService&) = delete;

  GraphicsDevice& device() noexcept { return *device_; }

  // The shared frame passes, each on whichever path runs a frame of this size faster, and
  // the surface shaders that objects are drawn with.
  void createSharedResources(std::uint32_t width, std::uint32_t height);
  // Null before createSharedResources.
  FramePasses* framePasses() noexcept { return passes_.get(); }
  SurfaceShaders* surfaceShaders() noexcept { return surfaces_.get(); }
  ResourceConvert* resourceConvert() noexcept { return convert_.get(); }

 private:
  // What read-backs in YUV formats write: the colour space OutputYUVColorSpace names in
  // RGB2YUV (none or an unknown name: chosen by height), full range where
  // OutputYUVColorRange is not 0.
  ConvertParameters outputColor() const;

  // Kept in the main ini for the user; the device itself always uses one sample and no
  // anisotropy, and the colour keys belong to the colour conversion.
  std::int32_t multiSampleCount_ = 8;
  std::int32_t maxAnisotropy_ = 16;
  std::int32_t highDpiMode_ = 1;
  std::wstring outputYuvColorSpace_;
  std::int32_t outputYuvColorRange_ = 0;
  System::Config::Group config_;

  std::unique_ptr<GraphicsDevice> device_;
  std::unique_ptr<YUVformat> colors_;
  std::unique_ptr<FramePasses> passes_;
  std::unique_ptr<SurfaceShaders> surfaces_;
  std::unique_ptr<ResourceConvert> convert_;
};

}  // namespace Media
