// What every video method of an effect is handed: where the walk stands (scene, layer,
// frame), the object and its chain of filters, the view record the output effects fill,
// the target, and the camera and group in force. One lives on the walker's stack; each
// drawing task holds a copy, whose shared pointers keep objects and chains alive however
// late the task runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "effect/movement/ItemContext.h"
#include "effect/movement/TimeInfo.h"

namespace Anchor {
struct AnchorItem;
}
namespace Edit {
class Object;
class Scene;
}  // namespace Edit
namespace Media {
class AudioBuffer;
class RenderBuffer;
}  // namespace Media

namespace Render {

class PreInputBuffer;
class RenderVideoWorker;
class ResourceCache;
// A mesh that replaces an object's default quad; made by the model input.
struct ObjectGeometry;

using ObjectChain = std::vector<std::shared_ptr<Edit::Object>>;

// Where and how an object lands on the frame. Starts neutral; each output effect of the
// chain adds its part.
struct ObjectView {
  float x = 0.0f, y = 0.0f, z = 0.0f;
  float rotationX = 0.0f, rotationY = 0.0f, rotationZ = 0.0f;  // degrees
  float zoomX = 1.0f, zoomY = 1.0f, zoomZ = 1.0f;
  float centreX = 0.0f, centreY = 0.0f, centreZ = 0.0f;
  float alpha = 1.0f;
  float shine = 0.7f;
  std::int32_t blend = 0;
  // A sampler state of the device's table; none is the default.
  std::optional<std::size_t> sampler;
  bool hideBackFaces = false;
  std::uint32_t billboard = 0;  // 0 or 3
  Media::RenderBuffer* target = nullptr;
  std::shared_ptr<Edit::Object> camera;
  std::shared_ptr<Edit::Object> group;
};

struct ObjectContext {
  const Edit::Scene* scene = nullptr;
  RenderVideoWorker* worker = nullptr;
  std::int32_t layer = 0;
  std::int32_t frame = 0;
  double exactFrame = 0.0;        // differs from frame under time control
  std::uint32_t frameOffset = 0;  // a sub-render's moment behind its caller's frame
  std::int32_t divideIndex = 0;
  std::int32_t divideCount = 1;
  std::int32_t appearDelay = 0;   // frames after the start at which a character appears
  std::shared_ptr<Edit::Object> object;
  Effect::TimeInfo time;
  std::shared_ptr<const ObjectChain> chain;
  ObjectView view;
  Media::RenderBuffer* target = nullptr;
  std::shared_ptr<Edit::Object> camera;
  std::shared_ptr<Edit::Object> group;
  std::shared_ptr<ObjectGeometry> geometry;
  std::vector<Anchor::AnchorItem>* guides = nullptr;  // the preview's frames only
  ResourceCache* cache = nullptr;
  std::shared_ptr<PreInputBuffer> preInput;
  bool direct = false;        // the image already stands in frame position
  bool guideDrawn = false;
  bool piecesPlaced = false;  // a filter or input placed the pieces itself
  bool firstCamera = true;
  bool firstClipObject = true;
  bool extendedColour = false;

  // Sound: one frame's span of samples. `objectSample` counts from the object's first
  // frame at `sampleRate`, and is where a source is read; `frameSample` is the span's
  // first sample in the scene, moved by time control.
  Media::AudioBuffer* audioTarget = nullptr;  // the mix of the frame
  float gainLeft = 1.0f;
  float gainRight = 1.0f;
  std::int64_t objectSample = 0;
  std::uint32_t sampleRate = 0;
  std::int64_t frameSample = 0;
  std::uint32_t sampleCount = 0;
};

// Where the items of the context's object are read: its moment, exact frame included,
// and the piece of a divided object in work.
inline Effect::ItemContext itemsAt(const ObjectContext& context) {
  Effect::ItemContext items;
  if (context.object) items = Effect::ItemContext::at(*context.object, context.frame);
  items.exactFrame = context.exactFrame;
  items.subIndex = context.divideIndex;
  return items;
}

}  // namespace Render
