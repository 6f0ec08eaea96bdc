#include "setting/SettingService.h"

#include <algorithm>
#include <utility>

#include "setting/DpiScaling.h"
#include "system/ConfigParameter.h"
#include "system/File.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "system/Text.h"

namespace Setting {

namespace {

SystemMetricsSource& metricsSource() {
  static SystemMetricsSource source;
  return source;
}

std::vector<SettingService::StartHook>& startHooks() {
  static std::vector<SettingService::StartHook> hooks;
  return hooks;
}

// "16,-16" to its numbers; elements that do not read are skipped.
std::vector<std::int32_t> parseIntList(const std::wstring& text) {
  std::vector<std::int32_t> numbers;
  const System::IniFile::VALUE list(System::Text::toUtf8(text), nullptr, 0);
  for (const System::IniFile::VALUE& element : list.split(",")) {
    if (const auto number = element.tryInt()) numbers.push_back(*number);
  }
  return numbers;
}

// The sanity limits of what the input devices report: never below 1 pixel.
SystemMetrics clamped(SystemMetrics metrics) {
  metrics.dragWidth = std::max(1, metrics.dragWidth);
  metrics.dragHeight = std::max(1, metrics.dragHeight);
  metrics.screenWidth = std::max(1, metrics.screenWidth);
  metrics.screenHeight = std::max(1, metrics.screenHeight);
  return metrics;
}

}  // namespace

void SettingService::setSystemMetricsSource(SystemMetricsSource source) { metricsSource() = std::move(source); }

void SettingService::addStartHook(StartHook hook) { startHooks().push_back(std::move(hook)); }

SettingService::SettingService() : startTime_(std::chrono::steady_clock::now()) {
  // The user's file first, then the installation's fills in what it does not say.
  system_.loadFile(L"%AppData%/system.conf");
  system_.loadFile(L"%AppInstall%/system.conf", true);
  // Every file read whole from here on is held to the limit that the tuning file states;
  // the tuning files themselves are read under the built-in one.
  const std::int32_t megabytes = config()["TextFileSizeLimit"].tryInt().value_or(0);
  System::File::setReadAllLimit(megabytes > 0 ? std::int64_t{megabytes} << 20 : System::File::kDefaultReadAllLimit);

  System::Singleton<System::MainIniFile>::acquire();
  if (metricsSource()) metrics_ = clamped(metricsSource()());

  style_.loadFile(L"%AppData%/style.conf");
  style_.loadFile(L"%AppInstall%/style.conf", true);
  effect_.loadFile(L"%AppData%/effect.conf");
  effect_.loadFile(L"%AppInstall%/effect.conf", true);

  using System::Config::Float;
  using System::Config::Int;
  using System::Config::String;
  edit_.setSection("Edit");
  edit_.add<Int>("ProjectWidth", &projectWidth_, 1920);
  edit_.add<Int>("ProjectHeight", &projectHeight_, 1080);
  edit_.add<Int>("ProjectVideoRate", &projectVideoRate_, 30);
  edit_.add<Int>("ProjectVideoScale", &projectVideoScale_, 1);
  edit_.add<Int>("ProjectAudioRate", &projectAudioRate_, 44100);
  edit_.add<Float>("TempoBeatPerMinute", &tempoBeatPerMinute_, 120.0f);
  edit_.add<Int>("TempoBeatTime", &tempoBeatTime_, 4);
  edit_.add<Float>("TempoOffsetTime", &tempoOffsetTime_, 0.0f);
  edit_.add<Int>("GridWidth", &gridWidth_, 200);
  edit_.add<Int>("GridHeight", &gridHeight_, 200);
  edit_.add<String>("GridX", &gridX_, L"16,-16");
  edit_.add<String>("GridY", &gridY_, L"16,-16");
  edit_.add<Float>("GridStep", &gridStep_, 200.0f);
  edit_.add<Float>("GridRange", &gridRange_, 10000.0f);
  edit_.add<Int>("EnableEnterSubmit", &enableEnterSubmit_, 0);
  edit_.load(System::MainIniFile::get());

  dpiScale_ = applyDpiScaling(*System::MainIniFile::get(), style_, metrics_.dpi);

  for (const StartHook& hook : startHooks()) hook(*this);
}

SettingService::~SettingService() {
  // The group stores into the main ini before the last reference to it may write it.
  edit_.store();
  edit_.setSection("");
  System::Singleton<System::MainIniFile>::release();
}

Edit::SceneDefaults SettingService::sceneDefaults() const {
  Edit::SceneDefaults defaults;
  defaults.width = projectWidth_;
  defaults.height = projectHeight_;
  defaults.videoRate = projectVideoRate_;
  defaults.videoScale = projectVideoScale_;
  defaults.audioRate = projectAudioRate_;
  defaults.tempoBeatPerMinute = tempoBeatPerMinute_;
  defaults.tempoBeat = tempoBeatTime_;
  defaults.tempoOffset = tempoOffsetTime_;
  defaults.gridX = parseIntList(gridX_);
  defaults.gridY = parseIntList(gridY_);
  defaults.gridWidth = gridWidth_;
  defaults.gridHeight = gridHeight_;
  defaults.gridStep = gridStep_;
  defaults.gridRange = gridRange_;
  return defaults;
}

}  // namespace Setting
