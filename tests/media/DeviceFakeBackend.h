// A back end that draws nothing and records what it was asked, so that the device's
// logic (state memory, bindings, buffer life cycles) is checked without a GPU.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "media/GraphicsBackend.h"

namespace MediaTest {

class FakeBackend : public Media::GraphicsBackend {
 public:
  std::vector<std::string> calls;
  std::vector<std::string> shaderSources;
  std::map<Media::GpuId, std::uint32_t> liveTextures;  // texture -> width
  std::map<std::uint32_t, Media::GpuId> textureUnits;
  std::map<std::uint32_t, Media::GpuId> imageUnits;
  std::map<std::uint32_t, Media::GpuId> imagesAtDispatch;
  std::map<std::uint32_t, Media::GpuId> constantBuffers;
  std::map<Media::GpuId, std::vector<std::byte>> bufferContents;
  std::map<Media::GpuId, std::vector<std::byte>> reads;
  std::vector<std::uint32_t> drawCounts;
  std::size_t buffersCreated = 0;
  std::size_t buffersLive = 0;
  std::size_t lastBlendEnable = 99;
  bool lastUploadHadPixels = false;
  Media::GpuId boundTarget = 0;
  Media::Format boundTargetFormat = Media::Format::Unknown;
  Media::Topology lastTopology = Media::Topology::TriangleList;

  std::string rendererName() const override { return "fake"; }
  std::string versionName() const override { return "0"; }
  bool hasRasterizerOrderedViews() const override { return false; }
  bool supportsTexture(Media::Format) const override { return true; }

  Media::GpuId createTexture(std::uint32_t width, std::uint32_t, Media::Format, const void* pixels, std::size_t,
                             const char*) override {
    liveTextures[++next_] = width;
    lastUploadHadPixels = pixels != nullptr;
    calls.push_back("createTexture");
    return next_;
  }
  void destroyTexture(Media::GpuId texture) override { liveTextures.erase(texture); }
  Media::GpuId createRenderTarget(Media::GpuId, const char*) override {
    calls.push_back("createRenderTarget");
    return ++next_;
  }
  void destroyRenderTarget(Media::GpuId) override {}
  void clearTexture(Media::GpuId, const Media::Color&) override { calls.push_back("clear"); }
  void copyTextureRegion(Media::GpuId, Media::GpuId, const Media::CopyRegion&) override {}
  Media::GpuId beginRead(Media::GpuId, std::uint32_t width, std::uint32_t height, Media::Format format,
                         const char*) override {
    calls.push_back("beginRead");
    reads[++next_].assign(Media::rowBytes(format, width) * height * (Media::isAlphaOnly(format) ? 4 : 1),
                          std::byte{0x40});
    return next_;
  }
  const std::byte* waitRead(Media::GpuId read, const char*) override {
    calls.push_back("waitRead");
    return reads.at(read).data();
  }
  void destroyRead(Media::GpuId read) override { reads.erase(read); }

  Media::GpuId createBuffer(const void* data, std::size_t size, const char*) override {
    ++buffersCreated;
    ++buffersLive;
    const auto* bytes = static_cast<const std::byte*>(data);
    bufferContents[++next_] = bytes ? std::vector<std::byte>(bytes, bytes + size) : std::vector<std::byte>(size);
    return next_;
  }
  void updateBuffer(Media::GpuId buffer, const void* data, std::size_t size) override {
    calls.push_back("updateBuffer");
    const auto* bytes = static_cast<const std::byte*>(data);
    std::copy(bytes, bytes + size, bufferContents[buffer].begin());
  }
  void destroyBuffer(Media::GpuId) override { --buffersLive; }

  Media::GpuId createShader(Media::ShaderStage, const std::string& glsl, const char*, const char*) override {
    shaderSources.push_back(glsl);
    return ++next_;
  }
  void destroyShader(Media::GpuId) override {}
  Media::GpuId createInputLayout(const std::vector<Media::InputElement>&, const char*) override { return ++next_; }
  void destroyInputLayout(Media::GpuId) override {}

  void setRenderTarget(Media::GpuId target, std::uint32_t, std::uint32_t, Media::Format format) override {
    boundTarget = target;
    boundTargetFormat = format;
  }
  void bindTexture(std::uint32_t unit, Media::GpuId texture) override {
    if (texture) {
      textureUnits[unit] = texture;
    } else {
      textureUnits.erase(unit);
    }
  }
  void bindSampler(std::uint32_t, std::size_t) override {}
  void bindImage(std::uint32_t unit, Media::GpuId texture, Media::Format) override {
    if (texture) {
      imageUnits[unit] = texture;
    } else {
      imageUnits.erase(unit);
    }
  }
  void bindConstantBuffer(std::uint32_t binding, Media::GpuId buffer) override { constantBuffers[binding] = buffer; }
  void setBlendState(const Media::BlendStateDesc& state, const Media::Color&) override {
    calls.push_back("blend");
    lastBlendEnable = state.enable ? 1 : 0;
  }
  void setRasterizerState(const Media::RasterizerState&) override { calls.push_back("rasterizer"); }
  void useShader(Media::ShaderStage, Media::GpuId) override { calls.push_back("shader"); }
  void draw(Media::Topology topology, Media::GpuId, Media::GpuId, std::uint32_t, std::uint32_t count) override {
    calls.push_back("draw");
    drawCounts.push_back(count);
    lastTopology = topology;
  }
  void dispatch(std::uint32_t, std::uint32_t, std::uint32_t) override {
    calls.push_back("dispatch");
    imagesAtDispatch = imageUnits;
  }
  void finish() override {}

 private:
  Media::GpuId next_ = 0;
};

}  // namespace MediaTest
