#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "edit/Project.h"
#include "edit/Scene.h"

namespace {

using Edit::Project;
using Edit::Scene;
using Edit::SceneDefaults;

std::vector<std::int32_t> idsInDisplayOrder(const Project& project) {
  std::vector<std::int32_t> ids;
  for (const auto& scene : project.scenesInDisplayOrder()) ids.push_back(scene->id);
  return ids;
}

TEST(Project, ScenesTakeDefaultsAndNamesFromTheirId) {
  Project project(SceneDefaults{});
  const auto root = project.findScene(0);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->name, L"Root");
  EXPECT_EQ(root->audioRate, 44100);  // the setting, not the field's own 48000
  EXPECT_EQ(root->gridX, (std::vector<std::int32_t>{16, -16}));
  EXPECT_EQ(root->camera[2], -1024.0f);
  EXPECT_EQ(root->selectionRangeStart, -1);

  SceneDefaults small;
  small.width = 640;
  const auto scene = project.addScene(7, small);
  EXPECT_EQ(scene->name, L"Scene7");
  EXPECT_EQ(scene->width, 640);
  EXPECT_EQ(project.addScene(7, SceneDefaults{}), scene);
  EXPECT_EQ(scene->width, 640);
}

TEST(Project, DeletedSceneIdComesBackWithHighestDisplayOrder) {
  Project project(SceneDefaults{});
  for (int i = 0; i < 3; ++i) project.addScene(project.newSceneId(), SceneDefaults{});
  project.setDisplayOrder(*project.findScene(1), 10);  // the user moved scene 1 to the end
  EXPECT_TRUE(project.eraseScene(3));
  EXPECT_FALSE(project.eraseScene(0));

  const std::int32_t id = project.newSceneId();
  EXPECT_EQ(id, 3);
  EXPECT_EQ(project.addScene(id, SceneDefaults{})->displayOrder(), 11);
  EXPECT_EQ(idsInDisplayOrder(project), (std::vector<std::int32_t>{0, 2, 1, 3}));

  project.setDisplayOrder(*project.findScene(2), 11);  // a tie keeps insertion order
  EXPECT_EQ(idsInDisplayOrder(project), (std::vector<std::int32_t>{0, 1, 2, 3}));

  // The next order follows the highest that is left, however scenes moved or went.
  EXPECT_TRUE(project.eraseScene(2));
  EXPECT_TRUE(project.eraseScene(3));
  EXPECT_EQ(project.addScene(2, SceneDefaults{})->displayOrder(), 11);
  project.setDisplayOrder(*project.findScene(2), -5);
  project.setDisplayOrder(*project.findScene(1), 1);
  EXPECT_EQ(project.addScene(3, SceneDefaults{})->displayOrder(), 2);
  // A file may put a scene at the very end of the numbers; the next one stays behind it.
  project.setDisplayOrder(*project.findScene(3), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(project.addScene(4, SceneDefaults{})->displayOrder(), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(idsInDisplayOrder(project), (std::vector<std::int32_t>{2, 0, 1, 3, 4}));
}

TEST(Project, PluginValuesKeepInsertionOrderAcrossErase) {
  Edit::PluginData data;
  data.values.tryEmplace("b", "1");
  data.values.tryEmplace("a", "2");
  data.values.tryEmplace("c", "3");
  EXPECT_FALSE(data.values.tryEmplace("b", "changed").second);
  EXPECT_TRUE(data.values.erase("a"));
  std::vector<std::pair<std::string, std::string>> entries;
  for (const auto& [key, value] : data.values) entries.emplace_back(key, value);
  EXPECT_EQ(entries, (std::vector<std::pair<std::string, std::string>>{{"b", "1"}, {"c", "3"}}));
}

TEST(Scene, DisplayZoomTakesOnlyKnownStepsAndMapsColumns) {
  Scene scene(1, 1, SceneDefaults{});
  for (const std::int32_t zoom : Scene::kDisplayZooms) {
    scene.setDisplayZoom(zoom);
    EXPECT_EQ(scene.displayZoom(), zoom);
  }
  scene.setDisplayZoom(77);
  EXPECT_EQ(scene.displayZoom(), 10000);

  scene.displayFrame = 100;
  scene.setDisplayZoom(75000);
  EXPECT_EQ(scene.frameAtColumn(10), 101);
  scene.setDisplayZoom(20);
  EXPECT_EQ(scene.frameAtColumn(1000000), 500000100);  // would overflow in 32 bits
}

}  // namespace
