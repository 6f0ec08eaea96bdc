// The programs of one pixel or compute shader. A shader that writes read-write images
// declares each image's format where the token SORVEL_IMAGE_FORMAT_<unit> stands; the
// format follows the texture bound there, so one program is made and kept for each
// combination of formats that the shader meets. GPU thread only.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "media/CompiledShader.h"
#include "media/Format.h"
#include "media/GraphicsBackend.h"

namespace Media {

class GraphicsDevice;

// The GLSL text with each image format token replaced by the qualifier of the format
// at its unit. `formats` holds one format for each entry of shader.images.
std::string glslForImageFormats(const CompiledShader& shader, const std::vector<Format>& formats);

class ShaderVariants {
 public:
  ShaderVariants(GraphicsDevice& device, CompiledShader shader, const char* call, const char* place);
  ~ShaderVariants();
  ShaderVariants(const ShaderVariants&) = delete;
  ShaderVariants& operator=(const ShaderVariants&) = delete;

  const CompiledShader& source() const noexcept { return shader_; }
  // The program for the images the device holds now at the shader's image registers,
  // and binds those images at the shader's units.
  GpuId bindImagesAndGetProgram();
  // Empties the shader's image units after its pass, so that no image stays bound into
  // later work and what was written is only made visible to the use that follows.
  void unbindImages();

 private:
  GraphicsDevice* device_;
  CompiledShader shader_;
  const char* call_;
  const char* place_;
  std::map<std::vector<Format>, GpuId> programs_;
};

}  // namespace Media
