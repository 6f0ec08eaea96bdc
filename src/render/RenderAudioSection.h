// The walk over the layers of one scene at one frame for sound. Layers are visited from
// 0 upward; a control object acts on the layers after it. Each object that sounds gets
// a chain: itself, the filter objects directly after it, and the sound groups in force
// that carry filters. Constructing it does the walk, on the calling thread with the scene
// held; the prepares run here, the reads, filters and mixes on the object thread.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "render/ObjectContext.h"

namespace Edit {
class Object;
class Scene;
}  // namespace Edit

namespace Render {

class RenderAudioWorker;

class RenderAudioSection {
 public:
  RenderAudioSection(RenderAudioWorker& worker, const Edit::Scene& scene, std::int32_t frame,
                     Media::AudioBuffer& target);
  RenderAudioSection(const RenderAudioSection&) = delete;
  RenderAudioSection& operator=(const RenderAudioSection&) = delete;

  // Objects that may sound at all: enabled, and of sound. A filter object counts while
  // any of its effects is on.
  static bool isAudible(const Edit::Object& object);

 private:
  struct GroupRecord {
    std::shared_ptr<Edit::Object> object;
    std::int32_t lastLayer;
  };
  // The frame of the scene from before a time control, which comes back past its range.
  struct TimeState {
    bool active = false;
    std::int32_t endLayer = 0;
    std::int32_t frame = 0;
    double exactFrame = 0.0;
    std::int64_t frameSample = 0;
  };

  void visitLayer(std::int32_t layer);
  void controlPath(const std::shared_ptr<Edit::Object>& object);
  void objectPath(const std::shared_ptr<Edit::Object>& object);
  void restoreTime();
  std::shared_ptr<ObjectChain> buildChain(const std::shared_ptr<Edit::Object>& object) const;
  bool layerHidden(std::int32_t layer) const;
  // Reads, filters and mixes one object; the object thread.
  static void soundObject(RenderAudioWorker& worker, ObjectContext& context);

  RenderAudioWorker& worker_;
  const Edit::Scene& scene_;
  ObjectContext context_;
  std::vector<GroupRecord> groups_;
  TimeState time_;
};

// Makes `object` the context's object: its sections at the context's frame and its own
// sample position, counted from its first frame on the scene's grid.
void enterAudioObject(ObjectContext& context, const std::shared_ptr<Edit::Object>& object);

}  // namespace Render
