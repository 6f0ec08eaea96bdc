#include "media/compile/ShaderIncluder.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace Media::Compile {

namespace {

// Deeper than any honest shader library goes; a file that includes itself stops here.
constexpr size_t kMaxDepth = 32;

// What an include result owns: the text glslang reads, or the reason it failed.
struct Included {
  std::string text;
};

glslang::TShader::Includer::IncludeResult* failure(const std::string& reason) {
  auto* owned = new Included{reason};
  return new glslang::TShader::Includer::IncludeResult("", owned->text.c_str(), owned->text.size(), owned);
}

}  // namespace

std::filesystem::path includingFolder(const std::string& includerName) {
  const std::size_t slash = includerName.find_last_of("/\\");
  if (slash == std::string::npos) return {};
  std::string folder = includerName.substr(0, slash);
  for (char& c : folder) {
    if (c == '\\') c = '/';
  }
  return folder;
}

ShaderIncluder::ShaderIncluder(const std::vector<std::filesystem::path>& folders) {
  for (const std::filesystem::path& folder : folders) {
    std::error_code error;
    const std::filesystem::path canonical = std::filesystem::canonical(folder, error);
    if (!error) folders_.push_back(canonical);
  }
}

bool ShaderIncluder::allowed(const std::filesystem::path& file) const {
  for (const std::filesystem::path& folder : folders_) {
    // Whole components must match: "/a/script" does not contain "/a/scripts/x".
    auto [end, inside] = std::mismatch(folder.begin(), folder.end(), file.begin(), file.end());
    if (end == folder.end()) return true;
  }
  return false;
}

glslang::TShader::Includer::IncludeResult* ShaderIncluder::include(const char* headerName, const char* includerName,
                                                                   size_t inclusionDepth) {
  if (inclusionDepth > kMaxDepth) return failure(std::string("#include nested too deeply: ") + headerName);
  const std::filesystem::path wanted = includingFolder(includerName) / headerName;
  std::error_code error;
  const std::filesystem::path file = std::filesystem::canonical(wanted, error);
  if (error || !std::filesystem::is_regular_file(file, error)) {
    return failure("cannot open include file: " + wanted.string());
  }
  if (!allowed(file)) return failure("include file outside the script folders: " + file.string());
  std::ifstream stream(file, std::ios::binary);
  auto owned = std::make_unique<Included>();
  owned->text.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  if (!stream.good() && !stream.eof()) return failure("cannot read include file: " + file.string());
  Included* text = owned.release();
  return new IncludeResult(file.string(), text->text.c_str(), text->text.size(), text);
}

glslang::TShader::Includer::IncludeResult* ShaderIncluder::includeLocal(const char* headerName,
                                                                        const char* includerName,
                                                                        size_t inclusionDepth) {
  return include(headerName, includerName, inclusionDepth);
}

glslang::TShader::Includer::IncludeResult* ShaderIncluder::includeSystem(const char* headerName,
                                                                         const char* includerName,
                                                                         size_t inclusionDepth) {
  return include(headerName, includerName, inclusionDepth);
}

void ShaderIncluder::releaseInclude(IncludeResult* result) {
  if (!result) return;
  delete static_cast<Included*>(result->userData);
  delete result;
}

}  // namespace Media::Compile
