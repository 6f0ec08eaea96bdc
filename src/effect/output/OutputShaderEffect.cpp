#include "effect/output/OutputShaderEffect.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

#include "edit/Object.h"
#include "effect/EffectBase.h"
#include "media/BufferGeometry.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/GraphicsService.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/VertexList.h"
#include "media/pass/BlendStateTable.h"
#include "media/pass/FramePassConstants.h"
#include "media/pass/FramePasses.h"
#include "media/surface/SurfaceConstants.h"
#include "media/surface/SurfaceShaders.h"
#include "render/ObjectContext.h"
#include "render/ObjectGeometry.h"
#include "render/RenderVideoWorker.h"
#include "render/ViewMatrix.h"
#include "system/Exception.h"
#include "system/Singleton.h"

namespace Effect {

namespace {

// Blend modes run from 0 to 12 and, for scripts, 20 to 23; anything else draws as 0.
constexpr std::int32_t kLastBlendMode = 23;
// The first of the modes that replace the frame's pixel instead of drawing over it.
constexpr std::int32_t kFirstReplacingMode = 20;
// Quads kept by image size; past this many the cache starts again, so that a project
// of ever-changing sizes (a text growing letter by letter) does not hoard memory.
constexpr std::size_t kQuadCacheLimit = 64;

const std::array<float, 16>* storedWorld(const std::shared_ptr<Edit::Object>& control) {
  return control && !control->effects.empty() ? control->effects.front()->storedWorld() : nullptr;
}

const std::array<float, 16>* storedViewProjection(const std::shared_ptr<Edit::Object>& control) {
  return control && !control->effects.empty() ? control->effects.front()->storedViewProjection() : nullptr;
}

Render::Matrix4 transposed(const Render::Matrix4& m) noexcept {
  Render::Matrix4 t{};
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) t[column * 4 + row] = m[row * 4 + column];
  }
  return t;
}

// Rounds towards minus infinity, so that an image one pixel wider than the frame sits
// the same way whichever side of zero the difference falls.
std::int32_t floorHalf(std::int32_t value) noexcept { return value >= 0 ? value / 2 : -((1 - value) / 2); }

}  // namespace

class OutputShaderEffect::CommonResource {
 public:
  // Rebuilds everything for another device: what was made belongs to the old one.
  void bind(Media::GraphicsDevice& device) {
    if (device_ == &device) return;
    frameCopy_.reset();
    quads_.clear();
    ownSurfaces_.reset();
    device_ = &device;
    surfaceConstants_ = std::make_unique<Media::ConstantBufferCommon>(device);
    surfaceConstants_->create(Media::SurfaceConstants{});
    passConstants_ = std::make_unique<Media::ConstantBufferCommon>(device);
    passConstants_->create(Media::OutputConstants{});
  }

  Media::GraphicsDevice& device() noexcept { return *device_; }
  Media::ConstantBufferCommon& surfaceConstants() noexcept { return *surfaceConstants_; }
  Media::ConstantBufferCommon& passConstants() noexcept { return *passConstants_; }

  // The program's shared surface pair when the service runs on this device; otherwise
  // (a device of its own, as in tests and tools) a pair compiled once here.
  Media::SurfaceShaders& surfaces() {
    Media::GraphicsService* service = System::Singleton<Media::GraphicsService>::get();
    if (service && &service->device() == device_ && service->surfaceShaders()) return *service->surfaceShaders();
    if (!ownSurfaces_) ownSurfaces_ = std::make_unique<Media::SurfaceShaders>(*device_);
    return *ownSurfaces_;
  }

  // The quad of an image of width by height, centred on the origin, texture 0 to 1 from
  // its top left corner, alpha factor 1.
  const Media::VertexListQuadPosUv& quad(std::uint32_t width, std::uint32_t height) {
    const auto key = std::pair{width, height};
    if (const auto found = quads_.find(key); found != quads_.end()) return found->second;
    if (quads_.size() >= kQuadCacheLimit) quads_.clear();
    Media::VertexListQuadPosUv& list = quads_[key];
    const float w = static_cast<float>(width) * 0.5f;
    const float h = static_cast<float>(height) * 0.5f;
    list.push({-w, -h, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f});
    list.push({w, -h, 0.0f, 1.0f, 0.0f, 1.0f, 0.0f});
    list.push({w, h, 0.0f, 1.0f, 1.0f, 1.0f, 0.0f});
    list.push({-w, h, 0.0f, 0.0f, 1.0f, 1.0f, 0.0f});
    return list;
  }

  // A copy of the target as it stands, in a buffer kept while the frame's size and
  // format stay.
  Media::ResourceBuffer& copyOf(Media::RenderBuffer& target) {
    if (!frameCopy_ || frameCopy_->width() != target.width() || frameCopy_->height() != target.height() ||
        frameCopy_->format() != target.format()) {
      frameCopy_ = std::make_unique<Media::ResourceBuffer>(*device_, target.width(), target.height(), target.format());
    }
    device_->backend().copyTextureRegion(target.texture(), frameCopy_->texture(),
                                         Media::CopyRegion{0, 0, 0, 0, target.width(), target.height()});
    return *frameCopy_;
  }

 private:
  Media::GraphicsDevice* device_ = nullptr;
  std::unique_ptr<Media::ConstantBufferCommon> surfaceConstants_;  // the 160-byte block `Constant`
  std::unique_ptr<Media::ConstantBufferCommon> passConstants_;     // the 16 bytes of passes 10, 24, 25
  std::unique_ptr<Media::SurfaceShaders> ownSurfaces_;
  std::map<std::pair<std::uint32_t, std::uint32_t>, Media::VertexListQuadPosUv> quads_;
  std::unique_ptr<Media::ResourceBuffer> frameCopy_;
};

