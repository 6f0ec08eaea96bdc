#include "media/codec/AudioDecompressor.h"

#include <algorithm>
#include <cstring>

#include "media/codec/CodecProvider.h"
#include "media/riff/RiffFile.h"
#include "system/Exception.h"

namespace Media {

bool AudioDecompressor::setup(CodecProvider& provider, const WaveFormat& source) {
  if (source.channels < 1 || source.channels > 2 || source.sampleRate < 1 || source.sampleRate > kMaxSampleRate) {
    return false;
  }
  if (source.isPcmOrFloat()) {
    target_ = source;
    target_.formatTag = source.codecTag;
    target_.extra.clear();
    target_.blockAlign = static_cast<std::uint16_t>(source.channels * (source.bitsPerSample / 8));
    target_.avgBytesPerSec = target_.blockAlign * source.sampleRate;
  } else {
    codec_ = provider.openAudio(source);
    if (!codec_) return false;
    target_ = WaveFormat::pcm16(source.channels, source.sampleRate);
  }
  // 8-bit PCM has no block form.
  return (target_.codecTag == WaveFormat::kPcm && (target_.bitsPerSample == 16 || target_.bitsPerSample == 24)) ||
         (target_.codecTag == WaveFormat::kIeeeFloat && target_.bitsPerSample == 32);
}

std::span<std::byte> AudioDecompressor::silentBlock() {
  // Rounded up to whole 32-byte steps, as the block's conversion reads them.
  block_.assign((blockBytes() + 31) / 32 * 32, std::byte{0});
  return std::span(block_.data(), blockBytes());
}

AudioSampleData AudioDecompressor::sampleData(std::span<const std::byte> bytes) const noexcept {
  return AudioSampleData{bytes, target_.codecTag == WaveFormat::kIeeeFloat ? SampleFormat::Float : SampleFormat::Pcm,
                         target_.sampleRate, target_.bitsPerSample, target_.channels};
}

void AudioDecompressor::clear() {
  sourceFill_ = 0;
  pending_.clear();
  pendingTaken_ = 0;
  skip_ = 0;
  if (codec_) codec_->reset();
}

void AudioDecompressor::insertSourceData(RiffFile& file, std::uint64_t position, std::uint64_t size) {
  if (source_.empty()) source_.resize(std::size_t{target_.avgBytesPerSec} * 2);
  if (size > source_.size() - sourceFill_) {
    throw System::NoteException("Media::AudioDecompressor::insertSourceData", "not enough source buffer.");
  }
  sourceFill_ += file.readAt(position, source_.data() + sourceFill_, static_cast<std::size_t>(size));
}

void AudioDecompressor::decode() {
  if (pendingTaken_ == pending_.size()) {
    pending_.clear();
    pendingTaken_ = 0;
  }
  const std::size_t used = std::min(codec_->decode(std::span(source_.data(), sourceFill_), pending_), sourceFill_);
  if (used == 0) return;
  std::memmove(source_.data(), source_.data() + used, sourceFill_ - used);
  sourceFill_ -= used;
}

std::size_t AudioDecompressor::takeOutput(std::span<std::byte> room) {
  const std::size_t skipped = std::min(skip_, pending_.size() - pendingTaken_);
  pendingTaken_ += skipped;
  skip_ -= skipped;
  const std::size_t count = std::min(room.size(), pending_.size() - pendingTaken_);
  if (count == 0) return 0;
  std::memcpy(room.data(), pending_.data() + pendingTaken_, count);
  pendingTaken_ += count;
  return count;
}

}  // namespace Media
