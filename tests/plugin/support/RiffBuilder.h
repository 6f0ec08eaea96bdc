// Little-endian bytes of hand-made media files: RIFF chunks and lists with their sizes
// filled in when they close, and fields patched after the fact (index offsets that
// are known only once the data is written).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace PluginTest {

class RiffBuilder {
 public:
  // Starts a chunk ("RIFF" and "LIST" take a type); returns what close() needs.
  std::size_t open(std::string_view code, std::string_view listType = {});
  // Fills in the size of the chunk begun at `sizeField` and pads it to an even length.
  void close(std::size_t sizeField);
  // A whole chunk holding `payload`.
  void chunk(std::string_view code, std::string_view payload);

  void u8(std::uint8_t value) { bytes_.push_back(static_cast<char>(value)); }
  void u16(std::uint16_t value);
  void u32(std::uint32_t value);
  void u64(std::uint64_t value);
  void code(std::string_view fourcc) { bytes_.append(fourcc.substr(0, 4)); }
  void raw(std::string_view data) { bytes_.append(data); }
  void zeros(std::size_t count) { bytes_.append(count, '\0'); }
  void patch32(std::size_t at, std::uint32_t value);
  void patch64(std::size_t at, std::uint64_t value);

  std::size_t size() const noexcept { return bytes_.size(); }
  const std::string& bytes() const noexcept { return bytes_; }

 private:
  std::string bytes_;
};

// Little-endian fields into a string, for payloads built apart.
std::string le16(std::uint16_t value);
std::string le32(std::uint32_t value);

}  // namespace PluginTest
