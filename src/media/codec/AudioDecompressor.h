// How the AVI and WAV readers turn a sound stream into the bytes of one-second blocks:
// 16- and 24-bit PCM and 32-bit float as they lie, any other format through a decoder
// to 16-bit PCM at the stream's own rate and channels. Owned by one open file; its reads
// hold that file's audio lock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "media/audio/AudioBlockBuffer.h"
#include "media/codec/AudioCodec.h"
#include "media/codec/WaveFormat.h"

namespace Media {

class CodecProvider;
class RiffFile;

class AudioDecompressor {
 public:
  // The highest rate taken: a second of it is still a block of a few megabytes.
  static constexpr std::uint32_t kMaxSampleRate = 768000;

  // False when the stream gives no blocks: no decoder for its format, or samples that
  // are not 16- or 24-bit PCM or 32-bit float in one or two channels at 1 to
  // kMaxSampleRate a second.
  bool setup(CodecProvider& provider, const WaveFormat& source);

  bool usesCodec() const noexcept { return codec_ != nullptr; }
  // What the blocks are made from.
  const WaveFormat& target() const noexcept { return target_; }
  // Bytes of one second of the target.
  std::size_t blockBytes() const noexcept { return std::size_t{target_.blockAlign} * target_.sampleRate; }
  // One second of silence to read a block into; it lives until the next call.
  std::span<std::byte> silentBlock();
  // `bytes` of the target, described for a block.
  AudioSampleData sampleData(std::span<const std::byte> bytes) const noexcept;

  // Before reading from another place: drops the source and the output not yet taken,
  // and the decoder forgets what it holds.
  void clear();
  // Appends `size` bytes of `file` at `position` behind the source not yet decoded.
  // Throws "not enough source buffer." when they do not fit into two seconds' worth of
  // the target.
  void insertSourceData(RiffFile& file, std::uint64_t position, std::uint64_t size);
  // Decodes what the source holds; what the decoder used leaves the source.
  void decode();
  // Copies the oldest output not yet taken into `room`; returns the bytes copied.
  std::size_t takeOutput(std::span<std::byte> room);
  // The next `bytes` of output are dropped instead of taken: the samples of a block of
  // the source that lie before the place asked for.
  void skipOutput(std::size_t bytes) noexcept { skip_ = bytes; }

 private:
  WaveFormat target_;
  std::unique_ptr<AudioCodec> codec_;
  std::vector<std::byte> block_;
  std::vector<std::byte> source_;  // sized at the first insert
  std::size_t sourceFill_ = 0;
  std::vector<std::byte> pending_;
  std::size_t pendingTaken_ = 0;
  std::size_t skip_ = 0;
};

}  // namespace Media
