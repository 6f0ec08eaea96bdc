#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "edit/LayerObjectManager.h"
#include "edit/Object.h"
#include "system/Exception.h"

namespace {

using Edit::LayerObjectManager;
using Edit::Object;

// Takes an object off its row the way deleting does: the row lets go at update().
void removeObject(LayerObjectManager& manager, Object& object) {
  Edit::Layer& row = manager.addLayers(object.layer);
  row.needsCompaction = true;
  if (object.control) row.needsControlRebuild = true;
  object.layer = -1;
}

std::vector<std::int32_t> startsOf(const Edit::Layer& layer) {
  std::vector<std::int32_t> starts;
  for (const auto& object : layer.objects) starts.push_back(object->start);
  return starts;
}

TEST(LayerObjectManager, UpdateSortsCompactsAndMeasuresRows) {
  LayerObjectManager manager;
  manager.createEmptyObject(2, 50, 59);
  manager.createEmptyObject(2, 0, 9);
  auto far = manager.createEmptyObject(4, 100, 199);
  manager.createEmptyObject(2, 20, 29);
  manager.update();
  EXPECT_EQ(startsOf(manager.getLayer(2)), (std::vector<std::int32_t>{0, 20, 50}));
  EXPECT_FALSE(manager.getLayer(2).needsSorting);
  EXPECT_EQ(manager.lastUsedLayer(), 4);
  EXPECT_EQ(manager.lastUsedFrame(), 199);

  removeObject(manager, *far);
  EXPECT_EQ(manager.lastUsedLayer(), 4);  // lags behind until update()
  manager.update();
  EXPECT_TRUE(manager.getLayer(4).objects.empty());
  EXPECT_EQ(manager.lastUsedLayer(), 2);
  EXPECT_EQ(manager.lastUsedFrame(), 59);
  EXPECT_EQ(far.use_count(), 1);  // the removed object lives on with its last holder

  for (const auto& object : std::vector(manager.getLayer(2).objects)) removeObject(manager, *object);
  manager.update();
  EXPECT_EQ(manager.lastUsedLayer(), 0);
  EXPECT_EQ(manager.lastUsedFrame(), 0);
}

TEST(LayerObjectManager, ObjectAtFindsHolderAndTreatsRemovedAsAbsent) {
  LayerObjectManager manager;
  auto a = manager.createEmptyObject(1, 0, 9);
  auto c = manager.createEmptyObject(1, 30, 39);
  auto b = manager.createEmptyObject(1, 10, 19);
  manager.update();

  EXPECT_EQ(manager.objectAt(1, 9), a);
  EXPECT_EQ(manager.objectAt(1, 10), b);
  EXPECT_EQ(manager.objectAt(1, 25), nullptr);
  EXPECT_EQ(manager.objectAt(1, 39), c);
  EXPECT_EQ(manager.objectAt(1, 40), nullptr);
  EXPECT_EQ(manager.objectAt(-1, 5), nullptr);
  EXPECT_EQ(manager.objectInRange(1, 20, 29), nullptr);
  EXPECT_EQ(manager.objectInRange(1, 20, 30), c);
  EXPECT_EQ(manager.objectInRange(1, 5, 35), a);

  removeObject(manager, *b);
  ASSERT_EQ(manager.getLayer(1).objects.size(), 3u);  // still listed until update()
  EXPECT_EQ(manager.objectAt(1, 15), nullptr);
  EXPECT_EQ(manager.objectInRange(1, 15, 35), c);
}

TEST(LayerObjectManager, ReadingFarRowLeavesListButPlacingGrowsIt) {
  LayerObjectManager manager;
  const Edit::Layer& far = manager.getLayer(5000);
  EXPECT_TRUE(far.objects.empty());
  EXPECT_EQ(manager.objectAt(5000, 0), nullptr);
  EXPECT_EQ(manager.layerCount(), 1);

  auto placed = manager.createEmptyObject(5000, 0, 0);
  EXPECT_EQ(manager.layerCount(), 5001);
  manager.update();
  EXPECT_EQ(manager.objectAt(5000, 0), placed);
  EXPECT_EQ(manager.lastUsedLayer(), 5000);
  EXPECT_EQ(manager.lastUsedFrame(), 0);

  EXPECT_THROW(manager.addLayers(-1), System::NoteException);
}

// The control records governing `layer` over the frames, as "start-end", with "!" where
// `layer` is the last row that the record reaches.
std::string governing(const LayerObjectManager& manager, std::int32_t layer, std::int32_t first, std::int32_t last) {
  std::string found;
  manager.forEachControl(layer, first, last, [&found](std::int32_t start, std::int32_t end, bool lastRow) {
    found += std::to_string(start) + "-" + std::to_string(end) + (lastRow ? "! " : " ");
  });
  return found;
}

TEST(LayerObjectManager, ControlRangeGovernsRowsBelowFromTheTopRowOn) {
  std::unordered_map<const Object*, std::int32_t> ranges;
  Object::setControlRangeReader([&ranges](const Object& object) { return ranges.at(&object); });
  LayerObjectManager manager;
  const auto control = [&](std::int32_t layer, std::int32_t start, std::int32_t end, std::int32_t range) {
    auto object = manager.createEmptyObject(layer, start, end);
    object->control = true;
    ranges[object.get()] = range;
    return object;
  };
  control(0, 10, 19, 0);
  auto two = control(1, 0, 99, 2);
  manager.createEmptyObject(2, 0, 99);  // not a control object
  manager.update();

  EXPECT_EQ(governing(manager, 0, 0, 100), "");
  EXPECT_EQ(governing(manager, 1, 0, 100), "10-19 ");
  EXPECT_EQ(governing(manager, 2, 0, 100), "10-19 0-99 ");
  EXPECT_EQ(governing(manager, 3, 0, 100), "10-19 0-99! ");
  EXPECT_EQ(governing(manager, 4, 0, 100), "10-19 ");
  EXPECT_EQ(governing(manager, 5000, 20, 30), "");
  EXPECT_EQ(governing(manager, 5000, 15, 15), "10-19 ");

  removeObject(manager, *two);
  manager.update();
  EXPECT_EQ(governing(manager, 3, 0, 100), "10-19 ");
  Object::setControlRangeReader(nullptr);
}

}  // namespace
