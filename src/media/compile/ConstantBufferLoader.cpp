#include "media/compile/ConstantBufferLoader.h"

#include "media/compile/CompileFailure.h"

namespace Media::Compile {

namespace {

constexpr std::uint32_t kRegisterSize = 16;
constexpr const char* kComponents = "xyzw";

class LoaderWriter {
 public:
  LoaderWriter(const SpirvCross& cross, std::string registers)
      : compiler_(cross.compiler()), registers_(std::move(registers)) {}

  // Writes the assignments that fill the struct at `path` from `offset` on.
  void writeStruct(const std::string& path, spvc_type_id structType, std::uint32_t offset) {
    const unsigned members = spvc_type_get_num_member_types(spvc_compiler_get_type_handle(compiler_, structType));
    for (unsigned member = 0; member < members; ++member) {
      const std::string name = "m" + std::to_string(member);
      spvc_compiler_set_member_name(compiler_, structType, member, name.c_str());
      const std::uint32_t memberOffset =
          offset + spvc_compiler_get_member_decoration(compiler_, structType, member, SpvDecorationOffset);
      const bool rowMajor = spvc_compiler_has_member_decoration(compiler_, structType, member, SpvDecorationRowMajor);
      spvc_compiler_unset_member_decoration(compiler_, structType, member, SpvDecorationRowMajor);
      const spvc_type_id memberType =
          spvc_type_get_member_type(spvc_compiler_get_type_handle(compiler_, structType), member);
      writeMember(path + "." + name, memberType, memberOffset, rowMajor);
    }
  }

  const std::string& text() const noexcept { return text_; }

 private:
  void writeMember(const std::string& path, spvc_type_id typeId, std::uint32_t offset, bool rowMajor) {
    const spvc_type type = spvc_compiler_get_type_handle(compiler_, typeId);
    const unsigned dimensions = spvc_type_get_num_array_dimensions(type);
    if (dimensions > 1) throwCompileFailure("multi-dimensional arrays in a cbuffer are not supported");
    if (dimensions == 1) {
      const std::uint32_t count = spvc_type_get_array_dimension(type, 0);
      const std::uint32_t stride = spvc_compiler_get_decoration(compiler_, typeId, SpvDecorationArrayStride);
      for (std::uint32_t i = 0; i < count; ++i) {
        writeElement(path + "[" + std::to_string(i) + "]", spvc_type_get_base_type_id(type), offset + i * stride,
                     rowMajor);
      }
      return;
    }
    writeElement(path, typeId, offset, rowMajor);
  }

  void writeElement(const std::string& path, spvc_type_id typeId, std::uint32_t offset, bool rowMajor) {
    const spvc_type type = spvc_compiler_get_type_handle(compiler_, typeId);
    if (spvc_type_get_basetype(type) == SPVC_BASETYPE_STRUCT) {
      writeStruct(path, typeId, offset);
      return;
    }
    const std::uint32_t columns = spvc_type_get_columns(type);
    const std::uint32_t rows = spvc_type_get_vector_size(type);
    if (columns == 1) {
      assign(path, type, offset, rows);
    } else if (!rowMajor) {
      for (std::uint32_t c = 0; c < columns; ++c) {
        assign(path + "[" + std::to_string(c) + "]", type, offset + c * kRegisterSize, rows);
      }
    } else {
      // Each register holds one row: component c of register r is column c, row r.
      for (std::uint32_t r = 0; r < rows; ++r) {
        for (std::uint32_t c = 0; c < columns; ++c) {
          assign(path + "[" + std::to_string(c) + "][" + std::to_string(r) + "]", type, offset + r * kRegisterSize + c * 4,
                 1);
        }
      }
    }
  }

  // One scalar or vector of `count` components at byte `offset`, converted from the
  // register bits to the component type of `type`.
  void assign(const std::string& path, spvc_type type, std::uint32_t offset, std::uint32_t count) {
    const std::uint32_t component = offset % kRegisterSize / 4;
    const std::string bits = registers_ + "[" + std::to_string(offset / kRegisterSize) + "]." +
                             std::string(kComponents + component, count);
    const std::string suffix = count == 1 ? "" : std::to_string(count);
    std::string value;
    switch (spvc_type_get_basetype(type)) {
      case SPVC_BASETYPE_FP32:
        value = "uintBitsToFloat(" + bits + ")";
        break;
      case SPVC_BASETYPE_INT32:
        value = (count == 1 ? "int(" : "ivec" + suffix + "(") + bits + ")";
        break;
      case SPVC_BASETYPE_UINT32:
        value = bits;
        break;
      default:
        throwCompileFailure("a cbuffer member of this type is not supported: " + path);
    }
    text_ += "    v" + path + " = " + value + ";\n";
  }

  spvc_compiler compiler_;
  std::string registers_;
  std::string text_;
};

}  // namespace

std::string makeConstantBufferLoader(const SpirvCross& cross, spvc_type_id structType,
                                     const std::string& variableName, std::uint32_t binding,
                                     std::uint32_t sizeInBytes) {
  const std::string typeName = variableName + "_t";
  const std::string registers = variableName + "_registers";
  spvc_compiler_set_name(cross.compiler(), structType, typeName.c_str());
  LoaderWriter writer(cross, registers);
  writer.writeStruct("", structType, 0);
  return "layout(std140, binding = " + std::to_string(binding) + ") uniform " + variableName + "_block\n{\n    uvec4 " +
         registers + "[" + std::to_string(sizeInBytes / kRegisterSize) + "];\n};\n\n" + typeName + " " +
         variableName + "_load()\n{\n    " + typeName + " v;\n" + writer.text() + "    return v;\n}\n\n#define " +
         variableName + " " + variableName + "_load()\n";
}

}  // namespace Media::Compile
