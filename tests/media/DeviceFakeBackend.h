// A back end that draws nothing and records what it was asked, so that the device's
// logic (state memory, bindings, buffer life cycles) is checked without a GPU.
#pragma once

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
  std::vector<std::uint32_t> drawCounts;
  std::size_t buffersCreated = 0;
  std::size_t buffersLive = 0;
  std::size_t lastBlendEnable = 99;
  bool lastUploadHadPixels = false;
  Media::GpuId boundTarget = 0;

  std::string rendererName() const override { return "fake"; }
  std::string versionName() const override { return "0"; }
  bool hasRasterizerOrderedViews() const override { return false; }
  bool supportsTexture(Media::Format) const override { return true; }

  Media::GpuId createTexture(std::uint32_t width, std::uint32_t, Media::Format, const void* pixels,
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
  void readTexture(Media::GpuId, std::uint32_t, std::uint32_t, Media::Format, void*, const char*) override {}

  Media::GpuId createBuffer(const void*, std::size_t, const char*) override {
    ++buffersCreated;
    ++buffersLive;
    return ++next_;
  }
  void updateBuffer(Media::GpuId, const void*, std::size_t) override { calls.push_back("updateBuffer"); }
  void destroyBuffer(Media::GpuId) override { --buffersLive; }

  Media::GpuId createShader(Media::ShaderStage, const std::string& glsl, const char*, const char*) override {
    shaderSources.push_back(glsl);
    return ++next_;
  }
  void destroyShader(Media::GpuId) override {}
  Media::GpuId createInputLayout(const std::vector<Media::InputElement>&, const char*) override { return ++next_; }
  void destroyInputLayout(Media::GpuId) override {}

  void setRenderTarget(Media::GpuId target, std::uint32_t, std::uint32_t) override { boundTarget = target; }
  void bindTexture(std::uint32_t unit, Media::GpuId texture) override {
    if (texture) {
      textureUnits[unit] = texture;
    } else {
      textureUnits.erase(unit);
    }
  }
  void bindSampler(std::uint32_t, std::size_t) override {}
  void bindImage(std::uint32_t, Media::GpuId, Media::Format) override {}
  void bindConstantBuffer(std::uint32_t, Media::GpuId) override {}
  void setBlendState(const Media::BlendStateDesc& state, const Media::Color&) override {
    calls.push_back("blend");
    lastBlendEnable = state.enable ? 1 : 0;
  }
  void setRasterizerState(const Media::RasterizerState&) override { calls.push_back("rasterizer"); }
  void useShader(Media::ShaderStage, Media::GpuId) override { calls.push_back("shader"); }
  void draw(Media::Topology, Media::GpuId, Media::GpuId, std::uint32_t, std::uint32_t count) override {
    calls.push_back("draw");
    drawCounts.push_back(count);
  }
  void dispatch(std::uint32_t, std::uint32_t, std::uint32_t) override {}
  void finish() override {}

 private:
  Media::GpuId next_ = 0;
};

}  // namespace MediaTest