OutputShaderEffect::OutputShaderEffect(EffectBase& owner) : owner_(owner) {}

OutputShaderEffect::~OutputShaderEffect() = default;

void OutputShaderEffect::createOutputResource() { common_ = std::make_shared<CommonResource>(); }

void OutputShaderEffect::shareOutputResource(const EffectBase& prototype) {
  if (const auto* drawing = dynamic_cast<const OutputShaderEffect*>(&prototype)) common_ = drawing->common_;
}

Render::ObjectView OutputShaderEffect::objectView(Render::ObjectContext& context) const {
  Render::ObjectView view;
  owner_.getOutputView(context, view);
  return view;
}

OutputShaderEffect::CommonResource& OutputShaderEffect::resource(Media::GraphicsDevice& device) {
  // An instance made outside the registry has no prototype to share with.
  if (!common_) common_ = std::make_shared<CommonResource>();
  common_->bind(device);
  return *common_;
}

void OutputShaderEffect::outputImage(Render::ObjectContext& context, Media::RenderBuffer& target,
                                     Media::ResourceBuffer& image) {
  drawImage(context, objectView(context), target, image);
}

void OutputShaderEffect::outputDirect(Render::ObjectContext& context, Media::RenderBuffer& target,
                                      Media::ResourceBuffer& image) {
  drawDirect(context, objectView(context), target, image);
}

void OutputShaderEffect::drawImage(const Render::ObjectContext& context, const Render::ObjectView& view,
                                   Media::RenderBuffer& target, Media::ResourceBuffer& image) {
  if (!(view.alpha > 0.0f) || image.empty()) return;
  CommonResource& shared = resource(context.worker->device());

  // With a camera in force the object draws as without one for now; facing the camera
  // (billboard 3), the lit pairs and the depth buffers come with the camera's drawing.
  Render::Matrix4 world = Render::localMatrix(view);
  if (const auto* groupWorld = storedWorld(context.group)) world = Render::multiply(world, *groupWorld);
  const auto* cameraProjection = storedViewProjection(context.camera);
  const auto* groupProjection = storedViewProjection(context.group);
  const Render::Matrix4 viewProjection =
      cameraProjection  ? *cameraProjection
      : groupProjection ? *groupProjection
                        : Render::defaultProjection(static_cast<float>(target.width()),
                                                    static_cast<float>(target.height()), view.x, view.y);

  Media::SurfaceConstants constants{};
  const Render::Matrix4 projection = transposed(Render::multiply(world, viewProjection));
  std::copy(projection.begin(), projection.end(), constants.projection);
  constants.alpha = view.alpha;
  // The replacing modes need an unblended draw, which the quad cannot have: it draws
  // them as 通常.
  constants.blend = view.blend >= kFirstReplacingMode ? 0 : std::clamp(view.blend, 0, kLastBlendMode);
  constants.shine = view.shine;
  shared.surfaceConstants().update(&constants);

  Media::SurfaceDrawOptions options;
  // A mesh is read with clamped edges, a plain quad with the device's default.
  options.samplerState = view.sampler.value_or(context.geometry ? 1 : 0);
  options.rasterizerState = view.hideBackFaces ? 1 : 0;
  if (constants.blend != 0) options.frameCopy = &shared.copyOf(target);
  // A geometry of the context (a swarm of particles) takes the place of the image's quad.
  const Media::VertexListQuadPosUv& quads =
      context.geometry ? context.geometry->quads : shared.quad(image.width(), image.height());
  shared.surfaces().drawTextured(target, quads, image, shared.surfaceConstants(), options);
}

void OutputShaderEffect::drawDirect(const Render::ObjectContext& context, const Render::ObjectView& view,
                                    Media::RenderBuffer& target, Media::ResourceBuffer& image) {
  if (!(view.alpha > 0.0f) || image.empty()) return;
  Media::FramePasses* passes = context.worker->framePasses();
  if (!passes) throw System::NoteException("Effect::OutputShaderEffect::outputDirect", "frame passes not created.");
  CommonResource& shared = resource(context.worker->device());

  // The image is centred on the frame like a quad at the origin, then moved by whole
  // pixels; the passes read the source at the target pixel plus the offset.
  const std::int32_t left =
      floorHalf(static_cast<std::int32_t>(target.width()) - static_cast<std::int32_t>(image.width())) +
      static_cast<std::int32_t>(std::trunc(view.x));
  const std::int32_t top =
      floorHalf(static_cast<std::int32_t>(target.height()) - static_cast<std::int32_t>(image.height())) +
      static_cast<std::int32_t>(std::trunc(view.y));
  std::int32_t blend = std::clamp(view.blend, 0, kLastBlendMode);
  if (blend > 12 && blend < kFirstReplacingMode) blend = 0;
  const Media::OutputConstants constants{blend, view.alpha, {-left, -top}};
  shared.passConstants().update(&constants);

  Media::PassOptions options;
  options.constants = &shared.passConstants();
  if (blend == 0) {
    options.blendState = Media::kBlendStateSourceOver;
    passes->run(Media::FramePass::CopyOffsetAlpha, target, {&image}, options);
    return;
  }
  // Modes 0 to 12 give a colour to lay over the frame; 20 and up the pixel that takes
  // the frame's place, which blending would mix with the frame a second time.
  options.blendState = blend >= kFirstReplacingMode ? Media::kBlendStateNone : Media::kBlendStateSourceOver;
  Media::ResourceBuffer& frame = shared.copyOf(target);
  passes->run(Media::FramePass::BlendModeOffset, target, {&image, &frame}, options);
}

}  // namespace Effect
