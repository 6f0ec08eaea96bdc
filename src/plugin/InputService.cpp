#include "plugin/InputService.h"

#include <algorithm>
#include <atomic>

#include "media/image/ImageService.h"
#include "plugin/BuiltinReaders.h"
#include "plugin/InputFile.h"
#include "plugin/InputPlugin.h"
#include "system/ConfigParameter.h"
#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Log.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Plugin {

namespace {

constexpr const char* kOpenPlace = "Plugin::InputService::openFile";

std::atomic<std::uint32_t> generation{0};

// "<label> (*.a;*.b)", NUL, "*.a;*.b", NUL: extensions in the order they were first met.
std::wstring dialogFilter(const wchar_t* label, const std::vector<std::wstring>& extensions) {
  std::wstring patterns;
  for (const std::wstring& extension : extensions) patterns += (patterns.empty() ? L"*." : L";*.") + extension;
  std::wstring filter = std::wstring(label) + L" (" + patterns + L")";
  filter.push_back(L'\0');
  filter += patterns;
  filter.push_back(L'\0');
  return filter;
}

}  // namespace

InputService::InputService() : InputService(System::MainIniFile::get()) {
  Media::ImageService* images = System::Singleton<Media::ImageService>::get();
  if (!images) throw System::NoteException("Plugin::InputService::InputService", "image service not started.");
  registerBuiltinReaders(*this, *images);
  updateExtTypeList();
}

InputService::InputService(System::IniFile* ini) : ini_(ini) {
  config_.setSection("Input");
  config_.add<System::Config::Int>("FileHandleMax", &fileHandleMax_, 20);
  config_.load(ini);
}

InputService::~InputService() { closeAllFiles(); }

void InputService::registerPlugin(std::shared_ptr<InputPlugin> plugin) {
  System::Log::info("Plugin::InputService::registerPlugin", L"register input plugin [%ls]", plugin->name().c_str());
  plugin->setupSection(registrations_++, ini_);
  plugins_.push_back(std::move(plugin));
}

void InputService::updateExtTypeList() {
  constexpr const char* kPlace = "Plugin::InputService::updateExtTypeList";
  std::stable_sort(plugins_.begin(), plugins_.end(),
                   [](const auto& a, const auto& b) { return a->priority() < b->priority(); });
  // One row per kind: its flag, its map, its dialog filter and the names the log and the
  // filter give it.
  struct Kind {
    std::uint32_t flag;
    ExtensionMap& map;
    std::wstring& filter;
    const wchar_t* logLabel;
    const wchar_t* filterLabel;
    std::vector<std::wstring> order;  // extensions in the order first met
  };
  Kind kinds[] = {{InputPlugin::Video, videoMap_, videoFilter_, L"[Video]", L"VideoFile", {}},
                  {InputPlugin::Audio, audioMap_, audioFilter_, L"[Audio]", L"AudioFile", {}},
                  {InputPlugin::Image, imageMap_, imageFilter_, L"[Image]", L"ImageFile", {}}};
  for (Kind& kind : kinds) kind.map.clear();
  for (const std::shared_ptr<InputPlugin>& plugin : plugins_) {
    for (const std::wstring& extension : plugin->getExtList()) {
      for (Kind& kind : kinds) {
        if (!(plugin->kindFlags() & kind.flag)) continue;
        auto [entry, inserted] = kind.map.try_emplace(extension);
        if (inserted) kind.order.push_back(extension);
        entry->second.push_back(plugin.get());
        System::Log::info(kPlace, L"%ls %ls -> [%ls]", kind.logLabel, extension.c_str(), plugin->name().c_str());
      }
    }
  }
  for (Kind& kind : kinds) kind.filter = dialogFilter(kind.filterLabel, kind.order);
  ++generation;
}

std::vector<InputPlugin*> InputService::candidates(const std::wstring& extension, std::uint32_t kindFlag) const {
  const ExtensionMap& map = kindFlag == InputPlugin::Video ? videoMap_
                            : kindFlag == InputPlugin::Audio ? audioMap_
                                                             : imageMap_;
  const auto found = map.find(extension);
  return found == map.end() ? std::vector<InputPlugin*>{} : found->second;
}

