// A buffer rendered ahead of the object that reads it (a scene change keeps the frame
// of the layers below it this way): holding it through this base keeps it alive while
// others read it, whatever it holds.
#pragma once

namespace Render {

class PreInputBuffer {
 public:
  virtual ~PreInputBuffer() = default;

 protected:
  PreInputBuffer() = default;
};

}  // namespace Render
