// A fresh directory under the system's temporary folder, removed with its contents
// when the object goes away.
#pragma once

#include <filesystem>
#include <string>

namespace TestSupport {

class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;

  const std::filesystem::path& path() const noexcept { return path_; }
  std::wstring wide() const { return path_.wstring(); }
  // Writes `bytes` to a file below the directory, creating folders on the way.
  std::filesystem::path writeFile(const std::string& relative, const std::string& bytes) const;
  std::string readFile(const std::string& relative) const;

 private:
  std::filesystem::path path_;
};

// The XDG_DATA_HOME that the test main made for this run.
const std::filesystem::path& dataHome();

}  // namespace TestSupport