std::shared_ptr<InputFile> InputService::openFile(const std::wstring& name, MediaKind kind) {
  std::uint32_t trackIndex = 0;
  std::wstring fileName = name;
  if (!name.empty() && name[0] == L':') {
    trackIndex = name.size() > 1 ? static_cast<std::uint32_t>(name[1]) - 48u : 0u;
    if (name.size() < 2 || trackIndex > kMaxTrackIndex) {
      throw System::NoteException(kOpenPlace, "invalid track index.", System::Text::toUtf8(name));
    }
    fileName = name.substr(2);
  }
  System::Log::info(kOpenPlace, L"open media file [%ls]:%d", fileName.c_str(), static_cast<int>(trackIndex));
  // Still images are reached through their video flag: the image map only feeds dialogs.
  const std::vector<InputPlugin*> readers =
      candidates(System::FileName::extension(fileName), kind == MediaKind::Video ? InputPlugin::Video : InputPlugin::Audio);
  const std::string noteName = System::Text::toUtf8(fileName);
  if (readers.empty()) throw System::NoteException(kOpenPlace, "not supported file.", noteName);
  std::shared_ptr<InputFile> file;
  for (InputPlugin* reader : readers) {
    file = reader->open(fileName, trackIndex);
    if (file) {
      file->plugin = reader;
      break;
    }
  }
  if (!file) throw System::NoteException(kOpenPlace, "can not open file.", noteName);
  if (kind == MediaKind::Video && !file->hasVideo()) throw System::NoteException(kOpenPlace, "file is no video.", noteName);
  if (kind == MediaKind::Audio && !file->hasAudio()) throw System::NoteException(kOpenPlace, "file is no audio.", noteName);
  return file;
}

std::shared_ptr<InputFile> InputService::openCachedFile(const std::wstring& name, MediaKind kind) {
  if (name.empty()) return nullptr;
  std::shared_ptr<InputFile> file;
  {
    std::lock_guard lock(cacheMutex_);
    if (const auto found = cached_.find(name); found != cached_.end()) {
      recent_.splice(recent_.begin(), recent_, found->second);
      file = found->second->second;
    } else {
      try {
        file = openFile(name, kind);
      } catch (const std::exception&) {
        // The reason is in the log already: the exception logged itself when it was made.
        return nullptr;
      }
      if (file->frameCount >= 2 || file->hasAudio()) insertCached(name, file);
    }
  }
  const bool fits = kind == MediaKind::Video ? file->hasVideo() : file->hasAudio();
  return fits ? file : nullptr;
}

void InputService::insertCached(const std::wstring& key, std::shared_ptr<InputFile> file) {
  if (const auto found = cached_.find(key); found != cached_.end()) {
    recent_.erase(found->second);
    cached_.erase(found);
  }
  recent_.emplace_front(key, std::move(file));
  cached_[key] = recent_.begin();
  while (static_cast<std::int64_t>(recent_.size()) > std::max(fileHandleMax_, 0) && !recent_.empty()) {
    cached_.erase(recent_.back().first);
    recent_.pop_back();
  }
}

std::shared_ptr<InputFile> InputService::openAnyFile(const std::wstring& name) {
  std::shared_ptr<InputFile> file = openCachedFile(name, MediaKind::Video);
  return file ? file : openCachedFile(name, MediaKind::Audio);
}

void InputService::closeAllFiles() {
  {
    std::lock_guard lock(cacheMutex_);
    cached_.clear();
    recent_.clear();
  }
  ++generation;
}

std::uint32_t InputService::fileGeneration() noexcept { return generation.load(); }

std::wstring InputService::MakeMultiTrackFileName(const std::wstring& name, std::uint32_t trackIndex) {
  if (trackIndex == 0) return name;
  if (trackIndex > kMaxTrackIndex) {
    throw System::NoteException("Plugin::InputService::MakeMultiTrackFileName", "invalid track index");
  }
  return std::wstring(1, L':') + static_cast<wchar_t>(48 + trackIndex) + name;
}

}  // namespace Plugin
