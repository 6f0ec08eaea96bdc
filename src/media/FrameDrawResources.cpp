#include "media/FrameDrawResources.h"

#include <string>

#include "media/GraphicsDevice.h"
#include "media/Vertex.h"

namespace Media {

namespace {

// Clip space runs from -1 to 1 with y up the frame; texture coordinates from 0 at the top
// left to 1 at the bottom right, as the device sets the conventions.
constexpr float kPositionCorners[4][3] = {{-1, 1, 0}, {1, 1, 0}, {-1, -1, 0}, {1, -1, 0}};
constexpr XYZ_UV kTexCoordCorners[4] = {
    {-1, 1, 0, 0, 0, 0, 0}, {1, 1, 0, 1, 0, 0, 0}, {-1, -1, 0, 0, 1, 0, 0}, {1, -1, 0, 1, 1, 0, 0}};

constexpr const char* kHeader =
    "#version 450 core\n"
    "out gl_PerVertex { vec4 gl_Position; };\n";

ShaderInputParameter floatInput(const char* name, std::uint8_t mask) {
  return ShaderInputParameter{name, 0, mask, ComponentType::Float32};
}

const char* glslType(std::uint32_t components) {
  constexpr const char* kTypes[] = {"float", "vec2", "vec3", "vec4"};
  return kTypes[components - 1];
}

}  // namespace

CompiledShader positionVertexShader() {
  CompiledShader shader;
  shader.stage = ShaderStage::Vertex;
  shader.glsl = std::string(kHeader) +
                "layout(location = 0) in vec3 position;\n"
                "void main() { gl_Position = vec4(position, 1.0); }\n";
  shader.inputs = {floatInput("POSITION", 7)};
  return shader;
}

CompiledShader positionTexCoordVertexShader(std::uint32_t components) {
  static constexpr const char* kSwizzles[] = {".x", ".xy", ".xyz", ""};
  CompiledShader shader;
  shader.stage = ShaderStage::Vertex;
  shader.glsl = std::string(kHeader) +
                "layout(location = 0) in vec3 position;\n"
                "layout(location = 1) in vec4 texCoordIn;\n"
                "layout(location = 0) out " +
                glslType(components) +
                " texCoord;\n"
                "void main() {\n"
                "  gl_Position = vec4(position, 1.0);\n"
                "  texCoord = texCoordIn" +
                kSwizzles[components - 1] +
                ";\n"
                "}\n";
  shader.inputs = {floatInput("POSITION", 7), floatInput("TEXCOORD", 15)};
  return shader;
}

CompiledShader twoVectorVertexShader() {
  CompiledShader shader;
  shader.stage = ShaderStage::Vertex;
  shader.glsl = std::string(kHeader) +
                "layout(location = 0) in vec4 position;\n"
                "layout(location = 1) in vec4 valueIn;\n"
                "layout(location = 0) out vec4 value;\n"
                "void main() {\n"
                "  gl_Position = position;\n"
                "  value = valueIn;\n"
                "}\n";
  shader.inputs = {floatInput("POSITION", 15), floatInput("COLOR", 15)};
  return shader;
}

FrameDrawResources::FrameDrawResources(GraphicsDevice& device) : device_(&device) {
  GraphicsBackend& backend = device.backend();
  constexpr const char* kPlace = "Media::FrameDrawResources::FrameDrawResources";
  positionList_ = backend.createBuffer(kPositionCorners, sizeof(kPositionCorners), kPlace);
  texCoordList_ = backend.createBuffer(kTexCoordCorners, sizeof(kTexCoordCorners), kPlace);
}

FrameDrawResources::~FrameDrawResources() {
  device_->backend().destroyBuffer(positionList_);
  device_->backend().destroyBuffer(texCoordList_);
}

namespace {

// `make` builds the source only when the shader is first needed: a draw allocates nothing.
template <class Make>
VertexShader& loaded(std::unique_ptr<VertexShader>& slot, GraphicsDevice& device, Make make) {
  if (!slot) {
    auto shader = std::make_unique<VertexShader>(device);
    shader->load(make());
    slot = std::move(shader);
  }
  return *slot;
}

}  // namespace

VertexShader& FrameDrawResources::positionShader() { return loaded(position_, *device_, positionVertexShader); }

VertexShader& FrameDrawResources::texCoordShader(std::uint32_t components) {
  const std::uint32_t index = components == 0 || components > 4 ? 1 : components - 1;
  return loaded(texCoord_[index], *device_, [index] { return positionTexCoordVertexShader(index + 1); });
}

VertexShader& FrameDrawResources::twoVectorShader() { return loaded(twoVector_, *device_, twoVectorVertexShader); }

}  // namespace Media
