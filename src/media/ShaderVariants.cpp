#include "media/ShaderVariants.h"

#include "media/GraphicsDevice.h"

namespace Media {

std::string glslForImageFormats(const CompiledShader& shader, const std::vector<Format>& formats) {
  std::string glsl = shader.glsl;
  for (std::size_t i = 0; i < shader.images.size() && i < formats.size(); ++i) {
    const std::string token = "SORVEL_IMAGE_FORMAT_" + std::to_string(shader.images[i].unit);
    const FormatInfo* info = findFormat(formats[i]);
    const std::string qualifier = info ? info->imageQualifier : "rgba16f";
    // A token must not match the start of a longer one (unit 1 against unit 12).
    for (std::size_t at = glsl.find(token); at != std::string::npos; at = glsl.find(token, at)) {
      const std::size_t end = at + token.size();
      if (end < glsl.size() && glsl[end] >= '0' && glsl[end] <= '9') {
        at = end;
        continue;
      }
      glsl.replace(at, token.size(), qualifier);
      at += qualifier.size();
    }
  }
  return glsl;
}

ShaderVariants::ShaderVariants(GraphicsDevice& device, CompiledShader shader, const char* call, const char* place)
    : device_(&device), shader_(std::move(shader)), call_(call), place_(place) {
  // A shader without images has one program; make it now so that a bad text fails at load.
  if (shader_.images.empty()) bindImagesAndGetProgram();
}

ShaderVariants::~ShaderVariants() {
  if (programs_.empty()) return;
  device_->releaseOnGpu([device = device_, stage = shader_.stage, programs = std::move(programs_)] {
    for (const auto& [formats, program] : programs) device->destroyShader(stage, program);
  });
}

void ShaderVariants::unbindImages() {
  for (const ShaderImageBinding& image : shader_.images) device_->backend().bindImage(image.unit, 0, Format::Unknown);
}

GpuId ShaderVariants::bindImagesAndGetProgram() {
  std::vector<Format> formats;
  formats.reserve(shader_.images.size());
  for (const ShaderImageBinding& image : shader_.images) {
    const GraphicsDevice::ImageView view = device_->imageAt(image.slot);
    device_->backend().bindImage(image.unit, view.texture, view.format);
    formats.push_back(view.format);
  }
  auto found = programs_.find(formats);
  if (found != programs_.end()) return found->second;
  const GpuId program =
      device_->backend().createShader(shader_.stage, glslForImageFormats(shader_, formats), call_, place_);
  programs_.emplace(std::move(formats), program);
  return program;
}

}  // namespace Media
