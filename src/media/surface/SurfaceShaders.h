// The plain pairs of the 3D drawing set, a textured and a coloured surface, and their
// draws. Effects draw an object's geometry through them when no camera is in force. In
// the set's order the textured pair comes first and the coloured pair fourth; the pairs
// with depth, transparency and normals, the depth-only pairs, the light pass and the
// resolve take the places around them. Made on the GPU thread with the shared set and
// used there; may be destroyed on any thread while the device lives.
#pragma once

#include <cstddef>

#include "media/PixelShader.h"
#include "media/Vertex.h"
#include "media/VertexList.h"
#include "media/VertexShader.h"

namespace Media {

class ConstantBufferCommon;
class GraphicsDevice;
class RenderBuffer;
class ResourceBuffer;

struct SurfaceDrawOptions {
  // A copy of the target, made by the caller before the draw, which the blend modes
  // read. It must be given wherever `blend` of the constants isn't 0.
  ResourceBuffer* frameCopy = nullptr;
  // The sampler state the texture is read through (textured pair only).
  std::size_t samplerState = 0;
  // 0, or 1 to cull the faces that are counter-clockwise on the target.
  std::size_t rasterizerState = 0;
};

class SurfaceShaders {
 public:
  // Loads both pairs; a shader that fails to build throws the device's system exception.
  explicit SurfaceShaders(GraphicsDevice& device);
  ~SurfaceShaders();
  SurfaceShaders(const SurfaceShaders&) = delete;
  SurfaceShaders& operator=(const SurfaceShaders&) = delete;

  // Draws `vertices` onto `target` source-over (blend state 0), placed by the constants
  // `constants` holds (a SurfaceConstants), and leaves no source or target bound.
  void drawTextured(RenderBuffer& target, const VertexListTemplate<XYZ_UV>& vertices, ResourceBuffer& texture,
                    const ConstantBufferCommon& constants, const SurfaceDrawOptions& options = {});
  void drawTextured(ResourceBuffer& target, const VertexListTemplate<XYZ_UV>& vertices, ResourceBuffer& texture,
                    const ConstantBufferCommon& constants, const SurfaceDrawOptions& options = {});
  void drawColored(RenderBuffer& target, const VertexListTemplate<XYZ_COL>& vertices,
                   const ConstantBufferCommon& constants, const SurfaceDrawOptions& options = {});
  void drawColored(ResourceBuffer& target, const VertexListTemplate<XYZ_COL>& vertices,
                   const ConstantBufferCommon& constants, const SurfaceDrawOptions& options = {});

 private:
  struct Pair {
    explicit Pair(GraphicsDevice& device) : vertex(device), pixel(device) {}
    VertexShader vertex;
    PixelShader pixel;
  };

  // Draws with the target already set.
  void draw(Pair& pair, const VertexList& vertices, ResourceBuffer* texture, const ConstantBufferCommon& constants,
            const SurfaceDrawOptions& options);

  GraphicsDevice* device_;
  Pair textured_;
  Pair colored_;
};

}  // namespace Media
