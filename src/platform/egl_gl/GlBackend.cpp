#include "platform/egl_gl/GlBackend.h"

#include <algorithm>
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

// What every kind of later work needs once shaders have written images: texture reads,
// image access, drawing into, and copies, clears and read-backs of the textures.
constexpr GLbitfield kAfterImageWrites = GL_TEXTURE_FETCH_BARRIER_BIT | GL_SHADER_IMAGE_ACCESS_BARRIER_BIT |
                                         GL_FRAMEBUFFER_BARRIER_BIT | GL_TEXTURE_UPDATE_BARRIER_BIT;

// Finished read-back buffers kept for reuse: a frame, its preview and an export's
// conversions in flight at once.
constexpr std::size_t kSpareReads = 4;

// How long one wait for a read-back's fence lasts before it is asked again.
constexpr GLuint64 kFenceWaitNanoseconds = 1'000'000'000;

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
  for (auto& [id, read] : reads_) deleteReadBuffer(read);
  for (PendingRead& read : spareReads_) deleteReadBuffer(read);
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
                                      const void* pixels, std::size_t pitch, const char* place) {
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
    const std::size_t rowPitch = pitch ? pitch : Media::rowBytes(format, width);
    if (entry.alphaOnly) {
      // The mask goes to alpha, with colour 0, as a mask reads when sampled.
      const auto* alpha = static_cast<const std::uint8_t*>(pixels);
      std::vector<std::uint8_t> rgba(static_cast<std::size_t>(width) * height * 4, 0);
      for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) rgba[(y * width + x) * 4 + 3] = alpha[y * rowPitch + x];
      }
      glTextureSubImage2D(texture, 0, 0, 0, texels, static_cast<GLsizei>(height), entry.clientFormat, entry.clientType,
                          rgba.data());
    } else {
      // Rows are read at their pitch where they lie, so a padded image needs no repacking.
      glPixelStorei(GL_UNPACK_ROW_LENGTH, static_cast<GLint>(rowPitch / Media::findFormat(format)->bytesPerBlock));
      glTextureSubImage2D(texture, 0, 0, 0, texels, static_cast<GLsizei>(height), entry.clientFormat, entry.clientType,
                          pixels);
      glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
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

void GlBackend::barrierBefore(GLbitfield uses) {
  const GLbitfield bits = owedBarriers_ & uses;
  if (!bits) return;
  glMemoryBarrier(bits);
  owedBarriers_ &= ~bits;
}

void GlBackend::clearTexture(Media::GpuId texture, const Media::Color& color) {
  barrierBefore(GL_TEXTURE_UPDATE_BARRIER_BIT);
  glClearTexImage(texture, 0, GL_RGBA, GL_FLOAT, color.data());
}

void GlBackend::copyTextureRegion(Media::GpuId source, Media::GpuId target, const Media::CopyRegion& region) {
  barrierBefore(GL_TEXTURE_UPDATE_BARRIER_BIT);
  glCopyImageSubData(source, GL_TEXTURE_2D, 0, static_cast<GLint>(region.sourceX), static_cast<GLint>(region.sourceY),
                     0, target, GL_TEXTURE_2D, 0, static_cast<GLint>(region.targetX),
                     static_cast<GLint>(region.targetY), 0, static_cast<GLsizei>(region.width),
                     static_cast<GLsizei>(region.height), 1);
}

GlBackend::PendingRead GlBackend::takeReadBuffer(std::size_t size, const char* place) {
  const auto spare = std::find_if(spareReads_.begin(), spareReads_.end(),
                                  [size](const PendingRead& read) { return read.size == size; });
  if (spare != spareReads_.end()) {
    const PendingRead read = *spare;
    spareReads_.erase(spare);
    return read;
  }
  PendingRead read;
  read.size = size;
  glCreateBuffers(1, &read.buffer);
  constexpr GLbitfield kMapping = GL_MAP_READ_BIT | GL_MAP_PERSISTENT_BIT | GL_MAP_COHERENT_BIT;
  glNamedBufferStorage(read.buffer, static_cast<GLsizeiptr>(size), nullptr, kMapping);
  read.mapped = static_cast<const std::byte*>(glMapNamedBufferRange(read.buffer, 0, static_cast<GLsizeiptr>(size), kMapping));
  if (const GLenum error = glGetError(); error != GL_NO_ERROR || !read.mapped) {
    glDeleteBuffers(1, &read.buffer);
    throw System::HResultException("glMapNamedBufferRange", place, error);
  }
  return read;
}

void GlBackend::deleteReadBuffer(PendingRead& read) {
  if (read.fence) glDeleteSync(read.fence);
  glUnmapNamedBuffer(read.buffer);
  glDeleteBuffers(1, &read.buffer);
}

Media::GpuId GlBackend::beginRead(Media::GpuId texture, std::uint32_t width, std::uint32_t height,
                                  Media::Format format, const char* place) {
  const GlFormat& entry = glFormat(format, place);
  // A mask is read as the RGBA8 texture it is stored in; the caller keeps the alpha.
  const std::size_t size = entry.alphaOnly ? std::size_t{width} * height * 4 : Media::rowBytes(format, width) * height;
  barrierBefore(GL_TEXTURE_UPDATE_BARRIER_BIT);
  PendingRead read = takeReadBuffer(size, place);
  glBindBuffer(GL_PIXEL_PACK_BUFFER, read.buffer);
  const GLenum clientFormat = entry.alphaOnly ? GLenum{GL_RGBA} : entry.clientFormat;
  glGetTextureImage(texture, 0, clientFormat, entry.clientType, static_cast<GLsizei>(size), nullptr);
  glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
  read.fence = glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
  // The copy starts now, not when someone waits for it.
  glFlush();
  if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
    deleteReadBuffer(read);
    throw System::HResultException("glGetTextureImage", place, error);
  }
  reads_.emplace(read.buffer, read);
  return read.buffer;
}

