// The values a new scene starts from: the new-project settings. Default-constructed it
// holds the settings' own defaults; the edit service hands the current ones to every
// scene it creates. A plain value, copied freely.
#pragma once

#include <cstdint>
#include <vector>

namespace Edit {

struct SceneDefaults {
  std::int32_t width = 1920;
  std::int32_t height = 1080;
  std::int32_t videoRate = 30;
  std::int32_t videoScale = 1;
  std::int32_t audioRate = 44100;
  float tempoBeatPerMinute = 120.0f;
  std::int32_t tempoBeat = 4;
  float tempoOffset = 0.0f;  // seconds
  std::vector<std::int32_t> gridX{16, -16};
  std::vector<std::int32_t> gridY{16, -16};
  std::int32_t gridWidth = 200;
  std::int32_t gridHeight = 200;
  float gridStep = 200.0f;
  float gridRange = 10000.0f;
};

}  // namespace Edit
