#include "edit/SelectionExtent.h"

#include <algorithm>

#include "edit/Object.h"

namespace Edit {

SelectionExtent SelectionExtent::of(const std::vector<std::shared_ptr<Object>>& objects) {
  SelectionExtent extent;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    const Object& object = *objects[i];
    if (i == 0) {
      extent.lowestLayer = extent.highestLayer = object.layer;
      extent.firstFrame = object.start;
      extent.lastFrame = object.end;
    }
    extent.lowestLayer = std::min(extent.lowestLayer, object.layer);
    extent.highestLayer = std::max(extent.highestLayer, object.layer);
    extent.firstFrame = std::min(extent.firstFrame, object.start);
    extent.lastFrame = std::max(extent.lastFrame, object.end);
    const auto row = std::find_if(extent.rows.begin(), extent.rows.end(),
                                  [&](const Row& known) { return known.layer == object.layer; });
    if (row == extent.rows.end()) {
      extent.rows.push_back({object.layer, object.start, object.end});
    } else {
      row->first = std::min(row->first, object.start);
      row->last = std::max(row->last, object.end);
    }
  }
  return extent;
}

}  // namespace Edit
