// A writer of exports: its name (the menu label and its settings section
// "Output.<name>"), the file types it writes, what it writes, and its settings, which a
// run may override without their being stored. Made and set up on one thread.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "plugin/OutputFile.h"
#include "system/ConfigGroup.h"

namespace System {
class IniFile;
}

namespace Plugin {

class OutputPlugin {
 public:
  enum Flag : std::uint32_t { Video = 1, Audio = 2, HasSettings = 4, Still = 8 };

  OutputPlugin(std::wstring name, std::wstring fileFilter, std::uint32_t flags);
  virtual ~OutputPlugin();
  OutputPlugin(const OutputPlugin&) = delete;
  OutputPlugin& operator=(const OutputPlugin&) = delete;

  const std::wstring& name() const noexcept { return name_; }
  const std::wstring& fileFilter() const noexcept { return fileFilter_; }
  std::uint32_t flags() const noexcept { return flags_; }
  // The extensions of the filter, lower case without the dot: "avi", "png", "jpg".
  std::vector<std::wstring> extensions() const;

  // Reads the settings from their section of `ini`; a null ini leaves the defaults.
  void loadSettings(System::IniFile* ini);
  // Sets one setting for this run only. Returns a reason when the key is not one of this
  // writer's or the value does not read; nothing otherwise.
  std::optional<std::string> overrideSetting(const std::string& key, const std::wstring& value);
  // The keys of its settings, in order.
  std::vector<std::string> settingKeys() const;
  // One line that says how the writer is set up; empty when it has no settings.
  virtual std::wstring getSettingText() const { return {}; }

  // The export of `scene` into `path`. A path this writer cannot write throws
  // System::Exception with the reason.
  virtual std::unique_ptr<OutputFile> createFile(const OutputScene& scene, const std::wstring& path,
                                                 std::shared_ptr<OutputSource> source) = 0;

 protected:
  void addSetting(const char* key, std::wstring* value, std::wstring defaultValue, std::vector<std::wstring> allowed);
  void addSetting(const char* key, std::int32_t* value, std::int32_t defaultValue, std::int32_t minimum,
                  std::int32_t maximum);

 private:
  struct TextSetting {
    std::wstring* value;
    std::vector<std::wstring> allowed;
  };
  struct NumberSetting {
    std::int32_t* value;
    std::int32_t minimum;
    std::int32_t maximum;
  };

  std::wstring name_;
  std::wstring fileFilter_;
  std::uint32_t flags_;
  System::Config::Group config_;
  std::vector<std::pair<std::string, std::variant<TextSetting, NumberSetting>>> settings_;
};

}  // namespace Plugin
