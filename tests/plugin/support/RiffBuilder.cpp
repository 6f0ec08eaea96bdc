#include "support/RiffBuilder.h"

namespace PluginTest {

std::string le16(std::uint16_t value) {
  return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

std::string le32(std::uint32_t value) { return le16(static_cast<std::uint16_t>(value)) + le16(static_cast<std::uint16_t>(value >> 16)); }

void RiffBuilder::u16(std::uint16_t value) { bytes_ += le16(value); }
void RiffBuilder::u32(std::uint32_t value) { bytes_ += le32(value); }
void RiffBuilder::u64(std::uint64_t value) {
  u32(static_cast<std::uint32_t>(value));
  u32(static_cast<std::uint32_t>(value >> 32));
}

std::size_t RiffBuilder::open(std::string_view fourcc, std::string_view listType) {
  code(fourcc);
  const std::size_t sizeField = bytes_.size();
  u32(0);
  if (!listType.empty()) code(listType);
  return sizeField;
}

void RiffBuilder::close(std::size_t sizeField) {
  patch32(sizeField, static_cast<std::uint32_t>(bytes_.size() - sizeField - 4));
  if (bytes_.size() % 2 != 0) bytes_.push_back('\0');
}

void RiffBuilder::chunk(std::string_view fourcc, std::string_view payload) {
  const std::size_t at = open(fourcc);
  raw(payload);
  close(at);
}

void RiffBuilder::patch32(std::size_t at, std::uint32_t value) { bytes_.replace(at, 4, le32(value)); }

void RiffBuilder::patch64(std::size_t at, std::uint64_t value) {
  patch32(at, static_cast<std::uint32_t>(value));
  patch32(at + 4, static_cast<std::uint32_t>(value >> 32));
}

}  // namespace PluginTest
