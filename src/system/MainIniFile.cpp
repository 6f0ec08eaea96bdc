#include "system/MainIniFile.h"

namespace System {

MainIniFile::MainIniFile() {
  loadFile(kPath, false);
  setWriteOnDestruction(true);
}

}  // namespace System
