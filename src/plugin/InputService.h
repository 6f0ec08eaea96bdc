// The one door through which the program reads media files. It keeps the readers
// (built-in and plug-ins) ranked by the user's priority, maps lower-case extensions to
// candidates for video, audio and still images, opens a file by trying its candidates in
// turn, and keeps the most recently used open files so that the render workers do not
// reopen them. Readers are registered and ranked on the main thread; files are opened
// from any thread.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "system/ConfigGroup.h"

namespace System {
class IniFile;
}

namespace Plugin {

class InputFile;
class InputPlugin;

enum class MediaKind : std::uint32_t { Video = 1, Audio = 2 };

class InputService {
 public:
  static constexpr const char* kClassName = "Plugin::InputService";
  // The highest track index a name may carry: ":b" is track 50.
  static constexpr std::uint32_t kMaxTrackIndex = 50;

  // The service of the start: the section "Input" of the main ini and the built-in
  // readers, which thereby get the default priorities 0 to 3, the still pictures going
  // through the image service that stands by then.
  InputService();
  // Loads the section "Input" of `ini`; readers are registered after.
  explicit InputService(System::IniFile* ini);
  ~InputService();
  InputService(const InputService&) = delete;
  InputService& operator=(const InputService&) = delete;

  // Appends a reader; its settings section loads with the next registration index as
  // its default priority. Call updateExtTypeList() once registration is done.
  void registerPlugin(std::shared_ptr<InputPlugin> plugin);
  // Ranks the readers by priority and rebuilds the extension maps and dialog filters.
  void updateExtTypeList();

  // Opens a new file object through the first reader of its extension that takes it.
  // Throws "not supported file.", "can not open file.", "file is no video.", "file is
  // no audio." or "invalid track index." with the name.
  std::shared_ptr<InputFile> openFile(const std::wstring& name, MediaKind kind);
  // The cached file or a newly opened one of that kind, or empty: never throws for a
  // file that cannot be read. Still images are not kept, so a changed picture is read
  // again.
  std::shared_ptr<InputFile> openCachedFile(const std::wstring& name, MediaKind kind);
  // As video, else as audio.
  std::shared_ptr<InputFile> openAnyFile(const std::wstring& name);
  void closeAllFiles();

  // Filters for file dialogs: "VideoFile (*.avi;*.bmp)", then the patterns.
  const std::wstring& getVideoFilter() const noexcept { return videoFilter_; }
  const std::wstring& getAudioFilter() const noexcept { return audioFilter_; }
  const std::wstring& getImageFilter() const noexcept { return imageFilter_; }
  // The readers in priority order, as the input plug-in dialog lists them.
  const std::vector<std::shared_ptr<InputPlugin>>& plugins() const noexcept { return plugins_; }
  // Candidates for an extension (lower case) of one kind, in the order they are tried.
  std::vector<InputPlugin*> candidates(const std::wstring& extension, std::uint32_t kindFlag) const;

  // Changes whenever open files may have become stale (closeAllFiles, a new ranking):
  // whoever remembers what a file held looks again when it differs. Any thread.
  static std::uint32_t fileGeneration() noexcept;

  // The name of track `trackIndex` of a file: ":" and the character 48 + index before
  // the name; track 0 is the name itself. Above 50 throws "invalid track index".
  static std::wstring MakeMultiTrackFileName(const std::wstring& name, std::uint32_t trackIndex);

 private:
  using ExtensionMap = std::unordered_map<std::wstring, std::vector<InputPlugin*>>;

  void insertCached(const std::wstring& key, std::shared_ptr<InputFile> file);

  std::int32_t fileHandleMax_ = 20;
  System::Config::Group config_;
  System::IniFile* ini_ = nullptr;
  std::int32_t registrations_ = 0;
  std::vector<std::shared_ptr<InputPlugin>> plugins_;
  ExtensionMap videoMap_;
  ExtensionMap audioMap_;
  ExtensionMap imageMap_;
  std::wstring videoFilter_;
  std::wstring audioFilter_;
  std::wstring imageFilter_;

  // The open-file cache, most recent first. One lock, held across an open, so that two
  // threads asking for one name open it once.
  std::mutex cacheMutex_;
  std::list<std::pair<std::wstring, std::shared_ptr<InputFile>>> recent_;
  std::unordered_map<std::wstring, decltype(recent_)::iterator> cached_;
};

}  // namespace Plugin
