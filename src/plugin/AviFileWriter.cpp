#include "plugin/AviFileWriter.h"

#include <algorithm>

#include "media/image/BitmapInfoHeader.h"
#include "media/image/ImageBuffer.h"
#include "system/Exception.h"
#include "system/File.h"

namespace Plugin {

namespace {

using Media::fourcc;

constexpr std::uint32_t kRiff = fourcc("RIFF");
constexpr std::uint32_t kList = fourcc("LIST");
constexpr std::uint32_t kJunk = fourcc("JUNK");
constexpr std::uint32_t kVideoChunk = fourcc("00db");
constexpr std::uint32_t kAudioChunk = fourcc("01wb");
constexpr std::uint16_t kVideoStream = 0;
constexpr std::uint16_t kAudioStream = 1;
constexpr std::uint32_t kKeyFrame = 0x10;
constexpr std::uint32_t kAvihFlags = 0x810;  // has an index, interleaved
constexpr std::uint32_t kDmlhBytes = 248;

// Little-endian fields, appended.
class Bytes {
 public:
  Bytes& u8(std::uint8_t value) {
    data_.push_back(std::byte{value});
    return *this;
  }
  Bytes& u16(std::uint16_t value) { return u8(static_cast<std::uint8_t>(value)).u8(static_cast<std::uint8_t>(value >> 8)); }
  Bytes& u32(std::uint32_t value) {
    return u16(static_cast<std::uint16_t>(value)).u16(static_cast<std::uint16_t>(value >> 16));
  }
  Bytes& u64(std::uint64_t value) { return u32(static_cast<std::uint32_t>(value)).u32(static_cast<std::uint32_t>(value >> 32)); }
  Bytes& zeros(std::size_t count) {
    data_.resize(data_.size() + count);
    return *this;
  }
  std::span<const std::byte> span() const noexcept { return data_; }
  std::size_t size() const noexcept { return data_.size(); }

