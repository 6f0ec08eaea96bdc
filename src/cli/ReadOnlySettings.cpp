#include "cli/ReadOnlySettings.h"

#include "setting/SettingService.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"

namespace Cli {

ReadOnlySettings::ReadOnlySettings() {
  System::Singleton<System::MainIniFile>::acquire();
  System::MainIniFile::get()->setWriteOnDestruction(false);
  System::Singleton<Setting::SettingService>::acquire();
}

ReadOnlySettings::~ReadOnlySettings() {
  System::Singleton<Setting::SettingService>::release();
  System::Singleton<System::MainIniFile>::release();
}

}  // namespace Cli
