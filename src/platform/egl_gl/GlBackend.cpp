#include "platform/egl_gl/GlBackend.h"

#include <cstring>
#include <vector>

#include "platform/egl_gl/GlFormatTable.h"
#include "platform/egl_gl/GlPipelineStates.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace Platform {

namespace {

// Throws for the error a creating call left, naming the call and the place.
void checkError(const char* call, const char* place) {
  const GLenum error = glGetError();
  if (error != GL_NO_ERROR) throw System::HResultException(call, place, error);
}

std::string glString(GLenum name) {
  const auto* text = reinterpret_cast<const char*>(glGetString(name));
  return text ? text : "";
}

bool hasGlExtension(const char* name) {
  GLint count = 0;
  glGetIntegerv(GL_NUM_EXTENSIONS, &count);
  for (GLint i = 0; i < count; ++i) {
    const auto* extension = reinterpret_cast<const char*>(glGetStringi(GL_EXTENSIONS, static_cast<GLuint>(i)));
    if (extension && std::strcmp(extension, name) == 0) return true;
  }
  return false;
}

GLenum glStage(Media::ShaderStage stage) {
  switch (stage) {
    case Media::ShaderStage::Vertex:
      return GL_VERTEX_SHADER;
    case Media::ShaderStage::Pixel:
      return GL_FRAGMENT_SHADER;
    case Media::ShaderStage::Compute:
      return GL_COMPUTE_SHADER;
  }
  return GL_FRAGMENT_SHADER;
}

GLbitfield glStageBit(Media::ShaderStage stage) {
  switch (stage) {
    case Media::ShaderStage::Vertex:
      return GL_VERTEX_SHADER_BIT;
    case Media::ShaderStage::Pixel:
      return GL_FRAGMENT_SHADER_BIT;
    case Media::ShaderStage::Compute:
      return GL_COMPUTE_SHADER_BIT;
  }
  return GL_FRAGMENT_SHADER_BIT;
}

GLenum glTopology(Media::Topology topology) {
  switch (topology) {
    case Media::Topology::PointList:
      return GL_POINTS;
    case Media::Topology::TriangleList:
      return GL_TRIANGLES;
    case Media::Topology::TriangleStrip:
      return GL_TRIANGLE_STRIP;
  }
  return GL_TRIANGLES;
}

}  // namespace

GlBackend::GlBackend() {
  glClipControl(GL_UPPER_LEFT, GL_ZERO_TO_ONE);
  glFrontFace(GL_CW);
  glDisable(GL_DITHER);
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glCreateProgramPipelines(1, &pipeline_);
  glBindProgramPipeline(pipeline_);
  orderedViews_ = hasGlExtension("GL_ARB_fragment_shader_interlock");
  checkError("glCreateProgramPipelines", "Media::GraphicsDevice::GraphicsDevice");
}

GlBackend::~GlBackend() {
  for (GLuint sampler : samplers_) {
    if (sampler) glDeleteSamplers(1, &sampler);
  }
  glDeleteProgramPipelines(1, &pipeline_);
}

std::string GlBackend::rendererName() const { return glString(GL_RENDERER) + " (EGL " + context_.platformName() + ")"; }

std::string GlBackend::versionName() const { return glString(GL_VERSION); }

bool GlBackend::supportsTexture(Media::Format format) const {
  const GlFormat& entry = glFormat(format, "Media::GraphicsDevice::GraphicsDevice");
  GLint supported = GL_FALSE;
  glGetInternalformativ(GL_TEXTURE_2D, entry.internalFormat, GL_INTERNALFORMAT_SUPPORTED, 1, &supported);
  return supported == GL_TRUE;
}

Media::GpuId GlBackend::createTexture(std::uint32_t width, std::uint32_t height, Media::Format format,
                                      const void* pixels, const char* place) {
  const GlFormat& entry = glFormat(format, place);
  const auto texels = static_cast<GLsizei>(texelWidth(entry, width));
  GLuint texture = 0;
  glCreateTextures(GL_TEXTURE_2D, 1, &texture);
  glTextureStorage2D(texture, 1, entry.internalFormat, texels, static_cast<GLsizei>(height));
  if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
    glDeleteTextures(1, &texture);
    throw System::HResultException("glTextureStorage2D", place, error);
  }
  // One level only: without these a texture read without a sampler object is incomplete.
  glTextureParameteri(texture, GL_TEXTURE_MAX_LEVEL, 0);
  glTextureParameteri(texture, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  if (entry.opaque) glTextureParameteri(texture, GL_TEXTURE_SWIZZLE_A, GL_ONE);
  if (pixels) {
    if (entry.alphaOnly) {
      // The mask goes to alpha, with colour 0, as a mask reads when sampled.
      const auto* alpha = static_cast<const std::uint8_t*>(pixels);
      std::vector<std::uint8_t> rgba(static_cast<std::size_t>(width) * height * 4, 0);
      for (std::size_t i = 0; i < static_cast<std::size_t>(width) * height; ++i) rgba[i * 4 + 3] = alpha[i];
      glTextureSubImage2D(texture, 0, 0, 0, texels, static_cast<GLsizei>(height), entry.clientFormat, entry.clientType,
                          rgba.data());
    } else {
      glTextureSubImage2D(texture, 0, 0, 0, texels, static_cast<GLsizei>(height), entry.clientFormat, entry.clientType,
                          pixels);
    }
  }
  return texture;
}