 private:
  std::vector<std::byte> data_;
};

}  // namespace

AviFileWriter::AviFileWriter(System::File& file, const AviStreamFormat& format, std::uint64_t riffLimit)
    : file_(file), format_(format), riffLimit_(riffLimit) {
  position_ = static_cast<std::uint64_t>(file_.seek(0, System::File::Origin::Current));
  const Media::BitmapInfoHeader bitmap =
      Media::ImageBuffer::getBitmapInfoHeader(format.videoFormat, format.width, format.height);
  const std::uint32_t block = std::uint32_t{format.audioBits} * format.channels / 8;

  riff_ = openList(kRiff, fourcc("AVI "));
  const std::uint64_t hdrl = openList(kList, fourcc("hdrl"));
  Bytes avih;
  avih.u32(static_cast<std::uint32_t>(static_cast<double>(format.scale) * 1000000.0 / format.rate))
      .u32(0)
      .u32(0)
      .u32(kAvihFlags)
      .u32(0)  // total frames of the first RIFF, at its close
      .u32(0)
      .u32(2)
      .u32(0)
      .u32(format.width)
      .u32(format.height)
      .zeros(16);
  avih_ = writeChunk(fourcc("avih"), avih.span());

  const std::uint64_t videoList = openList(kList, fourcc("strl"));
  Bytes videoHeader;
  videoHeader.u32(fourcc("vids")).u32(bitmap.biCompression).u32(0).u16(0).u16(0).u32(0);
  videoHeader.u32(format.scale).u32(format.rate).u32(0).u32(0).u32(0).u32(0).u32(0);
  videoHeader.u32(0).u32(0).u32(format.width).u32(format.height);
  videoStrh_ = writeChunk(fourcc("strh"), videoHeader.span());
  writeChunk(fourcc("strf"), std::as_bytes(std::span{&bitmap, 1}));
  videoIndex_.chunkId = kVideoChunk;
  videoIndex_.position = writeChunk(kJunk, Bytes().zeros(kSuperIndexBytes).span());
  closeList(videoList);

  const std::uint64_t audioList = openList(kList, fourcc("strl"));
  Bytes audioHeader;
  audioHeader.u32(fourcc("auds")).u32(format.audioTag).u32(0).u16(0).u16(0).u32(0);
  audioHeader.u32(block).u32(block * format.sampleRate).u32(0).u32(0).u32(0).u32(0).u32(block);
  audioHeader.zeros(16);
  audioStrh_ = writeChunk(fourcc("strh"), audioHeader.span());
  Bytes wave;
  wave.u16(format.audioTag).u16(format.channels).u32(format.sampleRate).u32(block * format.sampleRate);
  wave.u16(static_cast<std::uint16_t>(block)).u16(format.audioBits).u16(0);
  writeChunk(fourcc("strf"), wave.span());
  audioIndex_.chunkId = kAudioChunk;
  audioIndex_.position = writeChunk(kJunk, Bytes().zeros(kSuperIndexBytes).span());
  closeList(audioList);

  Bytes odml;
  odml.u32(fourcc("odml")).u32(fourcc("dmlh")).u32(kDmlhBytes).zeros(kDmlhBytes);
  odml_ = writeChunk(kJunk, odml.span());
  closeList(hdrl);

  writeJunkPadding();
  movi_ = openList(kList, fourcc("movi"));
}

std::uint64_t AviFileWriter::position() { return position_; }

void AviFileWriter::seekTo(std::uint64_t position) {
  file_.seek(static_cast<std::int64_t>(position), System::File::Origin::Begin);
  position_ = position;
}

void AviFileWriter::writeBytes(const void* data, std::size_t size) {
  file_.write(data, size);
  position_ += size;
}

std::uint64_t AviFileWriter::writeChunk(std::uint32_t id, std::span<const std::byte> data) {
  const std::uint64_t header = position_;
  Bytes head;
  head.u32(id).u32(static_cast<std::uint32_t>(data.size()));
  writeBytes(head.span().data(), head.size());
  writeBytes(data.data(), data.size());
  if (data.size() % 2 != 0) {
    const std::byte pad{0};
    writeBytes(&pad, 1);
  }
  return header;
}

std::uint64_t AviFileWriter::openList(std::uint32_t id, std::uint32_t type) {
  const std::uint64_t header = position_;
  Bytes head;
  head.u32(id).u32(0).u32(type);
  writeBytes(head.span().data(), head.size());
  return header;
}

void AviFileWriter::closeList(std::uint64_t header) {
  patch32(header + 4, static_cast<std::uint32_t>(position_ - header - 8));
}

void AviFileWriter::patch32(std::uint64_t at, std::uint32_t value) {
  const std::uint64_t back = position_;
  seekTo(at);
  Bytes bytes;
  bytes.u32(value);
  writeBytes(bytes.span().data(), bytes.size());
  seekTo(back);
}

// The first chunk of a movi list starts on a multiple of 2048.
void AviFileWriter::writeJunkPadding() {
  const auto p = static_cast<std::uint32_t>(position_);
  const std::uint32_t length = 0x800 - ((p + 0x14) & 0x7FF);
  writeChunk(kJunk, Bytes().zeros(length).span());
}

void AviFileWriter::writeFrame(std::span<const std::byte> bitmap, std::span<const std::byte> samples,
                               std::uint32_t sampleCount) {
  // A full RIFF is closed when the next frame comes, so that the file never ends in an
  // empty one.
  if (position_ - riff_ >= riffLimit_) changeRiff();
  if (!bitmap.empty()) {
    const auto size = static_cast<std::uint32_t>(bitmap.size());
    entries_.push_back({writeChunk(kVideoChunk, bitmap), size, kVideoStream});
    largestVideo_ = std::max(largestVideo_, size);
    ++totalFrames_;
  }
  if (!samples.empty() && sampleCount > 0) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    entries_.push_back({writeChunk(kAudioChunk, samples), size, kAudioStream});
    largestAudio_ = std::max(largestAudio_, size);
    totalSamples_ += sampleCount;
  }
}

