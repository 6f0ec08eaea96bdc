// Media files made in code, byte by byte, for the readers' tests: AVI files with any of
// their index forms, WAV files, and uncompressed BMP and TGA pictures.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/RiffBuilder.h"

namespace PluginTest {

struct AviChunk {
  AviChunk(std::string bytes, bool keyFrame = true, std::string chunkId = {})
      : data(std::move(bytes)), key(keyFrame), id(std::move(chunkId)) {}

  std::string data;
  bool key = true;
  std::string id;  // empty: "00db" for a key frame, "00dc" otherwise, "01wb" for sound
};

enum class AviIndex { Absolute, Relative, None, Avi2 };

struct AviContent {
  std::uint32_t width = 3;
  std::uint32_t height = 2;
  std::uint16_t bits = 32;
  std::string handler;      // four characters, or empty for 0
  std::string compression;  // biCompression: four characters, or empty for 0
  std::string videoExtra;   // bytes behind the BITMAPINFOHEADER
  std::vector<AviChunk> frames;
  std::optional<std::uint32_t> videoLength;  // dwLength; the frame count by default

  std::string waveFormat;  // no audio stream when empty
  std::vector<AviChunk> audio;
  std::optional<std::uint32_t> audioLength;  // dwLength; the indexed blocks by default
  std::optional<std::uint32_t> audioSampleSize;  // dwSampleSize; the block size by default

  AviIndex index = AviIndex::Absolute;
};

std::string makeAvi(const AviContent& content);

// A WAVEFORMATEX: cbSize and `extra` are written when `extra` is given.
std::string waveFormat(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate, std::uint16_t bits,
                       std::optional<std::string> extra = std::nullopt);
// The same with block size and bytes a second as given.
std::string waveFormat(std::uint16_t tag, std::uint16_t channels, std::uint32_t rate, std::uint16_t bits,
                       std::uint16_t blockAlign, std::uint32_t avgBytes, std::optional<std::string> extra);
// A WAVE file of `format` and `data`; the data chunk states `dataSize` when given.
std::string makeWav(const std::string& format, const std::string& data,
                    std::optional<std::uint32_t> dataSize = std::nullopt);

// A BMP of `rows` as the file stores them (each padded to 4 bytes here).
std::string makeBmp(std::int32_t width, std::int32_t height, std::uint16_t bits, const std::vector<std::string>& rows,
                    std::uint32_t compression = 0);
// A TGA of `pixels` as the file stores them.
std::string makeTga(std::uint16_t width, std::uint16_t height, std::uint8_t depth, std::uint8_t descriptor,
                    const std::string& pixels, std::uint8_t imageType = 2, const std::string& id = {},
                    std::uint16_t colourMapEntries = 0);

}  // namespace PluginTest
