// The first service up and the last one down. It holds the read-only tuning files
// (system.conf, style.conf, effect.conf: the user's file in %AppData% merged over the
// installation's), the main ini's reference, the machine's metrics and the `Edit`
// group of the main ini: the defaults of new projects. Built and released on the main
// thread; everything it holds is read-only after start, so any thread may read it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "edit/SceneDefaults.h"
#include "setting/FrameRateMap.h"
#include "setting/SystemMetrics.h"
#include "system/ConfigGroup.h"
#include "system/IniFile.h"

namespace Setting {

class SettingService {
 public:
  using StartHook = std::function<void(SettingService&)>;

  SettingService();
  ~SettingService();
  SettingService(const SettingService&) = delete;
  SettingService& operator=(const SettingService&) = delete;

  // Before the service starts: the platform's metrics, and the hooks that plug-in code
  // registers; the hooks run at the end of start, in the order of registration.
  static void setSystemMetricsSource(SystemMetricsSource source);
  static void addStartHook(StartHook hook);

  System::IniFile::SectionRef config() { return system_.section("Config"); }
  System::IniFile::SectionRef frameRate() { return system_.section("FrameRate"); }
  System::IniFile::SectionRef keyCode() { return system_.section("KeyCode"); }
  System::IniFile::SectionRef color() { return style_.section("Color"); }
  System::IniFile::SectionRef layout() { return style_.section("Layout"); }
  System::IniFile::SectionRef font() { return style_.section("Font"); }
  System::IniFile::SectionRef format() { return style_.section("Format"); }
  System::IniFile& systemFile() noexcept { return system_; }
  System::IniFile& styleFile() noexcept { return style_; }
  System::IniFile& effectFile() noexcept { return effect_; }

  Rational frameRateToRational(double value) { return Setting::frameRateToRational(frameRate(), value); }
  double rationalToFrameRate(std::int32_t rate, std::int32_t scale) {
    return Setting::rationalToFrameRate(frameRate(), rate, scale);
  }

  const SystemMetrics& metrics() const noexcept { return metrics_; }
  float dpiScale() const noexcept { return dpiScale_; }
  // The steady clock at start: the zero of the program's performance counter.
  std::chrono::steady_clock::time_point startTime() const noexcept { return startTime_; }

  // The `Edit` group: what new scenes start with, and the dialogs' Enter key.
  Edit::SceneDefaults sceneDefaults() const;
  bool enterSubmitsDialogs() const noexcept { return enableEnterSubmit_ != 0; }

 private:
  System::IniFile system_;
  System::IniFile style_;
  System::IniFile effect_;
  SystemMetrics metrics_;
  float dpiScale_ = 1.0f;
  std::chrono::steady_clock::time_point startTime_;

  std::int32_t projectWidth_ = 0;
  std::int32_t projectHeight_ = 0;
  std::int32_t projectVideoRate_ = 0;
  std::int32_t projectVideoScale_ = 0;
  std::int32_t projectAudioRate_ = 0;
  float tempoBeatPerMinute_ = 0.0f;
  std::int32_t tempoBeatTime_ = 0;
  float tempoOffsetTime_ = 0.0f;
  std::int32_t gridWidth_ = 0;
  std::int32_t gridHeight_ = 0;
  std::wstring gridX_;
  std::wstring gridY_;
  float gridStep_ = 0.0f;
  float gridRange_ = 0.0f;
  std::int32_t enableEnterSubmit_ = 0;
  // Stored by the destructor's body, before the service lets go of the main ini.
  System::Config::Group edit_;
};

}  // namespace Setting