const std::byte* GlBackend::waitRead(Media::GpuId read, const char* place) {
  PendingRead& pending = reads_.at(read);
  if (pending.fence) {
    for (;;) {
      const GLenum status = glClientWaitSync(pending.fence, GL_SYNC_FLUSH_COMMANDS_BIT, kFenceWaitNanoseconds);
      if (status == GL_ALREADY_SIGNALED || status == GL_CONDITION_SATISFIED) break;
      if (status == GL_WAIT_FAILED) throw System::HResultException("glClientWaitSync", place, glGetError());
    }
    glDeleteSync(pending.fence);
    pending.fence = nullptr;
  }
  return pending.mapped;
}

void GlBackend::destroyRead(Media::GpuId read) {
  const auto found = reads_.find(read);
  if (found == reads_.end()) return;
  PendingRead finished = found->second;
  reads_.erase(found);
  // A copy that was never waited for may still be running: only a finished buffer is kept.
  if (finished.fence || spareReads_.size() == kSpareReads) return deleteReadBuffer(finished);
  spareReads_.push_back(finished);
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

void GlBackend::setRenderTarget(Media::GpuId target, std::uint32_t width, std::uint32_t height,
                                Media::Format format) {
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, target);
  if (!target) return;
  // A packed target (YUY2) is drawn one texel, two pixels, at a time.
  const GlFormat& entry = glFormat(format, "Media::GraphicsDevice::setRenderTarget");
  glViewport(0, 0, static_cast<GLsizei>(texelWidth(entry, width)), static_cast<GLsizei>(height));
  // A mask is stored as RGBA8: writing alpha alone keeps its colour 0, as a
  // single-channel mask reads.
  const bool masked = Media::isAlphaOnly(format);
  if (masked != colorMasked_) {
    glColorMaski(0, !masked, !masked, !masked, GL_TRUE);
    colorMasked_ = masked;
  }
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
  barrierBefore(GL_TEXTURE_FETCH_BARRIER_BIT | GL_FRAMEBUFFER_BARRIER_BIT |
                (boundImages_ ? GLbitfield{GL_SHADER_IMAGE_ACCESS_BARRIER_BIT} : 0));
  glDrawArrays(glTopology(topology), 0, static_cast<GLsizei>(count));
  if (boundImages_) owedBarriers_ = kAfterImageWrites;
}

void GlBackend::dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) {
  barrierBefore(GL_TEXTURE_FETCH_BARRIER_BIT | GL_SHADER_IMAGE_ACCESS_BARRIER_BIT);
  glDispatchCompute(x, y, z);
  owedBarriers_ = kAfterImageWrites;
}

void GlBackend::finish() { glFinish(); }

std::unique_ptr<Media::GraphicsBackend> createGlBackend() { return std::make_unique<GlBackend>(); }

}  // namespace Platform
