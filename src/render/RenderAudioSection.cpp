#include "render/RenderAudioSection.h"

#include <algorithm>

#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/output/GroupAudioControl.h"
#include "effect/output/TimeControl.h"
#include "media/audio/AudioBuffer.h"
#include "render/RenderAudioWorker.h"

namespace Render {

namespace {


bool isAudio(Effect::EffectMedia media) {
  return media == Effect::EffectMedia::Audio || media == Effect::EffectMedia::Both;
}

bool is(const Effect::EffectBase& effect, const Effect::EffectInfo& info) { return &effect.info() == &info; }

Effect::GroupAudioControl& groupOf(const Edit::Object& object) {
  return static_cast<Effect::GroupAudioControl&>(*object.effects.front());
}

}  // namespace

void enterAudioObject(ObjectContext& context, const std::shared_ptr<Edit::Object>& object) {
  context.object = object;
  context.time = Effect::TimeInfo::ofSections(*object, context.frame, context.exactFrame);
  context.objectSample = context.scene ? context.frameSample - frameStartSample(*context.scene, object->start) : 0;
}

RenderAudioSection::RenderAudioSection(RenderAudioWorker& worker, const Edit::Scene& scene, std::int32_t frame,
                                       Media::AudioBuffer& target)
    : worker_(worker), scene_(scene) {
  context_.scene = &scene;
  context_.frame = frame;
  context_.exactFrame = frame;
  context_.audioTarget = &target;
  context_.sampleRate = static_cast<std::uint32_t>(scene.audioRate);
  context_.frameSample = frameStartSample(scene, frame);
  context_.sampleCount = frameSpan(scene, frame);
  for (std::int32_t layer = 0; layer <= scene_.lastUsedLayer(); ++layer) visitLayer(layer);
}

bool RenderAudioSection::isAudible(const Edit::Object& object) {
  return RenderWorkerBase::hasActiveEffects(object) && isAudio(object.effects.front()->media());
}

bool RenderAudioSection::layerHidden(std::int32_t layer) const { return scene_.getLayer(layer).info->hide; }

void RenderAudioSection::restoreTime() {
  context_.frame = time_.frame;
  context_.exactFrame = time_.exactFrame;
  context_.frameSample = time_.frameSample;
}

void RenderAudioSection::visitLayer(std::int32_t layer) {
  if (layerHidden(layer)) return;
  const std::shared_ptr<Edit::Object>& object = scene_.objectAt(layer, context_.frame);
  if (!object || !isAudible(*object)) return;
  context_.layer = layer;

  if (time_.active && time_.endLayer < layer) {
    restoreTime();
    time_.active = false;
  }
  while (!groups_.empty() && groups_.back().lastLayer < layer) groups_.pop_back();
  context_.group = groups_.empty() ? nullptr : groups_.back().object;

  Effect::EffectBase& first = *object->effects.front();
  if (is(first, Effect::GroupAudioControl::kInfo)) {
    groupOf(*object).parentLayer = groups_.empty() ? -1 : groups_.back().object->layer;
    controlPath(object);
    context_.group = object;
    groups_.push_back(GroupRecord{object, RenderWorkerBase::controlRangeEnd(*object)});
  } else if (is(first, Effect::TimeControl::kInfo)) {
    if (time_.active) restoreTime();
    time_.frame = context_.frame;
    time_.exactFrame = context_.exactFrame;
    time_.frameSample = context_.frameSample;
    enterAudioObject(context_, object);
    // The effect writes the moment the following layers sound at into the context.
    first.prepareAudio(context_);
    time_.active = true;
    time_.endLayer = object->control ? RenderWorkerBase::controlRangeEnd(*object) : object->layer;
  } else if (first.type() == Effect::EffectType::Control) {
    controlPath(object);
  } else if (first.type() == Effect::EffectType::Input && object->effects.size() > 1 &&
             isAudio(object->effects[1]->media())) {
    // An input of picture and sound whose output only draws is silent.
    objectPath(object);
  }
}

void RenderAudioSection::controlPath(const std::shared_ptr<Edit::Object>& object) {
  enterAudioObject(context_, object);
  object->effects.front()->prepareAudio(context_);
  worker_.postObjectTask([task = context_]() mutable { task.object->effects.front()->controlAudio(task); });
}

std::shared_ptr<ObjectChain> RenderAudioSection::buildChain(const std::shared_ptr<Edit::Object>& object) const {
  auto chain = std::make_shared<ObjectChain>();
  chain->push_back(object);
  for (std::int32_t layer = object->layer + 1; layer <= scene_.lastUsedLayer(); ++layer) {
    if (layerHidden(layer)) continue;
    const std::shared_ptr<Edit::Object>& next = scene_.objectAt(layer, context_.frame);
    if (!next || !isAudible(*next)) continue;
    if (next->effects.front()->type() != Effect::EffectType::Filter) break;
    chain->push_back(next);
  }
  if (!context_.group) return chain;
  if (context_.group->effects.size() > 1) chain->push_back(context_.group);
  // The sound groups the group in force stands in, outward, as long as each is an
  // audible sound group on a layer before the one it encloses.
  std::int32_t inner = context_.group->layer;
  std::int32_t parent = groupOf(*context_.group).parentLayer;
  while (parent != -1 && parent < inner) {
    const std::shared_ptr<Edit::Object>& outer = scene_.objectAt(parent, context_.frame);
    if (layerHidden(parent) || !outer || !isAudible(*outer) ||
        !is(*outer->effects.front(), Effect::GroupAudioControl::kInfo)) {
      break;
    }
    if (outer->effects.size() > 1) chain->push_back(outer);
    inner = parent;
    parent = groupOf(*outer).parentLayer;
  }
  return chain;
}

void RenderAudioSection::objectPath(const std::shared_ptr<Edit::Object>& object) {
  std::shared_ptr<ObjectChain> chain = buildChain(object);
  // Sources are asked ahead here, while the object thread mixes the objects before.
  for (const std::shared_ptr<Edit::Object>& member : *chain) {
    enterAudioObject(context_, member);
    for (const std::shared_ptr<Effect::EffectBase>& effect : member->effects) {
      const bool sounding = effect->type() == Effect::EffectType::Input || effect->type() == Effect::EffectType::Filter;
      if (sounding && !effect->disable) effect->prepareAudio(context_);
    }
  }
  enterAudioObject(context_, object);
  context_.chain = std::move(chain);
  worker_.postObjectTask([task = context_, &worker = worker_]() mutable { soundObject(worker, task); });
  context_.chain = nullptr;
}

void RenderAudioSection::soundObject(RenderAudioWorker& worker, ObjectContext& context) {
  const std::shared_ptr<Edit::Object> object = context.object;
  try {
    std::shared_ptr<Media::AudioBuffer> block = object->effects.front()->inputAudio(context);
    for (const std::shared_ptr<Edit::Object>& member : *context.chain) {
      if (!block || block->empty()) break;
      enterAudioObject(context, member);
      for (const std::shared_ptr<Effect::EffectBase>& effect : member->effects) {
        if (effect->type() != Effect::EffectType::Filter || !isAudio(effect->media()) || effect->disable) continue;
        block = effect->filterAudio(context, std::move(block));
        if (!block || block->empty()) break;
      }
    }
    if (!block || block->empty()) return;
    enterAudioObject(context, object);
    object->effects[1]->outputAudio(context, std::move(block));
  } catch (const Effect::NotImplemented& missing) {
    worker.reportLeftOut(*object, missing);
  }
}

}  // namespace Render
