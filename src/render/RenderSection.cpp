#include "render/RenderSection.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/filter/ExpandedColorFilter.h"
#include "effect/input/BeforeObjectLoad.h"
#include "effect/output/CameraControl.h"
#include "effect/output/GroupControl.h"
#include "effect/output/SimpleOutput.h"
#include "effect/output/TimeControl.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/pass/FramePassConstants.h"
#include "media/pass/FramePasses.h"
#include "render/RenderVideoWorker.h"
#include "render/ViewMatrix.h"

namespace Render {

namespace {

// Objects that are not opaque with plain blending sort after every opaque one.
constexpr double kTransparentDepthShift = 10000.0;
constexpr double kUnsortedDepth = 1e9;
// Blend state 5: the first colour weighted by one minus the second's alpha, the target by it.
constexpr std::size_t kClipBlendState = 5;
constexpr std::size_t kSourceOverBlendState = 0;
constexpr std::uint32_t kMaxSavedSide = 16384;

bool isVideo(Effect::EffectMedia media) {
  return media == Effect::EffectMedia::Video || media == Effect::EffectMedia::Both;
}

bool is(const Effect::EffectBase& effect, const Effect::EffectInfo& info) { return &effect.info() == &info; }

Effect::TimeInfo timeAt(const Edit::Object& object, const ObjectContext& context) {
  return Effect::TimeInfo::ofSections(object, context.frame, context.exactFrame);
}

}  // namespace

struct RenderSection::ClipBuffers {
  std::unique_ptr<Media::ResourceBuffer> saved;
  std::unique_ptr<Media::RenderBuffer> mask;
};

RenderSection::RenderSection(RenderVideoWorker& worker, const SectionArguments& arguments)
    : worker_(worker), scene_(arguments.scene) {
  context_.scene = &arguments.scene;
  context_.worker = &worker;
  context_.frame = arguments.frame;
  context_.exactFrame = arguments.frame;
  context_.frameOffset = arguments.frameOffset;
  context_.target = &arguments.target;
  context_.guides = arguments.guides;
  context_.cache = &arguments.cache;

  const std::int32_t last = std::min(scene_.lastUsedLayer(), arguments.lastLayer);
  for (std::int32_t layer = 0; layer <= last; ++layer) visitLayer(layer);
  flushCamera();
  flushClip();
}

bool RenderSection::isShown(const Edit::Object& object) {
  return RenderWorkerBase::hasActiveEffects(object) && isVideo(object.effects.front()->media());
}

bool RenderSection::layerHidden(std::int32_t layer) const { return scene_.getLayer(layer).info->hide; }

void RenderSection::visitLayer(std::int32_t layer) {
  if (layerHidden(layer)) return;
  const std::shared_ptr<Edit::Object>& object = scene_.objectAt(layer, context_.frame);
  if (!object || !isShown(*object)) return;
  context_.layer = layer;

  if (time_.active && time_.endLayer != 0 && time_.endLayer < layer) {
    context_.frame = time_.frame;
    context_.exactFrame = time_.exactFrame;
    time_.active = false;
  }
  bool popped = false;
  while (!groups_.empty() && groups_.back().lastLayer < layer) {
    groups_.pop_back();
    popped = true;
  }
  if (popped) context_.group = groups_.empty() ? nullptr : groups_.back().object;
  if (context_.camera && RenderWorkerBase::controlRangeEnd(*context_.camera) < layer) flushCamera();
  if (clipEnd_ != 0 && clipEnd_ < layer) flushClip();

  const Effect::EffectBase& first = *object->effects.front();
  if (first.type() == Effect::EffectType::Control) {
    visitControl(object);
  } else if (first.type() == Effect::EffectType::Input && object->effects.size() > 1 &&
             isVideo(object->effects[1]->media())) {
    visitInput(object);
  }
  // Anything else, such as an object of filters, works only through the chain of the
  // object before it.
}

void RenderSection::visitControl(const std::shared_ptr<Edit::Object>& object) {
  Effect::EffectBase& first = *object->effects.front();
  if (clip_ && clipEnd_ == 0) setClipEnd(*object);
  if (is(first, Effect::GroupControl::kInfo)) {
    static_cast<Effect::GroupControl&>(first).parentLayer = groups_.empty() ? -1 : groups_.back().object->layer;
    controlJob(context_, object);
    context_.group = object;
    groups_.push_back(GroupRecord{object, RenderWorkerBase::controlRangeEnd(*object)});
  } else if (is(first, Effect::CameraControl::kInfo)) {
    flushCamera();
    controlJob(context_, object);
    context_.camera = object;
  } else if (is(first, Effect::TimeControl::kInfo)) {
    if (time_.active) {
      context_.frame = time_.frame;
      context_.exactFrame = time_.exactFrame;
    }
    time_.frame = context_.frame;
    time_.exactFrame = context_.exactFrame;
    context_.object = object;
    context_.time = timeAt(*object, context_);
    // The effect writes the frame that the following layers show into the context.
    first.prepareVideo(context_);
    time_.active = true;
    time_.endLayer = object->control ? RenderWorkerBase::controlRangeEnd(*object) : object->layer;
  } else {
    controlJob(context_, object);
  }
}

void RenderSection::visitInput(const std::shared_ptr<Edit::Object>& object) {
  if (object->clipping) {
    clipPath(object);
    return;
  }
  if (clip_ && clipEnd_ == 0) setClipEnd(*object);
  if (context_.camera) {
    pending_.push_back(PendingRecord{context_, object, kUnsortedDepth});
  } else {
    objectJob(context_, object);
  }
}

std::shared_ptr<ObjectChain> RenderSection::buildChain(const ObjectContext& context,
                                                      const std::shared_ptr<Edit::Object>& object) const {
  auto chain = std::make_shared<ObjectChain>();
  chain->push_back(object);
  // The filter objects that follow, across empty, hidden and disabled rows, up to the
  // first visible object that is not one.
  for (std::int32_t layer = object->layer + 1; layer <= scene_.lastUsedLayer(); ++layer) {
    if (layerHidden(layer)) continue;
    const std::shared_ptr<Edit::Object>& next = scene_.objectAt(layer, context.frame);
    if (!next || !isShown(*next)) continue;
    if (next->effects.front()->type() != Effect::EffectType::Filter) break;
    chain->push_back(next);
  }
  if (!context.group) return chain;
  if (context.group->effects.size() > 1) chain->push_back(context.group);
  // The groups the group in force stands in, outward, as long as each is a visible
  // group control on a layer before the one it encloses.
  std::int32_t inner = context.group->layer;
  std::int32_t parent = static_cast<const Effect::GroupControl&>(*context.group->effects.front()).parentLayer;
  while (parent != -1 && parent < inner) {
    const std::shared_ptr<Edit::Object>& outer = scene_.objectAt(parent, context.frame);
    if (layerHidden(parent) || !outer || !isShown(*outer) || !is(*outer->effects.front(), Effect::GroupControl::kInfo)) {
      break;
    }
    if (outer->effects.size() > 1) chain->push_back(outer);
    inner = parent;
    parent = static_cast<const Effect::GroupControl&>(*outer->effects.front()).parentLayer;
  }
  return chain;
}

void RenderSection::objectJob(ObjectContext& context, const std::shared_ptr<Edit::Object>& object) {
  std::shared_ptr<ObjectChain> chain = buildChain(context, object);
  // Files are opened and asked ahead here, while the GPU thread draws the objects before.
  for (const std::shared_ptr<Edit::Object>& member : *chain) {
    context.object = member;
    context.time = timeAt(*member, context);
    for (const std::shared_ptr<Effect::EffectBase>& effect : member->effects) {
      const bool drawing = effect->type() == Effect::EffectType::Input || effect->type() == Effect::EffectType::Filter;
      if (drawing && !effect->disable) effect->prepareVideo(context);
    }
  }
  context.object = object;
  context.time = timeAt(*object, context);
  context.chain = std::move(chain);
  worker_.postObjectTask([task = context]() mutable { drawObject(task); });
  context.chain = nullptr;
}

void RenderSection::drawObject(ObjectContext& context) {
  RenderVideoWorker& worker = *context.worker;
  const Edit::Object& object = *context.object;
  try {
    if (object.clipping) context.camera = nullptr;
    context.extendedColour = std::any_of(context.chain->begin(), context.chain->end(), [](const auto& member) {
      return std::any_of(member->effects.begin(), member->effects.end(), [](const auto& effect) {
        return !effect->disable && is(*effect, Effect::ExpandedColorFilter::kInfo);
      });
    });
    std::unique_ptr<Media::ResourceBuffer> image = object.effects.front()->inputVideo(context);
    if (!image) return;
    worker.lastImage().reset();
    image = applyFilterChain(context, std::move(image));
    if (!image) return;
    Effect::EffectBase& output = *object.effects[1];
    output.outputVideo(context, *context.target, *image);
    if (context.guides) {
      const auto width = static_cast<std::int32_t>(image->width());
      const auto height = static_cast<std::int32_t>(image->height());
      if (!context.direct) {
        for (const std::shared_ptr<Edit::Object>& member : *context.chain) {
          context.object = member;
          context.time = timeAt(*member, context);
          for (const std::shared_ptr<Effect::EffectBase>& effect : member->effects) {
            if (effect->type() == Effect::EffectType::Filter && isVideo(effect->media()) && !effect->disable) {
              effect->drawAnchor(context, width, height);
            }
          }
        }
        context.object = context.chain->front();
        context.time = timeAt(*context.object, context);
      }
      output.drawAnchor(context, width, height);
    }
    // What 直前オブジェクト took is used up: the next one in a row finds nothing.
    if (!is(*object.effects.front(), Effect::BeforeObjectLoad::kInfo)) worker.lastImage() = std::move(image);
  } catch (const Effect::NotImplemented& missing) {
    worker.reportLeftOut(object, missing);
  }
}

void RenderSection::controlJob(ObjectContext& context, const std::shared_ptr<Edit::Object>& object) {
  context.object = object;
  context.time = timeAt(*object, context);
  object->effects.front()->prepareVideo(context);
  worker_.postObjectTask([task = context]() mutable {
    task.worker->lastImage().reset();
    Effect::EffectBase& control = *task.object->effects.front();
    control.controlVideo(task);
    if (task.guides) {
      task.guideDrawn = true;
      control.drawAnchor(task, 0, 0);
    }
  });
}

std::unique_ptr<Media::ResourceBuffer> RenderSection::applyFilterChain(ObjectContext& context,
                                                                       std::unique_ptr<Media::ResourceBuffer> image,
                                                                       const Effect::EffectBase* after) {
  const std::shared_ptr<Edit::Object> first = context.object;
  const Effect::TimeInfo firstTime = context.time;
  bool skipping = after != nullptr;
  for (const std::shared_ptr<Edit::Object>& member : *context.chain) {
    context.object = member;
    context.time = timeAt(*member, context);
    for (const std::shared_ptr<Effect::EffectBase>& effect : member->effects) {
      if (skipping) {
        skipping = effect.get() != after;
        continue;
      }
      if (effect->type() != Effect::EffectType::Filter || !isVideo(effect->media()) || effect->disable) continue;
      image = effect->filterVideo(context, std::move(image));
      if (!image) break;
    }
    if (!image) break;
  }
  context.object = first;
  context.time = firstTime;
  return image;
}

std::unique_ptr<Media::ResourceBuffer> RenderSection::applyFilterChainQuiet(ObjectContext& context,
                                                                            std::unique_ptr<Media::ResourceBuffer> image,
                                                                            const Effect::EffectBase* after,
                                                                            ObjectContext& source) {
  std::vector<Anchor::AnchorItem>* guides = std::exchange(context.guides, nullptr);
  const bool drawn = std::exchange(context.guideDrawn, false);
  image = applyFilterChain(context, std::move(image), after);
  if (context.guideDrawn) source.guideDrawn = true;
  context.guideDrawn = drawn;
  context.guides = guides;
  return image;
}

void RenderSection::setClipEnd(const Edit::Object& object) {
  clipEnd_ = object.control ? RenderWorkerBase::controlRangeEnd(object) : object.layer;
}

void RenderSection::clipPath(const std::shared_ptr<Edit::Object>& object) {
  if (!clip_) {
    Media::RenderBuffer& target = *context_.target;
    clip_ = std::make_shared<ClipBuffers>();
    clip_->mask = std::make_unique<Media::RenderBuffer>(worker_.device(), target.width(), target.height());
    clipEnd_ = 0;
    worker_.postObjectTask([clip = clip_, &target] {
      // The copy keeps the frame's size, within the largest side a texture may have.
      clip->saved = target.toResourceBuffer();
      clip->mask->createTexture2D(target.width(), target.height());
      clip->mask->clear(Media::Color{0.0f, 0.0f, 0.0f, 0.0f});
    });
  }
  ObjectContext copy = context_;
  copy.target = clip_->mask.get();
  objectJob(copy, object);
  context_.firstClipObject = false;
}

void RenderSection::flushClip() {
  if (!clip_) return;
  const bool showMask = context_.guides && worker_.visibleClippingObject();
  worker_.postObjectTask([clip = std::move(clip_), &target = *context_.target, &worker = worker_, showMask] {
    Media::FramePasses* passes = worker.framePasses();
    if (!passes || !clip->saved) return;
    // Outside the mask the frame as it stood before the clipping objects comes back;
    // inside it what was drawn after them stays.
    const std::unique_ptr<Media::ResourceBuffer> mask = clip->mask->toResourceBuffer();
    Media::PassOptions clipBlend;
    clipBlend.blendState = kClipBlendState;
    passes->run(Media::FramePass::CopyTwo, target, {clip->saved.get(), mask.get()}, clipBlend);
    if (!showMask) return;
    const std::array<float, 4>& colour = worker.clippingMaskColour();
    Media::ConstantBufferCommon constants(worker.device());
    constants.create(Media::ColorConstants{{colour[0], colour[1], colour[2], colour[3]}});
    Media::PassOptions overlay;
    overlay.constants = &constants;
    overlay.blendState = kSourceOverBlendState;
    passes->run(Media::FramePass::MaskToColor, target, {mask.get()}, overlay);
  });
  clip_.reset();
  clipEnd_ = 0;
}

double RenderSection::cameraDepth(PendingRecord& record) const {
  ObjectContext& context = record.context;
  context.object = record.object;
  context.time = timeAt(*record.object, context);
  ObjectView view;
  try {
    record.object->effects[1]->getOutputView(context, view);
  } catch (const Effect::NotImplemented&) {
    return 0.0;  // such an object is left out when it is drawn
  }
  const Effect::EffectBase* group = context.group ? context.group->effects.front().get() : nullptr;
  const std::array<float, 16>* groupWorld = group ? group->storedWorld() : nullptr;
  const std::array<float, 16>* groupProjection = group ? group->storedViewProjection() : nullptr;
  const std::array<float, 16>* cameraProjection = context.camera->effects.front()->storedViewProjection();
  Matrix4 world = localMatrix(view);
  if (groupWorld) world = multiply(world, *groupWorld);
  const Matrix4 viewProjection =
      cameraProjection  ? *cameraProjection
      : groupProjection ? *groupProjection
                        : defaultProjection(static_cast<float>(scene_.width), static_cast<float>(scene_.height), view.x, view.y);
  const Vector4 point = transform({0.0f, 0.0f, 0.0f, 1.0f}, multiply(world, viewProjection));
  double depth = point[2];
  if (point[2] > 0.0f) depth /= point[3];
  if (view.alpha < 1.0f || view.blend != 0) depth -= kTransparentDepthShift;
  return depth;
}

void RenderSection::flushCamera() {
  if (!context_.camera) return;
  std::vector<PendingRecord> sorted;
  std::vector<PendingRecord> flat;
  for (PendingRecord& record : pending_) {
    const Edit::Object& object = *record.object;
    const bool sorts = object.camera && !object.clipping && !is(*object.effects[1], Effect::SimpleOutput::kInfo);
    (sorts ? sorted : flat).push_back(std::move(record));
  }
  pending_.clear();
  for (PendingRecord& record : sorted) record.depth = cameraDepth(record);
  std::sort(sorted.begin(), sorted.end(), [](const PendingRecord& a, const PendingRecord& b) { return a.depth > b.depth; });
  for (PendingRecord& record : sorted) objectJob(record.context, record.object);
  // The camera's second call finishes its scene.
  controlJob(context_, context_.camera);
  context_.camera = nullptr;
  context_.firstCamera = false;
  for (PendingRecord& record : flat) {
    record.context.camera = nullptr;
    objectJob(record.context, record.object);
  }
}

}  // namespace Render
