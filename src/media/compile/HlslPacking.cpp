#include "media/compile/HlslPacking.h"

namespace Media::Compile {

namespace {

constexpr std::uint32_t kRegisterSize = 16;

constexpr std::uint32_t alignToRegister(std::uint32_t offset) noexcept {
  return (offset + kRegisterSize - 1) / kRegisterSize * kRegisterSize;
}

struct Placement {
  bool startsRegister;
  std::uint32_t size;
};

// Size of a struct, matrix, vector or scalar type that is not an array.
Placement placeElement(const SpirvCross& cross, spvc_type_id typeId, spvc_type_id structType, unsigned member) {
  spvc_compiler compiler = cross.compiler();
  const spvc_type type = spvc_compiler_get_type_handle(compiler, typeId);
  if (spvc_type_get_basetype(type) == SPVC_BASETYPE_STRUCT) {
    return {true, packHlslConstants(cross, typeId)};
  }
  const std::uint32_t componentSize = spvc_type_get_bit_width(type) / 8;
  const std::uint32_t columns = spvc_type_get_columns(type);
  const std::uint32_t rows = spvc_type_get_vector_size(type);
  if (columns > 1) {
    // A row-major SPIR-V matrix (glslang's form of HLSL column_major) keeps each of its
    // rows in one register; otherwise each column.
    const bool rowMajor = spvc_compiler_has_member_decoration(compiler, structType, member, SpvDecorationRowMajor);
    const std::uint32_t registers = rowMajor ? rows : columns;
    const std::uint32_t perRegister = rowMajor ? columns : rows;
    return {true, (registers - 1) * kRegisterSize + perRegister * componentSize};
  }
  return {false, rows * componentSize};
}

Placement place(const SpirvCross& cross, spvc_type_id structType, unsigned member) {
  spvc_compiler compiler = cross.compiler();
  const spvc_type_id typeId = spvc_type_get_member_type(spvc_compiler_get_type_handle(compiler, structType), member);
  const spvc_type type = spvc_compiler_get_type_handle(compiler, typeId);
  const unsigned dimensions = spvc_type_get_num_array_dimensions(type);
  if (dimensions == 0) return placeElement(cross, typeId, structType, member);

  std::uint32_t count = 1;
  for (unsigned d = 0; d < dimensions; ++d) count *= spvc_type_get_array_dimension(type, d);
  const Placement element = placeElement(cross, spvc_type_get_base_type_id(type), structType, member);
  const std::uint32_t stride = alignToRegister(element.size);
  spvc_compiler_set_decoration(compiler, typeId, SpvDecorationArrayStride, stride);
  // The last element is not padded: what follows may share its register.
  return {true, count == 0 ? 0 : (count - 1) * stride + element.size};
}

}  // namespace

std::uint32_t packHlslConstants(const SpirvCross& cross, spvc_type_id structType) {
  spvc_compiler compiler = cross.compiler();
  const unsigned members = spvc_type_get_num_member_types(spvc_compiler_get_type_handle(compiler, structType));
  std::uint32_t offset = 0;
  for (unsigned member = 0; member < members; ++member) {
    const Placement placement = place(cross, structType, member);
    const bool straddles = offset % kRegisterSize + placement.size > kRegisterSize;
    if (placement.startsRegister || straddles) offset = alignToRegister(offset);
    spvc_compiler_set_member_decoration(compiler, structType, member, SpvDecorationOffset, offset);
    offset += placement.size;
  }
  return alignToRegister(offset);
}

}  // namespace Media::Compile
