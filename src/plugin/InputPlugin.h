// A reader of media files as the input service ranks and asks it: its name, the file
// patterns it claims, the kinds of media it gives, and its user-set priority and
// extension list, kept in its own settings section ("Input." and its name). The built-in
// readers and external plug-ins both derive from it. Registered on the main thread; open
// may run on any thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "system/ConfigGroup.h"

namespace System {
class IniFile;
}

namespace Plugin {

class InputFile;

class InputPlugin {
 public:
  enum Kind : std::uint32_t { Video = 1, Audio = 2, Image = 8 };

  // `fileFilter` is pairs of description and pattern list, as in "AviFile (*.avi)",
  // "*.avi"; patterns are separated by ";".
  InputPlugin(std::wstring name, std::vector<std::wstring> fileFilter, std::wstring information,
              std::uint32_t kindFlags);
  virtual ~InputPlugin();
  InputPlugin(const InputPlugin&) = delete;
  InputPlugin& operator=(const InputPlugin&) = delete;

  // The file, or empty when this reader does not take it. A reader catches its own
  // failures: a file it cannot read is refused, so the next candidate may try.
  virtual std::shared_ptr<InputFile> open(const std::wstring& fileName, std::uint32_t trackIndex) = 0;
  // The reader's own settings window. The base throws "not implement.".
  virtual void showSetting(void* parentWindow);

  const std::wstring& name() const noexcept { return name_; }
  const std::vector<std::wstring>& fileFilter() const noexcept { return fileFilter_; }
  const std::wstring& information() const noexcept { return information_; }
  std::uint32_t kindFlags() const noexcept { return kindFlags_; }
  const std::string& sectionKey() const noexcept { return sectionKey_; }
  std::int32_t priority() const noexcept { return priority_; }
  std::int32_t defaultPriority() const noexcept { return defaultPriority_; }
  void setPriority(std::int32_t priority) noexcept { priority_ = priority; }

  // The registration index becomes the default priority; the section then loads what
  // the user stored ("priority", "ext").
  void setupSection(std::int32_t registrationIndex, System::IniFile* ini);
  // The extensions this reader answers for, lower case, without "*.".
  std::vector<std::wstring> getExtList() const;
  // The extensions of the filter itself, joined with commas.
  std::wstring defaultExtList() const;
  // A list equal to the default, or empty, stores nothing of its own.
  void setExtList(const std::wstring& list);
  const std::wstring& extOverride() const noexcept { return extOverride_; }

 private:
  std::vector<std::wstring> filterExtensions() const;

  std::wstring name_;
  std::vector<std::wstring> fileFilter_;
  std::wstring information_;
  std::uint32_t kindFlags_;
  std::string sectionKey_;
  std::int32_t priority_ = 0;
  std::int32_t defaultPriority_ = 0;
  std::wstring extOverride_;
  std::unique_ptr<System::Config::Group> settings_;
};

}  // namespace Plugin
