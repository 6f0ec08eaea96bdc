// What a numeric item needs from the render of an object to give its value at a frame:
// the object, the frame and the inputs of the random movement. The render context of
// the frame assembly fills one per object; editing code fills one for the cursor.
#pragma once

#include <cstdint>

namespace Edit {
class Object;
}

namespace Effect {

struct ItemContext {
  const Edit::Object* object = nullptr;
  std::int32_t frame = 0;
  double exactFrame = 0.0;  // equals `frame` except during sub-frame evaluation
  // The index of the sub-object when an object is drawn several times.
  std::int32_t subIndex = 0;
  // The random seed of the render. Every ordinary render uses 0, so that a saved project
  // animates the same way each time it is opened.
  std::int32_t seed = 0;

  static ItemContext at(const Edit::Object& object, std::int32_t frame) {
    ItemContext context;
    context.object = &object;
    context.frame = frame;
    context.exactFrame = frame;
    return context;
  }
};

}  // namespace Effect
