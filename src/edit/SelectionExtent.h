// A list of objects reduced to one span per row, for the tests of a drag and of
// pasting: a gap between two objects of the list on one row counts as occupied.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace Edit {

class Object;

struct SelectionExtent {
  struct Row {
    std::int32_t layer = 0;
    std::int32_t first = 0;  // lowest start on the row
    std::int32_t last = 0;   // highest end on the row
  };

  std::int32_t lowestLayer = 0;
  std::int32_t highestLayer = 0;
  std::int32_t firstFrame = 0;
  std::int32_t lastFrame = 0;
  // One entry per row that the list touches, in the order the rows were first met.
  std::vector<Row> rows;

  // An empty list gives all zeros and no rows.
  static SelectionExtent of(const std::vector<std::shared_ptr<Object>>& objects);
};

}  // namespace Edit
