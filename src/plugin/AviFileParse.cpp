#include "plugin/AviFileParse.h"

#include <algorithm>
#include <limits>

#include "media/codec/WaveFormat.h"
#include "media/image/BitmapInfoHeader.h"
#include "media/riff/FourccEqual.h"
#include "media/riff/LittleEndian.h"
#include "plugin/InputFile.h"
#include "plugin/SampleCount.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace Plugin {

namespace {

using Media::fourcc;
using Media::readLe16;
using Media::readLe32;
using Media::readLe64;

constexpr const char* kPlace = "Plugin::AviFileInput::FileParse::open";
constexpr std::uint32_t kStreamHeaderBytes = 56;
constexpr std::uint32_t kFormatSizeLimit = 0x10000;
constexpr std::uint32_t kIndexHeaderBytes = 24;
constexpr std::uint32_t kKeyFrame = 0x10;       // AVIIF_KEYFRAME
constexpr std::uint32_t kDeltaBit = 0x80000000;  // of an AVI 2 entry's size

std::uint16_t streamIdOf(std::uint32_t chunkId) { return static_cast<std::uint16_t>(chunkId & 0xFFFF); }

// Samples of an audio stream header's length; the rate and scale say how long it is
// when they do not count samples themselves.
std::int64_t samplesOf(std::uint32_t length, std::uint32_t rate, std::uint32_t scale, std::uint32_t sampleRate) {
  if (std::uint64_t{rate} == std::uint64_t{scale} * sampleRate) return length;
  return sampleCountOf(static_cast<double>(length) / rate * scale * sampleRate);
}

}  // namespace

AviStreams AviFileParse::parse(const std::wstring& path) {
  AviFileParse parse(path);
  parse.open();
  return std::move(parse.streams_);
}

void AviFileParse::open() {
  if (!file_.getRiffChunk(fourcc("AVI "), riff_)) throw System::NoteException(kPlace, "AVI chunk not found.");
  riff_.rewind();
  if (!file_.findChunk(fourcc("hdrl"), hdrl_, riff_)) throw System::NoteException(kPlace, "hdrl chunk not found.");
  Media::RiffChunk odml;
  openDml_ = file_.findChunk(fourcc("odml"), odml, hdrl_);
  hdrl_.rewind();
  for (std::uint8_t number = 0; file_.findChunk(fourcc("strl"), strl_, hdrl_); ++number) readStream(number);

  if (superIndex_.empty()) {
    riff_.rewind();
    if (!file_.findChunk(fourcc("movi"), movi_, riff_)) throw System::NoteException(kPlace, "movi chunk not found.");
    riff_.rewind();
    Media::RiffChunk idx1;
    if (file_.findChunk(fourcc("idx1"), idx1, riff_)) {
      readAvi1Index(idx1);
    } else {
      scanMovi();
    }
  } else {
    readAvi2Indexes();
  }
  if (audioBytes_ != 0 && streams_.blockAlign != 0) streams_.indexedSamples = audioBytes_ / streams_.blockAlign;
  checkCounts();
}

void AviFileParse::readStream(std::uint8_t number) {
  Media::RiffChunk strh;
  if (!file_.findChunk(fourcc("strh"), strh, strl_) || strh.size < kStreamHeaderBytes) return;
  std::byte header[kStreamHeaderBytes];
  if (file_.readAt(strh.start, header, sizeof(header)) < sizeof(header)) return;
  const std::uint16_t id = static_cast<std::uint16_t>('0' | (('0' + number) & 0xFF) << 8);
  const std::uint32_t type = readLe32(header);
  bool taken = false;
  // The first stream of each kind is the one read; later ones are passed over.
  if (type == fourcc("vids") && !hasVideoId_) {
    hasVideoId_ = true;
    videoId_ = id;
    taken = readVideoStream(header);
  } else if (type == fourcc("auds") && !hasAudioId_) {
    hasAudioId_ = true;
    audioId_ = id;
    taken = readAudioStream(header);
  }
  if (!taken || !openDml_) return;
  const std::uint64_t capacity = readSuperIndex();
  (type == fourcc("vids") ? videoCapacity_ : audioCapacity_) += capacity;
}

bool AviFileParse::readStreamFormat(const char* place, std::vector<std::byte>& format) {
  strl_.rewind();
  Media::RiffChunk strf;
  if (!file_.findChunk(fourcc("strf"), strf, strl_)) return false;
  if (strf.size >= kFormatSizeLimit) {
    System::Log::info(place, "invalid stream format size.");
    return false;
  }
  format = file_.readBytes(strf.start, strf.size);
  return true;
}

