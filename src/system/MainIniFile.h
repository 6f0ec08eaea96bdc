// The user's own settings file, %AppData%/sorvel2.ini, shared by every service's
// configuration group. Held through System::Singleton<MainIniFile> with a count of its
// own; the last release writes the file, so it is written once, on an orderly way down.
// Main thread only.
#pragma once

#include "system/IniFile.h"
#include "system/Singleton.h"

namespace System {

class MainIniFile : public IniFile {
 public:
  static constexpr const wchar_t* kPath = L"%AppData%/sorvel2.ini";

  MainIniFile();

  // The document that configuration groups load from; null while nobody holds it.
  static IniFile* get() noexcept { return Singleton<MainIniFile>::get(); }
};

}  // namespace System