void GlBackend::destroyTexture(Media::GpuId texture) { glDeleteTextures(1, &texture); }

Media::GpuId GlBackend::createRenderTarget(Media::GpuId texture, const char* place) {
  GLuint framebuffer = 0;
  glCreateFramebuffers(1, &framebuffer);
  glNamedFramebufferTexture(framebuffer, GL_COLOR_ATTACHMENT0, texture, 0);
  const GLenum status = glCheckNamedFramebufferStatus(framebuffer, GL_DRAW_FRAMEBUFFER);
  if (status != GL_FRAMEBUFFER_COMPLETE) {
    glDeleteFramebuffers(1, &framebuffer);
    throw System::HResultException("glCheckNamedFramebufferStatus", place, status);
  }
  return framebuffer;
}

void GlBackend::destroyRenderTarget(Media::GpuId target) { glDeleteFramebuffers(1, &target); }

void GlBackend::clearTexture(Media::GpuId texture, const Media::Color& color) {
  glClearTexImage(texture, 0, GL_RGBA, GL_FLOAT, color.data());
}

void GlBackend::copyTextureRegion(Media::GpuId source, Media::GpuId target, const Media::CopyRegion& region) {
  glCopyImageSubData(source, GL_TEXTURE_2D, 0, static_cast<GLint>(region.sourceX), static_cast<GLint>(region.sourceY),
                     0, target, GL_TEXTURE_2D, 0, static_cast<GLint>(region.targetX),
                     static_cast<GLint>(region.targetY), 0, static_cast<GLsizei>(region.width),
                     static_cast<GLsizei>(region.height), 1);
}

void GlBackend::readTexture(Media::GpuId texture, std::uint32_t width, std::uint32_t height, Media::Format format,
                            void* out, const char* place) {
  const GlFormat& entry = glFormat(format, place);
  const std::size_t pixels = static_cast<std::size_t>(width) * height;
  if (entry.alphaOnly) {
    std::vector<std::uint8_t> rgba(pixels * 4);
    glGetTextureImage(texture, 0, GL_RGBA, GL_UNSIGNED_BYTE, static_cast<GLsizei>(rgba.size()), rgba.data());
    auto* alpha = static_cast<std::uint8_t*>(out);
    for (std::size_t i = 0; i < pixels; ++i) alpha[i] = rgba[i * 4 + 3];
  } else {
    const std::size_t size = Media::rowBytes(format, width) * height;
    glGetTextureImage(texture, 0, entry.clientFormat, entry.clientType, static_cast<GLsizei>(size), out);
  }
  checkError("glGetTextureImage", place);
}

Media::GpuId GlBackend::createBuffer(const void* data, std::size_t size, const char* place) {
  GLuint buffer = 0;
  glCreateBuffers(1, &buffer);
  glNamedBufferStorage(buffer, static_cast<GLsizeiptr>(size), data, GL_DYNAMIC_STORAGE_BIT);
  if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
    glDeleteBuffers(1, &buffer);
    throw System::HResultException("glNamedBufferStorage", place, error);
  }
  return buffer;
}

void GlBackend::updateBuffer(Media::GpuId buffer, const void* data, std::size_t size) {
  glNamedBufferSubData(buffer, 0, static_cast<GLsizeiptr>(size), data);
}

void GlBackend::destroyBuffer(Media::GpuId buffer) { glDeleteBuffers(1, &buffer); }

Media::GpuId GlBackend::createShader(Media::ShaderStage stage, const std::string& glsl, const char* call,
                                     const char* place) {
  const char* text = glsl.c_str();
  const GLuint program = glCreateShaderProgramv(glStage(stage), 1, &text);
  GLint linked = GL_FALSE;
  if (program) glGetProgramiv(program, GL_LINK_STATUS, &linked);
  if (linked != GL_TRUE) {
    std::string log;
    if (program) {
      GLint length = 0;
      glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
      log.resize(static_cast<std::size_t>(length > 0 ? length : 1));
      glGetProgramInfoLog(program, length, nullptr, log.data());
      glDeleteProgram(program);
    }
    System::Log::error(place, "%s", log.c_str());
    // Not a GL error: the status that was false stands in its place.
    throw System::HResultException(call, place, GL_LINK_STATUS);
  }
  return program;
}

