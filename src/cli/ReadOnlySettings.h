// The user's settings as every command of sorvel2-cli holds them: the main ini and the
// settings service, read as the editor reads them but never written back, since a batch
// job must not rewrite a user's settings. Acquired first and released last by the
// services of a command.
#pragma once

namespace Cli {

class ReadOnlySettings {
 public:
  ReadOnlySettings();
  ~ReadOnlySettings();
  ReadOnlySettings(const ReadOnlySettings&) = delete;
  ReadOnlySettings& operator=(const ReadOnlySettings&) = delete;
};

}  // namespace Cli
