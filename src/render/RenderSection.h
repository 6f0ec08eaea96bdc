// The walk over the layers of one scene at one frame, which turns the timeline into a
// stream of drawing tasks. Layers are visited from 0 upward, so a higher layer lies on
// top; a control object acts on the layers after it. Each drawn object gets a chain: the
// object itself, the filter objects directly after it, and the groups in force. Objects
// under a camera wait for the camera's end and are then drawn far to near; clipping
// objects draw into a mask that cuts what comes after them. Constructing it does the
// walk, on the render thread; what it decides runs in posting order on the GPU thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "render/ObjectContext.h"

namespace Edit {
class Object;
}
namespace Effect {
class EffectBase;
}
namespace Media {
class ResourceBuffer;
}

namespace Render {

class RenderVideoWorker;
struct SectionArguments;

class RenderSection {
 public:
  RenderSection(RenderVideoWorker& worker, const SectionArguments& arguments);
  RenderSection(const RenderSection&) = delete;
  RenderSection& operator=(const RenderSection&) = delete;

  // Runs the filters of the context's chain on `image`, each chain object's enabled
  // video filters in order, with the context's object and time switched to that object
  // and returned to the first at the end. With `after` given, every effect up to and
  // including it is skipped first. Empty as soon as a filter gives nothing. GPU thread.
  static std::unique_ptr<Media::ResourceBuffer> applyFilterChain(ObjectContext& context,
                                                                 std::unique_ptr<Media::ResourceBuffer> image,
                                                                 const Effect::EffectBase* after = nullptr);
  // The same without guides, for a filter or input that draws pieces one by one: a
  // filter that marks its guides drawn marks `source`.
  static std::unique_ptr<Media::ResourceBuffer> applyFilterChainQuiet(ObjectContext& context,
                                                                      std::unique_ptr<Media::ResourceBuffer> image,
                                                                      const Effect::EffectBase* after,
                                                                      ObjectContext& source);

 private:
  struct GroupRecord {
    std::shared_ptr<Edit::Object> object;
    std::int32_t lastLayer;
  };
  struct PendingRecord {
    ObjectContext context;
    std::shared_ptr<Edit::Object> object;
    double depth;
  };
  // The frame as it stood before the first clipping object, and the mask they draw.
  struct ClipBuffers;
  struct TimeState {
    bool active = false;
    std::int32_t endLayer = 0;
    std::int32_t frame = 0;
    double exactFrame = 0.0;
  };

  void visitLayer(std::int32_t layer);
  void visitControl(const std::shared_ptr<Edit::Object>& object);
  void visitInput(const std::shared_ptr<Edit::Object>& object);
  // Objects that may be drawn at all: enabled, and of video.
  static bool isShown(const Edit::Object& object);
  bool layerHidden(std::int32_t layer) const;

  void objectJob(ObjectContext& context, const std::shared_ptr<Edit::Object>& object);
  void controlJob(ObjectContext& context, const std::shared_ptr<Edit::Object>& object);
  std::shared_ptr<ObjectChain> buildChain(const ObjectContext& context, const std::shared_ptr<Edit::Object>& object) const;
  static void drawObject(ObjectContext& context);

  void setClipEnd(const Edit::Object& object);
  void clipPath(const std::shared_ptr<Edit::Object>& object);
  void flushClip();
  void flushCamera();
  double cameraDepth(PendingRecord& record) const;

  RenderVideoWorker& worker_;
  const Edit::Scene& scene_;
  ObjectContext context_;
  std::vector<GroupRecord> groups_;
  std::vector<PendingRecord> pending_;
  std::shared_ptr<ClipBuffers> clip_;
  std::int32_t clipEnd_ = 0;
  TimeState time_;
};

}  // namespace Render