void GlBackend::destroyShader(Media::GpuId shader) { glDeleteProgram(shader); }

Media::GpuId GlBackend::createInputLayout(const std::vector<Media::InputElement>& layout, const char* place) {
  GLuint vertexArray = 0;
  glCreateVertexArrays(1, &vertexArray);
  for (const Media::InputElement& element : layout) {
    if (element.componentCount == 0) continue;
    const auto count = static_cast<GLint>(element.componentCount);
    glEnableVertexArrayAttrib(vertexArray, element.location);
    switch (element.componentType) {
      case Media::ComponentType::Float32:
        glVertexArrayAttribFormat(vertexArray, element.location, count, GL_FLOAT, GL_FALSE, element.offset);
        break;
      case Media::ComponentType::SInt32:
        glVertexArrayAttribIFormat(vertexArray, element.location, count, GL_INT, element.offset);
        break;
      default:
        glVertexArrayAttribIFormat(vertexArray, element.location, count, GL_UNSIGNED_INT, element.offset);
        break;
    }
    glVertexArrayAttribBinding(vertexArray, element.location, 0);
  }
  if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
    glDeleteVertexArrays(1, &vertexArray);
    throw System::HResultException("glVertexArrayAttribFormat", place, error);
  }
  return vertexArray;
}

void GlBackend::destroyInputLayout(Media::GpuId layout) { glDeleteVertexArrays(1, &layout); }

void GlBackend::setRenderTarget(Media::GpuId target, std::uint32_t width, std::uint32_t height) {
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, target);
  if (target) glViewport(0, 0, static_cast<GLsizei>(width), static_cast<GLsizei>(height));
}

void GlBackend::bindTexture(std::uint32_t unit, Media::GpuId texture) { glBindTextureUnit(unit, texture); }

void GlBackend::bindSampler(std::uint32_t unit, std::size_t samplerState) {
  GLuint& sampler = samplers_.at(samplerState);
  if (!sampler) sampler = createSampler(Media::kSamplerStates[samplerState]);
  glBindSampler(unit, sampler);
}

void GlBackend::bindImage(std::uint32_t unit, Media::GpuId texture, Media::Format format) {
  const GLenum internal =
      texture ? glFormat(format, "Media::ResourceBuffer::createUnorderedAccessView").internalFormat : GLenum{GL_RGBA8};
  glBindImageTexture(unit, texture, 0, GL_FALSE, 0, GL_READ_WRITE, internal);
  const std::uint32_t bit = 1u << (unit & 31u);
  boundImages_ = texture ? boundImages_ | bit : boundImages_ & ~bit;
}

void GlBackend::bindConstantBuffer(std::uint32_t binding, Media::GpuId buffer) {
  glBindBufferBase(GL_UNIFORM_BUFFER, binding, buffer);
}

void GlBackend::setBlendState(const Media::BlendStateDesc& state, const Media::Color& factor) {
  const float values[4] = {factor[0], factor[1], factor[2], factor[3]};
  applyBlendState(state, values);
}

void GlBackend::setRasterizerState(const Media::RasterizerState& state) { applyRasterizerState(state); }

void GlBackend::useShader(Media::ShaderStage stage, Media::GpuId shader) {
  glUseProgramStages(pipeline_, glStageBit(stage), shader);
}

void GlBackend::draw(Media::Topology topology, Media::GpuId inputLayout, Media::GpuId vertexBuffer,
                     std::uint32_t stride, std::uint32_t count) {
  glBindVertexArray(inputLayout);
  glVertexArrayVertexBuffer(inputLayout, 0, vertexBuffer, 0, static_cast<GLsizei>(stride));
  glDrawArrays(glTopology(topology), 0, static_cast<GLsizei>(count));
  // What a pixel shader wrote to images is read next by texture fetches or copies, which
  // GL does not order by itself.
  if (boundImages_) glMemoryBarrier(GL_ALL_BARRIER_BITS);
}

void GlBackend::dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
  glDispatchCompute(x, y, z);
  glMemoryBarrier(GL_ALL_BARRIER_BITS);
}

void GlBackend::finish() { glFinish(); }

std::unique_ptr<Media::GraphicsBackend> createGlBackend() { return std::make_unique<GlBackend>(); }

}  // namespace Platform
