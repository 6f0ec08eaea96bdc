#include "media/GraphicsService.h"

#include "dialog/MessageBox.h"
#include "media/image/ResourceConvert.h"
#include "media/image/YUVformat.h"
#include "media/pass/FramePasses.h"
#include "media/surface/SurfaceShaders.h"
#include "setting/SettingService.h"
#include "system/Exception.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Media {

namespace {

constexpr char kPlace[] = "Media::GraphicsService::GraphicsService";

GraphicsDevice::BackendFactory& backendFactory() {
  static GraphicsDevice::BackendFactory factory;
  return factory;
}

Format knownFormat(const System::IniFile::VALUE& value, std::int32_t defaultNumber) {
  const std::int32_t number = value.toInt(defaultNumber);
  if (number < 0 || !findFormat(static_cast<std::uint32_t>(number))) {
    throw System::NoteException(kPlace, "unsupported pixel format.", std::to_string(number));
  }
  return static_cast<Format>(number);
}

}  // namespace

void GraphicsService::setBackendFactory(GraphicsDevice::BackendFactory factory) {
  backendFactory() = std::move(factory);
}

DeviceSettings GraphicsService::readSettings(System::IniFile::SectionRef config) {
  DeviceSettings settings;
  settings.pixelFormat = knownFormat(config["PixelFormat"], 10);
  settings.maskFormat = knownFormat(config["MaskFormat"], 65);
  settings.shadowBufferSize = static_cast<std::uint32_t>(std::max(config["ShadowBufferSize"].toInt(), 1));
  return settings;
}

GraphicsService::GraphicsService() {
  config_.setSection("Direct3D");
  config_.add<System::Config::Int>("MultiSampleCount", &multiSampleCount_, 8);
  config_.add<System::Config::Int>("MaxAnisotropy", &maxAnisotropy_, 16);
  config_.add<System::Config::Int>("HighDpiMode", &highDpiMode_, 1);
  config_.add<System::Config::String>("OutputYUVColorSpace", &outputYuvColorSpace_, L"");
  config_.add<System::Config::Int>("OutputYUVColorRange", &outputYuvColorRange_, 0);
  config_.load(System::MainIniFile::get());

  Setting::SettingService* setting = System::Singleton<Setting::SettingService>::get();
  DeviceSettings settings = readSettings(setting->config());
  // The box belongs to the main thread; the device reports from its start, which runs
  // on the thread that acquires this service.
  // Once per renderer and installation; the log has the warning at every start.
  settings.warnUser = [](const std::string& text, const std::string& renderer) {
    Dialog::showWarningOnce(System::Text::fromUtf8(text), System::MainIniFile::get(), "Direct3D",
                            "ROVWarningRenderer", renderer);
  };
  if (!backendFactory()) throw System::NoteException(kPlace, "graphics back end not installed.");
  device_ = std::make_unique<GraphicsDevice>(backendFactory(), std::move(settings));
  // The last step of the device's start: no conversion may run before the tables exist.
  colors_ = std::make_unique<YUVformat>(setting->systemFile());
}

ConvertParameters GraphicsService::outputColor() const {
  return {colors_->RGB2YUV().find(outputYuvColorSpace_) + 1, outputYuvColorRange_ != 0};
}

GraphicsService::~GraphicsService() {
  // The shared shaders hold GPU objects, which go through the device.
  convert_.reset();
  surfaces_.reset();
  passes_.reset();
  device_.reset();
  config_.store();
}

void GraphicsService::createSharedResources(std::uint32_t width, std::uint32_t height) {
  device_->run([&] {
    passes_ = std::make_unique<FramePasses>(*device_, width, height);
    surfaces_ = std::make_unique<SurfaceShaders>(*device_);
    convert_ = std::make_unique<ResourceConvert>(*device_, *passes_, *colors_, outputColor());
  });
}

}  // namespace Media
