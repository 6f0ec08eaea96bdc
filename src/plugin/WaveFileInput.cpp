#include "plugin/WaveFileInput.h"

#include <algorithm>
#include <cmath>

#include "media/audio/AudioBlockBuffer.h"
#include "media/image/BitmapInfoHeader.h"
#include "plugin/SampleCount.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace Plugin {

namespace {

constexpr const char* kPlace = "Plugin::WaveFileReader::WavFileInput::FileParse::open";
constexpr std::uint64_t kFormatSizeLimit = 0x10000;

}  // namespace

WaveFileInput::WaveFileInput(const std::wstring& path, Media::CodecProvider& codecs) : file_(path) {
  Media::WaveFormat format;
  if (!parse(format) || sampleCount <= 0 || !audio_.setup(codecs, format)) return;
  const Media::WaveFormat& target = audio_.target();
  sampleFormat = target.codecTag;
  sampleBits = target.bitsPerSample;
  channels = target.channels;
  sampleRate = target.sampleRate;
  flags |= Audio;
}

bool WaveFileInput::parse(Media::WaveFormat& format) {
  Media::RiffChunk riff;
  if (!file_.getRiffChunk(Media::fourcc("WAVE"), riff)) throw System::NoteException(kPlace, "WAVE chunk not found.");
  Media::RiffChunk chunk;
  if (!file_.findChunk(Media::fourcc("fmt "), chunk, riff)) throw System::NoteException(kPlace, "fmt chunk not found.");
  if (chunk.size >= kFormatSizeLimit) {
    System::Log::info(kPlace, "invalid wav fmt size.");
    return false;
  }
  const std::optional<Media::WaveFormat> read = Media::WaveFormat::parse(file_.readBytes(chunk.start, chunk.size));
  riff.rewind();
  if (!file_.findChunk(Media::fourcc("data"), chunk, riff)) throw System::NoteException(kPlace, "data chunk not found.");
  if (!read) return false;
  format = *read;
  dataPosition_ = chunk.start;
  // A recording cut short keeps the length it meant to have; what is there is read.
  dataSize_ = std::min(chunk.size, file_.fileSize() > chunk.start ? file_.fileSize() - chunk.start : 0);
  const std::uint32_t frameBytes = format.channels * (format.bitsPerSample / 8u);
  blockAlign_ = format.blockAlign != 0 ? format.blockAlign : frameBytes;
  avgBytes_ = format.avgBytesPerSec != 0 ? format.avgBytesPerSec : std::uint64_t{frameBytes} * format.sampleRate;
  // PCM and float count their samples in whole frames, whatever a damaged header says
  // of their block size or bytes a second.
  if (format.isPcmOrFloat()) {
    blockAlign_ = frameBytes;
    avgBytes_ = std::uint64_t{frameBytes} * format.sampleRate;
  }
  if (blockAlign_ == 0 || avgBytes_ == 0) return false;
  // Where the bytes do not count samples one block each, the length in time decides.
  sampleCount = avgBytes_ == std::uint64_t{blockAlign_} * format.sampleRate
                    ? static_cast<std::int64_t>(dataSize_ / blockAlign_)
                    : sampleCountOf(static_cast<double>(dataSize_) / static_cast<double>(avgBytes_) * format.sampleRate);
  return true;
}

std::shared_ptr<Media::AudioBlockBuffer> WaveFileInput::readAudio(std::int32_t block) {
  if (!hasAudio()) return nullptr;
  std::lock_guard lock(audioMutex_);
  // Zeroed, so that what lies beyond the data is silence.
  const std::span<std::byte> room = audio_.silentBlock();
  if (block >= 0) {
    const std::uint64_t position = avgBytes_ * static_cast<std::uint64_t>(block);
    if (audio_.usesCodec()) {
      fillFromCodec(block, position, room);
    } else if (position < dataSize_) {
      const std::uint64_t count = std::min<std::uint64_t>(position + room.size(), dataSize_) - position;
      file_.readAt(dataPosition_ + position, room.data(), static_cast<std::size_t>(count));
    }
  }
  return std::make_shared<Media::AudioBlockBuffer>(audio_.sampleData(room));
}

std::size_t WaveFileInput::outputBytesOf(std::uint64_t sourceBytes) const {
  const Media::WaveFormat& target = audio_.target();
  const double samples = static_cast<double>(sourceBytes) * target.sampleRate / avgBytes_;
  return static_cast<std::size_t>(std::llround(samples)) * target.blockAlign;
}

std::size_t WaveFileInput::fillFromCodec(std::int32_t block, std::uint64_t position, std::span<std::byte> room) {
  std::size_t filled = 0;
  if (block == lastBlock_ + 1) {
    // In order: what the decoder made past the last block comes first.
    filled = audio_.takeOutput(room);
    position = nextPosition_;
  } else {
    audio_.clear();
    // Decoding starts a quarter of a second early, on a whole block of the format, so
    // that the decoder has found its feet (an ADPCM block's start, an MP3 frame and its
    // reservoir) by the second asked for; what it makes before that second is dropped.
    std::uint64_t start = position - std::min<std::uint64_t>(position, avgBytes_ / 4);
    start -= start % blockAlign_;
    audio_.skipOutput(outputBytesOf(position - start));
    position = start;
  }
  lastBlock_ = block;
  while (filled < room.size()) {
    const std::uint64_t next = std::min(position + avgBytes_, dataSize_);
    if (next <= position) break;
    audio_.insertSourceData(file_, dataPosition_ + position, next - position);
    position = nextPosition_ = next;
    audio_.decode();
    filled += audio_.takeOutput(room.subspan(filled));
  }
  return filled;
}

}  // namespace Plugin
