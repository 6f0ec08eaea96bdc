// The presets of the time-control curve: `name=v1,v2,...` lines of the `.params` files,
// read at start from %AppInstall%/preset.params and then %Default%/*.params. Each
// preset is an entry of the "Params" menu list. Main thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "menu/MenuDefineBase.h"
#include "system/OrderedMap.h"

namespace Effect {

class MovementParamsDefine final : public Menu::MenuDefineBase {
 public:
  MovementParamsDefine(std::int32_t number, std::wstring key, std::vector<double> curve);

  const std::wstring& key() const noexcept { return key_; }
  const std::vector<double>& curve() const noexcept { return curve_; }

  // Writes `params=<v1>,<v2>,...` and CR LF, each value as "%f" without trailing zeros.
  static void saveMovementParamsFile(const std::wstring& path, const std::vector<double>& curve);
  // The one line of such a file.
  static std::string formatParamsLine(std::string_view name, const std::vector<double>& curve);

 private:
  std::wstring key_;
  std::vector<double> curve_;
};

class MovementParamsManager {
 public:
  // Numbers continue the registry's running number.
  explicit MovementParamsManager(std::int32_t& runningNumber) : runningNumber_(runningNumber) {}

  // Reads the installation's presets, then the user's; a file that cannot be opened
  // gives nothing and no message.
  void load();
  // The presets of one file's text; `suffix` ("@<file>") is added to every name unless
  // empty. A key that exists already shows the duplicate message and is skipped.
  void registerText(std::string_view text, std::wstring_view suffix);

  const System::OrderedMap<std::wstring, std::unique_ptr<MovementParamsDefine>>& presets() const noexcept {
    return presets_;
  }

 private:
  std::int32_t& runningNumber_;
  System::OrderedMap<std::wstring, std::unique_ptr<MovementParamsDefine>> presets_;
};

}  // namespace Effect
