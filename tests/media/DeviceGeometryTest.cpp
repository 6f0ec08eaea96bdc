// The arithmetic of the device that needs no GPU: crop rectangles, input layouts from
// signatures, the choice of draw path and image format qualifiers. (The size limit is
// checked on the buffers.)
#include <gtest/gtest.h>

#include "media/BufferGeometry.h"
#include "media/DrawPath.h"
#include "media/InputLayout.h"
#include "media/ShaderVariants.h"

namespace {

using Media::ComponentType;
using Media::CopyRegion;

TEST(DeviceGeometry, CropCopiesTheOverlapToWhereTheOffsetPutsIt) {
  struct Case {
    std::int32_t x, y;
    std::uint32_t width, height;
    std::optional<CopyRegion> expected;
  };
  // Source 10 x 8 in every case.
  const Case cases[] = {
      {2, 1, 4, 3, CopyRegion{2, 1, 0, 0, 4, 3}},       // inside
      {-3, -2, 6, 5, CopyRegion{0, 0, 3, 2, 3, 3}},     // negative offsets shift the target
      {7, 6, 6, 6, CopyRegion{7, 6, 0, 0, 3, 2}},       // over the far edges
      {-5, -5, 20, 20, CopyRegion{0, 0, 5, 5, 10, 8}},  // larger than the source
      {10, 0, 4, 4, std::nullopt},                      // just right of the source
      {-4, 0, 4, 4, std::nullopt},                      // just left of it
      {0, 0, 0, 4, std::nullopt},                       // no area
      {INT32_MIN, 0, 16384, 16384, std::nullopt},       // near the integer limits: no wrap
      {INT32_MAX, 0, 4, 4, std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Media::cropRegion(10, 8, c.width, c.height, c.x, c.y), c.expected) << c.x << "," << c.y;
  }
}

TEST(DeviceGeometry, InputComponentsFollowMaskAndSemantic) {
  struct Case {
    std::uint8_t mask;
    const char* semantic;
    std::uint32_t components;
  };
  const Case cases[] = {{1, "TEXCOORD", 1}, {2, "TEXCOORD", 2}, {3, "TEXCOORD", 2},  {4, "TEXCOORD", 3},
                        {7, "COLOR", 3},    {8, "COLOR", 4},    {15, "TEXCOORD", 4}, {15, "POSITION", 3},
                        {12, "NORMAL", 3},  {0, "COLOR", 0},    {16, "COLOR", 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(Media::inputComponentCount(c.mask, c.semantic), c.components) << int(c.mask) << " " << c.semantic;
  }
}

TEST(DeviceGeometry, InputLayoutPlacesElementsOneAfterAnother) {
  const std::vector<Media::ShaderInputParameter> inputs = {{"POSITION", 0, 15, ComponentType::Float32},
                                                           {"TEXCOORD", 0, 3, ComponentType::Float32},
                                                           {"BLENDINDICES", 0, 1, ComponentType::UInt32},
                                                           {"COLOR", 1, 15, ComponentType::SInt32}};
  const std::vector<Media::InputElement> layout = Media::inputLayoutFor(inputs);
  ASSERT_EQ(layout.size(), 4u);
  EXPECT_EQ(layout[0].offset, 0u);
  EXPECT_EQ(layout[1].offset, 12u);  // a four-component position reads three floats
  EXPECT_EQ(layout[2].offset, 20u);
  EXPECT_EQ(layout[3].offset, 24u);
  EXPECT_EQ(layout[3].semanticIndex, 1u);
  EXPECT_EQ(layout[3].location, 3u);
  EXPECT_EQ(Media::inputLayoutStride(layout), 40u);
}

TEST(DeviceGeometry, DrawPathComesFromTheSignature) {
  using Media::DrawPath;
  const Media::ShaderInputParameter position{"SV_Position", 0, 15, ComponentType::Float32};
  const Media::ShaderInputParameter coordinates{"TEXCOORD", 0, 3, ComponentType::Float32};
  EXPECT_EQ(Media::drawPathFor({position}), DrawPath::Position);
  EXPECT_EQ(Media::drawPathFor({{"SV_POSITION", 0, 15, ComponentType::Float32}}), DrawPath::Position);
  EXPECT_EQ(Media::drawPathFor({position, coordinates}), DrawPath::PositionTexCoord);
  EXPECT_EQ(Media::drawPathFor({coordinates, position}), DrawPath::None);
  EXPECT_EQ(Media::drawPathFor({position, {"TEXCOORD", 0, 3, ComponentType::SInt32}}), DrawPath::None);
  EXPECT_EQ(Media::drawPathFor({position, coordinates, {"COLOR", 0, 15, ComponentType::Float32}}), DrawPath::None);
  EXPECT_EQ(Media::drawPathFor({}), DrawPath::None);
}

TEST(DeviceGeometry, ImageFormatTokensTakeTheQualifierOfTheirUnit) {
  Media::CompiledShader shader;
  shader.glsl =
      "layout(binding = 1, SORVEL_IMAGE_FORMAT_1) uniform image2D a;\n"
      "layout(binding = 12, SORVEL_IMAGE_FORMAT_12) uniform image2D b;\n";
  shader.images = {{0, 1}, {3, 12}};
  const std::string glsl = Media::glslForImageFormats(shader, {Media::Format::A8Unorm, Media::Format::Rgba16Float});
  EXPECT_EQ(glsl,
            "layout(binding = 1, rgba8) uniform image2D a;\n"
            "layout(binding = 12, rgba16f) uniform image2D b;\n");
}

}  // namespace
