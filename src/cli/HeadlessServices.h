// The services that the command-line companion needs, started in the editor's order
// with nothing that shows a window: the settings (read, never written back), the effect
// registry and the edit service with its empty project. Lives for one run, on the one
// thread of the tool.
#pragma once

#include <string>
#include <vector>

#include "cli/ReadOnlySettings.h"

namespace Edit {
class EditService;
}
namespace Effect {
class EffectService;
}

namespace Cli {

class HeadlessServices {
 public:
  HeadlessServices();
  ~HeadlessServices();
  HeadlessServices(const HeadlessServices&) = delete;
  HeadlessServices& operator=(const HeadlessServices&) = delete;

  Edit::EditService& edit() noexcept { return *edit_; }
  Effect::EffectService& effects() noexcept { return *effects_; }

  // The warnings logged since the last call: values that did not read, newer files.
  std::vector<std::string> takeWarnings();

 private:
  ReadOnlySettings settings_;
  Effect::EffectService* effects_ = nullptr;
  Edit::EditService* edit_ = nullptr;
  std::vector<std::string> warnings_;
};

}  // namespace Cli