bool AviFileParse::readVideoStream(const std::byte* streamHeader) {
  if (!readStreamFormat("Plugin::AviFileInput::FileParse::getVideoStreamHeader", streams_.videoFormat) ||
      streams_.videoFormat.size() < sizeof(Media::BitmapInfoHeader)) {
    return false;
  }
  streams_.rate = readLe32(streamHeader + 24);
  streams_.scale = readLe32(streamHeader + 20);
  streams_.frameCount = static_cast<std::int32_t>(
      std::min<std::uint32_t>(readLe32(streamHeader + 32), std::numeric_limits<std::int32_t>::max()));
  const std::uint32_t handler = readLe32(streamHeader + 4);
  streams_.handler = handler != 0 ? handler : readLe32(streams_.videoFormat.data() + 16);
  streams_.flags |= InputFile::Video;
  return true;
}

bool AviFileParse::readAudioStream(const std::byte* streamHeader) {
  if (!readStreamFormat("Plugin::AviFileInput::FileParse::getAudioStreamHeader", streams_.audioFormat)) return false;
  const std::optional<Media::WaveFormat> format = Media::WaveFormat::parse(streams_.audioFormat);
  const std::uint32_t scale = readLe32(streamHeader + 20);
  const std::uint32_t rate = readLe32(streamHeader + 24);
  const std::uint32_t length = readLe32(streamHeader + 32);
  // A stream of no sample size has no audio; nor has one whose rate or scale is 0,
  // since its blocks would have no place in the stream.
  if (!format || readLe32(streamHeader + 44) == 0 || rate == 0 || scale == 0) return false;
  streams_.sampleCount = samplesOf(length, rate, scale, format->sampleRate);
  streams_.audioLength = length;
  streams_.audioRate = rate;
  streams_.audioScale = scale;
  streams_.blockAlign = format->blockAlign != 0 ? format->blockAlign : format->channels * (format->bitsPerSample / 8u);
  streams_.flags |= InputFile::Audio;
  return true;
}

std::uint64_t AviFileParse::readSuperIndex() {
  strl_.rewind();
  Media::RiffChunk indx;
  if (!file_.findChunk(fourcc("indx"), indx, strl_) || indx.size < kIndexHeaderBytes) return 0;
  std::byte header[kIndexHeaderBytes];
  if (file_.readAt(indx.start, header, sizeof(header)) < sizeof(header)) return 0;
  const std::uint64_t entries = readLe32(header + 4);
  const std::vector<std::byte> bytes =
      file_.readBytes(indx.start + kIndexHeaderBytes, std::min(entries * 16, indx.size - kIndexHeaderBytes));
  std::uint64_t capacity = 0;
  for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16) {
    superIndex_.push_back(readLe64(bytes.data() + at));
    const std::uint32_t size = readLe32(bytes.data() + at + 8);
    if (size >= kIndexHeaderBytes) capacity += (size - kIndexHeaderBytes) / 8;
  }
  return capacity;
}

void AviFileParse::readAvi2Indexes() {
  streams_.frames.reserve(reservable(videoCapacity_, 8));
  streams_.audioChunks.reserve(reservable(audioCapacity_, 8));
  for (const std::uint64_t position : superIndex_) {
    std::byte header[8 + kIndexHeaderBytes];
    if (file_.readAt(position, header, sizeof(header)) < sizeof(header)) continue;
    const std::uint32_t chunkSize = readLe32(header + 4);
    const std::byte* index = header + 8;
    const std::uint16_t stream = streamIdOf(readLe32(index + 8));
    const bool video = hasVideoId_ && stream == videoId_;
    if (!video && !(hasAudioId_ && stream == audioId_)) continue;
    const std::uint64_t entries = readLe32(index + 4);
    const std::uint64_t base = readLe64(index + 12);
    const std::uint64_t held = chunkSize >= kIndexHeaderBytes ? chunkSize - kIndexHeaderBytes : 0;
    const std::vector<std::byte> bytes = file_.readBytes(position + sizeof(header), std::min(entries * 8, held));
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
      const std::uint32_t size = readLe32(bytes.data() + at + 4);
      const std::uint64_t data = base + readLe32(bytes.data() + at);
      if (video) {
        addFrame(data, size & ~kDeltaBit, (size & kDeltaBit) != 0);
      } else {
        addAudio(data, size & ~kDeltaBit);
      }
    }
  }
}

