// `#include` in the shaders that scripts bring: a name is found beside the file that
// includes it (the script itself for the first level), and only inside the script
// folders, so that a script cannot pull in any file of the system. Anything else fails
// the compile with a message that says why. One includer serves one compile.
#pragma once

#include <glslang/Public/ShaderLang.h>

#include <filesystem>
#include <vector>

namespace Media::Compile {

class ShaderIncluder : public glslang::TShader::Includer {
 public:
  // `folders` are the folders whose files may be included, with their subfolders.
  explicit ShaderIncluder(const std::vector<std::filesystem::path>& folders);

  IncludeResult* includeLocal(const char* headerName, const char* includerName, size_t inclusionDepth) override;
  IncludeResult* includeSystem(const char* headerName, const char* includerName, size_t inclusionDepth) override;
  void releaseInclude(IncludeResult* result) override;

 private:
  IncludeResult* include(const char* headerName, const char* includerName, size_t inclusionDepth);
  bool allowed(const std::filesystem::path& file) const;

  std::vector<std::filesystem::path> folders_;
};

// The folder of a compile name such as "<folder>\<script>.<shader>", either separator.
std::filesystem::path includingFolder(const std::string& includerName);

}  // namespace Media::Compile
