#include "support/TempDirectory.h"

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace TestSupport {

TempDirectory::TempDirectory() {
  std::random_device device;
  std::mt19937_64 generator(device());
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::ostringstream name;
    name << "sorvel2-test-" << std::hex << generator();
    const auto candidate = std::filesystem::temp_directory_path() / name.str();
    if (std::filesystem::create_directory(candidate)) {
      path_ = candidate;
      return;
    }
  }
  throw std::runtime_error("cannot create a temporary directory");
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempDirectory::writeFile(const std::string& relative, const std::string& bytes) const {
  const auto file = path_ / relative;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out << bytes;
  return file;
}

std::string TempDirectory::readFile(const std::string& relative) const {
  std::ifstream in(path_ / relative, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

}  // namespace TestSupport