void AviFileParse::readAvi1Index(const Media::RiffChunk& idx1) {
  const std::vector<std::byte> bytes = file_.readBytes(idx1.start, idx1.size);
  const std::size_t entries = bytes.size() / 16;
  const auto frames = static_cast<std::size_t>(std::max(streams_.frameCount, 0));
  streams_.frames.reserve(std::min(frames, entries));
  if (entries > frames) streams_.audioChunks.reserve(entries - frames);
  std::uint64_t base = 0;
  for (std::size_t i = 0; i < entries; ++i) {
    const std::byte* entry = bytes.data() + i * 16;
    const std::uint32_t offset = readLe32(entry + 8);
    // Offsets are from the "movi" code when the first is smaller than the place behind
    // it, else from the start of the file; either way they point at a chunk's header.
    if (i == 0) base = offset < movi_.start ? movi_.start + 4 : 8;
    const std::uint16_t stream = streamIdOf(readLe32(entry));
    if (hasVideoId_ && stream == videoId_) {
      addFrame(base + offset, readLe32(entry + 12), (readLe32(entry + 4) & kKeyFrame) == 0);
    } else if (hasAudioId_ && stream == audioId_) {
      addAudio(base + offset, readLe32(entry + 12));
    }
  }
}

void AviFileParse::scanMovi() {
  streams_.frames.reserve(reservable(static_cast<std::uint64_t>(std::max(streams_.frameCount, 0)), 8));
  const auto code = [](std::uint16_t stream, const char (&type)[3]) {
    return std::uint32_t{stream} | std::uint32_t{static_cast<unsigned char>(type[0])} << 16 |
           std::uint32_t{static_cast<unsigned char>(type[1])} << 24;
  };
  const std::uint32_t keyFrame = code(videoId_, "db");
  const std::uint32_t deltaFrame = code(videoId_, "dc");
  const std::uint32_t sound = code(audioId_, "wb");
  for (std::uint64_t position = movi_.start; movi_.inside(position);) {
    std::byte header[8];
    if (file_.readAt(position, header, sizeof(header)) < sizeof(header)) break;
    const std::uint32_t id = readLe32(header);
    const std::uint32_t size = readLe32(header + 4);
    if (hasVideoId_ && Media::fourccEqual(id, keyFrame)) {
      addFrame(position + 8, size, false);
    } else if (hasVideoId_ && Media::fourccEqual(id, deltaFrame)) {
      addFrame(position + 8, size, true);
    } else if (hasAudioId_ && Media::fourccEqual(id, sound)) {
      addAudio(position + 8, size);
    }
    position += 8 + std::uint64_t{size};
    position += position & 1;
  }
}

void AviFileParse::addFrame(std::uint64_t position, std::uint32_t size, bool delta) {
  // Data the file does not hold reads as an empty chunk, a dropped frame.
  const std::uint64_t held = position < file_.fileSize() ? file_.fileSize() - position : 0;
  streams_.frames.push_back({position, static_cast<std::uint32_t>(std::min<std::uint64_t>(size, held)),
                             static_cast<std::uint8_t>(delta ? 1 : 0)});
}

void AviFileParse::addAudio(std::uint64_t position, std::uint32_t size) {
  const std::uint64_t held = position < file_.fileSize() ? file_.fileSize() - position : 0;
  const auto kept = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, held));
  streams_.audioChunks.push_back({audioBytes_, position, kept});
  audioBytes_ += kept;
}

std::size_t AviFileParse::reservable(std::uint64_t wanted, std::uint64_t bytesPerEntry) const {
  // A count in a header reserves no more entries than the file has room for.
  return static_cast<std::size_t>(std::min(wanted, file_.fileSize() / bytesPerEntry));
}

void AviFileParse::checkCounts() {
  if ((streams_.flags & InputFile::Video) && static_cast<std::size_t>(streams_.frameCount) > streams_.frames.size()) {
    System::Log::info(kPlace, "invalid video frame num info.");
    streams_.frameCount = static_cast<std::int32_t>(streams_.frames.size());
  }
  if ((streams_.flags & InputFile::Audio) && streams_.audioLength > streams_.indexedSamples) {
    System::Log::info(kPlace, "invalid audio sample num info.");
    streams_.audioLength = static_cast<std::uint32_t>(streams_.indexedSamples);
    const std::optional<Media::WaveFormat> format = Media::WaveFormat::parse(streams_.audioFormat);
    streams_.sampleCount = samplesOf(streams_.audioLength, streams_.audioRate, streams_.audioScale, format->sampleRate);
  }
}

}  // namespace Plugin
