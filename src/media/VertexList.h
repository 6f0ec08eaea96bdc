// Lists of vertices that 3D drawing and scripts fill and draw with the vertex and pixel
// shaders they made current. A quad list holds four points a quad, around its edge; a
// triangle list three a triangle. draw() sends the vertices as they are; drawWithNormal()
// adds a normal to each (one a quad or triangle) and sends ten floats a vertex.
// GPU thread only for drawing.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "media/GraphicsBackend.h"
#include "media/GraphicsDevice.h"
#include "media/QuadSplit.h"
#include "media/Vertex.h"

namespace Media {

class VertexList {
 public:
  virtual ~VertexList() = default;
  virtual void draw(GraphicsDevice& device) const = 0;
  virtual void drawWithNormal(GraphicsDevice& device) const = 0;
  // An empty list of the same kind, and appending a list of the same kind.
  virtual std::unique_ptr<VertexList> createEmpty() const = 0;
  virtual void append(const VertexList& other) = 0;
};

template <class V>
class VertexListTemplate : public VertexList {
 public:
  using Vertex = V;
  std::vector<V>& vertices() noexcept { return vertices_; }
  const std::vector<V>& vertices() const noexcept { return vertices_; }
  void push(const V& vertex) { vertices_.push_back(vertex); }

  void append(const VertexList& other) override {
    const auto& same = dynamic_cast<const VertexListTemplate<V>&>(other);
    vertices_.insert(vertices_.end(), same.vertices_.begin(), same.vertices_.end());
  }

 protected:
  template <class W>
  static void send(GraphicsDevice& device, const std::vector<W>& vertices) {
    if (vertices.empty()) return;
    device.drawVertices(Topology::TriangleList, device.inputLayout(), vertices.data(), sizeof(W),
                        static_cast<std::uint32_t>(vertices.size()));
  }

  std::vector<V> vertices_;
};

template <class V>
class VertexListQuadTemplate : public VertexListTemplate<V> {
 public:
  std::size_t quadCount() const noexcept { return this->vertices_.size() / 4; }

  // A single quad is rewritten into the device's shared buffer: nothing is allocated.
  void draw(GraphicsDevice& device) const override {
    if (quadCount() == 1) {
      V six[6];
      splitQuad(this->vertices_.data(), six);
      drawSingle(device, six);
      return;
    }
    std::vector<V> triangles(quadCount() * 6);
    for (std::size_t q = 0; q < quadCount(); ++q) splitQuad(&this->vertices_[q * 4], &triangles[q * 6]);
    this->send(device, triangles);
  }

  void drawWithNormal(GraphicsDevice& device) const override {
    using Lit = typename WithNormal<V>::type;
    if (quadCount() == 1) {
      Lit six[6];
      splitQuadWithNormal(this->vertices_.data(), six);
      drawSingle(device, six);
      return;
    }
    std::vector<Lit> triangles(quadCount() * 6);
    for (std::size_t q = 0; q < quadCount(); ++q) splitQuadWithNormal(&this->vertices_[q * 4], &triangles[q * 6]);
    this->send(device, triangles);
  }

  // The strip form of a single quad: the four corners in the order p0, p1, p3, p2,
  // through the shared buffer. A list of more or fewer quads draws as triangles.
  void drawStrip(GraphicsDevice& device) const {
    if (quadCount() != 1) return draw(device);
    const V* quad = this->vertices_.data();
    const V four[4] = {quad[0], quad[1], quad[3], quad[2]};
    drawSingle(device, four, Topology::TriangleStrip);
  }

  std::unique_ptr<VertexList> createEmpty() const override { return std::make_unique<VertexListQuadTemplate<V>>(); }

 private:
  template <class W, std::size_t N>
  static void drawSingle(GraphicsDevice& device, const W (&vertices)[N], Topology topology = Topology::TriangleList) {
    const GpuId buffer = device.singleQuadBuffer();
    device.backend().updateBuffer(buffer, vertices, sizeof(vertices));
    device.backend().draw(topology, device.inputLayout(), buffer, sizeof(W), static_cast<std::uint32_t>(N));
  }
};

template <class V>
class VertexListTriangleTemplate : public VertexListTemplate<V> {
 public:
  void draw(GraphicsDevice& device) const override {
    const std::size_t count = this->vertices_.size() / 3 * 3;
    if (count == 0) return;
    device.drawVertices(Topology::TriangleList, device.inputLayout(), this->vertices_.data(), sizeof(V),
                        static_cast<std::uint32_t>(count));
  }

  void drawWithNormal(GraphicsDevice& device) const override {
    std::vector<typename WithNormal<V>::type> lit;
    lit.reserve(this->vertices_.size());
    for (std::size_t i = 0; i + 3 <= this->vertices_.size(); i += 3) {
      const V* corner = &this->vertices_[i];
      const std::array<float, 3> n = normalised(triangleNormal(corner[0], corner[1], corner[2]));
      const float normal[3] = {n[0], n[1], n[2]};
      for (std::size_t k = 0; k < 3; ++k) lit.push_back(attachNormal(corner[k], normal));
    }
    this->send(device, lit);
  }

  std::unique_ptr<VertexList> createEmpty() const override { return std::make_unique<VertexListTriangleTemplate<V>>(); }
};

using VertexListQuadPosUv = VertexListQuadTemplate<XYZ_UV>;
using VertexListQuadPosColor = VertexListQuadTemplate<XYZ_COL>;
using VertexListQuadPosUvNorm = VertexListQuadTemplate<XYZ_UV_NORM>;
using VertexListQuadPosColorNorm = VertexListQuadTemplate<XYZ_COL_NORM>;
using VertexListTrianglePosUv = VertexListTriangleTemplate<XYZ_UV>;
using VertexListTrianglePosColor = VertexListTriangleTemplate<XYZ_COL>;
using VertexListTrianglePosUvNorm = VertexListTriangleTemplate<XYZ_UV_NORM>;
using VertexListTrianglePosColorNorm = VertexListTriangleTemplate<XYZ_COL_NORM>;

}  // namespace Media
