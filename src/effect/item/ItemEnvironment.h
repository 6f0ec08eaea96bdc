// What a few items need to know of the rest of the program: the installed fonts, the
// names of the input plug-ins, the scenes of the project. The services that own these
// install their answers at start; until then the defaults below answer (no fonts, no
// plug-ins, the scenes of the edit service when it exists). Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Effect {

struct ItemEnvironment {
  std::function<std::vector<std::wstring>()> installedFonts;
  // In the order of the input plug-in table.
  std::function<std::vector<std::wstring>()> inputPluginNames;
  std::function<std::optional<std::int32_t>(std::wstring_view name)> findSceneByName;
  std::function<std::optional<std::wstring>(std::int32_t id)> sceneName;

  static ItemEnvironment& get();
  // Back to the defaults; tests use it between cases.
  static void reset();
};

}  // namespace Effect
