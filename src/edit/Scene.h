// One timeline of the project: its rows (the LayerObjectManager part) and its
// settings, view and selection. Owned by the project through shared_ptr, which edit
// sections and scene readers share. Written on the main thread inside an edit section;
// render workers read it under a scene reader; the main thread may read it at any time.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "edit/LayerObjectManager.h"
#include "edit/SceneDefaults.h"

namespace Edit {

class Object;

class Scene : public LayerObjectManager {
 public:
  // The timeline scales the user can step through; any other zoom is replaced.
  static constexpr std::array<std::int32_t, 27> kDisplayZooms{
      20,   30,   40,   50,   75,   100,   150,   200,   300,   400,   500,   750,   1000,  1500,
      2000, 3000, 4000, 5000, 7500, 10000, 15000, 20000, 30000, 40000, 50000, 75000, 100000};
  static constexpr std::int32_t kDefaultDisplayZoom = 10000;

  Scene(std::int32_t sceneId, std::int32_t order, const SceneDefaults& defaults);

  // Pixels per frame times 10,000; the setter takes only a value of kDisplayZooms.
  std::int32_t displayZoom() const noexcept { return displayZoom_; }
  void setDisplayZoom(std::int32_t zoom) noexcept;
  // The frame under pixel column `x` of the timeline.
  std::int32_t frameAtColumn(std::int32_t x) const noexcept;

  std::wstring name;
  std::int32_t id;
  std::int32_t videoRate;   // frame rate numerator
  std::int32_t videoScale;  // frame rate denominator
  std::int32_t width;
  std::int32_t height;
  std::int32_t audioRate;  // samples per second
  std::int32_t cursorFrame = 0;
  bool playing = false;  // set while the player runs this scene
  std::shared_ptr<Object> focusObject;
  // A frame range selected in the timeline; a negative start or end means none.
  std::int32_t selectionRangeStart = -1;
  std::int32_t selectionRangeEnd = -1;
  std::int32_t selectionAnchor = 0;  // where a range selection with Shift began
  float tempoBeatPerMinute;
  std::int32_t tempoBeat;  // beats to a bar
  float tempoOffset;       // seconds
  std::vector<std::int32_t> gridX;
  std::vector<std::int32_t> gridY;
  std::int32_t gridWidth;
  std::int32_t gridHeight;
  float gridStep;
  float gridRange;
  // Free view of the preview: position x, y, z and three further values.
  std::array<float, 6> camera{0.0f, 0.0f, -1024.0f, 0.0f, 0.0f, 0.0f};
  std::int32_t displayFrame = 0;   // first frame at the left of the timeline
  std::int32_t visibleFrames = 0;  // written by the timeline view, read by the drag
  std::int32_t displayLayer = 0;   // first row at the top of the timeline
  // Each one also has its `selected` flag set.
  std::vector<std::shared_ptr<Object>> selectedObjects;
  bool selectionHasControl = false;
  std::int32_t lowestSelectedLayer = 0;  // the highest row index among the selection

  // Place in the scene list. Set through Project::setDisplayOrder, which keeps the
  // order that the next new scene takes.
  std::int32_t displayOrder() const noexcept { return displayOrder_; }

 private:
  friend class Project;

  std::int32_t displayZoom_ = kDefaultDisplayZoom;
  std::int32_t displayOrder_;
};

}  // namespace Edit