void AviFileWriter::changeRiff() {
  extended_ = true;
  closeRiff();
  ++riffCount_;
  framesAtRiff_ = totalFrames_;
  samplesAtRiff_ = totalSamples_;
  entries_.clear();
  if (riffCount_ >= kMostRiffs) {
    throw System::NoteException("Plugin::AviFileSaveFile::changeRiffChunk", "exceeded super index entry max.");
  }
  riff_ = openList(kRiff, fourcc("AVIX"));
  writeJunkPadding();
  movi_ = openList(kList, fourcc("movi"));
}

void AviFileWriter::finish() {
  if (finished_) return;
  finished_ = true;
  closeRiff();
}

void AviFileWriter::writeSuperIndex(const SuperIndex& super) {
  Bytes index;
  index.u16(4).u8(0).u8(0).u32(static_cast<std::uint32_t>(super.entries.size())).u32(super.chunkId).zeros(12);
  for (const auto& [offset, size, duration] : super.entries) {
    index.u64(offset).u32(static_cast<std::uint32_t>(size)).u32(static_cast<std::uint32_t>(duration));
  }
  index.zeros(kSuperIndexBytes - index.size());
  const std::uint64_t back = position_;
  seekTo(super.position);
  Bytes head;
  head.u32(fourcc("indx")).u32(kSuperIndexBytes);
  writeBytes(head.span().data(), head.size());
  writeBytes(index.span().data(), index.size());
  seekTo(back);
}

void AviFileWriter::writeStandardIndex(std::uint16_t stream, SuperIndex& super) {
  std::vector<const Entry*> mine;
  for (const Entry& entry : entries_) {
    if (entry.stream == stream) mine.push_back(&entry);
  }
  const std::uint64_t base = movi_ + 12;  // behind the movi fourcc
  const auto count = static_cast<std::uint32_t>(mine.size());
  const std::uint64_t duration =
      stream == kVideoStream ? totalFrames_ - framesAtRiff_ : totalSamples_ - samplesAtRiff_;
  super.entries.push_back({position_, 8ull * count + 24, duration});
  writeSuperIndex(super);
  Bytes index;
  index.u16(2).u8(0).u8(1).u32(count).u32(super.chunkId).u64(base).u32(0);
  for (const Entry* entry : mine) index.u32(static_cast<std::uint32_t>(entry->position + 8 - base)).u32(entry->size);
  writeChunk(stream == kVideoStream ? fourcc("ix00") : fourcc("ix01"), index.span());
}

void AviFileWriter::writeLegacyIndex() {
  Bytes index;
  const std::uint64_t moviType = movi_ + 8;
  for (const Entry& entry : entries_) {
    index.u32(entry.stream == kVideoStream ? kVideoChunk : kAudioChunk)
        .u32(kKeyFrame)
        .u32(static_cast<std::uint32_t>(entry.position - moviType))
        .u32(entry.size);
  }
  writeChunk(fourcc("idx1"), index.span());
}

void AviFileWriter::closeRiff() {
  const bool first = riffCount_ == 0;
  if (extended_) {
    writeStandardIndex(kVideoStream, videoIndex_);
    writeStandardIndex(kAudioStream, audioIndex_);
  }
  closeList(movi_);
  if (first) writeLegacyIndex();
  closeList(riff_);

  if (first) patch32(avih_ + 8 + 16, static_cast<std::uint32_t>(totalFrames_));
  if (extended_) {
    patch32(odml_, kList);
    patch32(odml_ + 8 + 12, static_cast<std::uint32_t>(totalFrames_));
  }
  // The stream headers' length and buffer size, 32 and 36 bytes into their data.
  patch32(videoStrh_ + 8 + 32, static_cast<std::uint32_t>(totalFrames_));
  patch32(videoStrh_ + 8 + 36, largestVideo_);
  patch32(audioStrh_ + 8 + 32, static_cast<std::uint32_t>(totalSamples_));
  patch32(audioStrh_ + 8 + 36, largestAudio_);
}

}  // namespace Plugin
