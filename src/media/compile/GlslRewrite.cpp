#include "media/compile/GlslRewrite.h"

#include <sstream>

#include "media/compile/CompileFailure.h"
#include "media/compile/ShaderReflection.h"

namespace Media::Compile {

namespace {

bool endsWith(const std::string& line, const std::string& tail) {
  return line.size() >= tail.size() && line.compare(line.size() - tail.size(), tail.size(), tail) == 0;
}

// The translator writes e.g. "layout(binding = 0, rgba32f) uniform writeonly image2D
// sorvel_u0;": the format goes, the token takes its place, the rest stays.
std::string rewriteImageDeclaration(const std::string& line, const ShaderImageBinding& image) {
  const std::size_t uniform = line.find("uniform ");
  return "layout(binding = " + std::to_string(image.unit) + ", " + imageFormatToken(image.unit) + ") " +
         line.substr(uniform);
}

}  // namespace

std::string imageFormatToken(std::uint32_t unit) { return "SORVEL_IMAGE_FORMAT_" + std::to_string(unit); }

std::string rewriteGlsl(const std::string& glsl, const CompiledShader& shader,
                        const std::vector<std::string>& loaders) {
  std::istringstream in(glsl);
  std::string result;
  std::size_t replaced = 0;
  std::string line;
  while (std::getline(in, line)) {
    bool done = false;
    if (line.find("uniform ") != std::string::npos) {
      for (std::size_t i = 0; i < shader.constants.size() && !done; ++i) {
        if (endsWith(line, " " + constantBufferName(shader.constants[i].slot) + ";")) {
          result += loaders[i];
          done = true;
        }
      }
      for (const ShaderImageBinding& image : shader.images) {
        if (done || !endsWith(line, " " + imageName(image.slot) + ";")) continue;
        result += rewriteImageDeclaration(line, image) + "\n";
        done = true;
      }
    }
    if (done) {
      ++replaced;
    } else {
      result += line + "\n";
    }
  }
  // Every resource was named before the text was written; one not found means the
  // translator wrote it in a form this rewriting does not know.
  if (replaced != shader.constants.size() + shader.images.size()) {
    throwCompileFailure("unexpected resource declarations in the translated GLSL:\n" + glsl);
  }
  return result;
}

}  // namespace Media::Compile
