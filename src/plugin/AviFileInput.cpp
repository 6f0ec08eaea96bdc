#include "plugin/AviFileInput.h"

#include <algorithm>
#include <cmath>

#include "media/audio/AudioBlockBuffer.h"
#include "media/codec/WaveFormat.h"
#include "media/image/ImageBuffer.h"

namespace Plugin {

namespace {

// The audio entry that holds byte `position` of the stream, and how far into it.
std::pair<std::size_t, std::uint64_t> locate(const std::vector<AviStreams::AudioEntry>& chunks,
                                              std::uint64_t position) {
  const auto found = std::lower_bound(chunks.begin(), chunks.end(), position,
                                      [](const AviStreams::AudioEntry& entry, std::uint64_t at) { return entry.offset < at; });
  const auto index = static_cast<std::size_t>(std::max<std::ptrdiff_t>(found - chunks.begin() - 1, 0));
  return {index, position > chunks[index].offset ? position - chunks[index].offset : 0};
}

}  // namespace

AviFileInput::AviFileInput(const std::wstring& path, AviStreams streams, Media::CodecProvider& codecs)
    : streams_(std::move(streams)) {
  if (setupVideo(path, codecs)) flags |= Video;
  if (setupAudio(path, codecs)) flags |= Audio;
}

bool AviFileInput::setupVideo(const std::wstring& path, Media::CodecProvider& codecs) {
  if (!(streams_.flags & Video) || streams_.frameCount <= 0) return false;
  videoFile_ = std::make_unique<Media::RiffFile>(path);
  // A decoder may need a picture to say what its pictures are: the first chunk with data.
  std::vector<std::byte> sample;
  const auto first = std::find_if(streams_.frames.begin(), streams_.frames.end(),
                                  [](const AviStreams::FrameEntry& entry) { return entry.size != 0; });
  if (first != streams_.frames.end()) sample = videoFile_->readBytes(first->position, first->size);
  if (!video_.setup(codecs, streams_.handler, streams_.videoFormat, sample)) {
    videoFile_.reset();
    return false;
  }
  // An uncompressed frame larger than the whole file can never be read: its size comes
  // from a damaged header, and nothing is allocated for it.
  if (!video_.codec() && video_.outputHeader().biSizeImage > videoFile_->fileSize()) {
    videoFile_.reset();
    return false;
  }
  frameCount = streams_.frameCount;
  pixelFormat = video_.pixelFormat();
  width = video_.width();
  height = video_.height();
  rate = streams_.rate;
  scale = streams_.scale;
  return true;
}

bool AviFileInput::setupAudio(const std::wstring& path, Media::CodecProvider& codecs) {
  if (!(streams_.flags & Audio) || streams_.sampleCount <= 0) return false;
  const std::optional<Media::WaveFormat> format = Media::WaveFormat::parse(streams_.audioFormat);
  if (!format || !audio_.setup(codecs, *format)) return false;
  audioFile_ = std::make_unique<Media::RiffFile>(path);
  const Media::WaveFormat& target = audio_.target();
  sampleCount = streams_.sampleCount;
  sampleFormat = target.codecTag;
  sampleBits = target.bitsPerSample;
  channels = target.channels;
  sampleRate = target.sampleRate;
  return true;
}

std::shared_ptr<Media::ImageBuffer> AviFileInput::readVideo(std::int32_t frame) {
  if (!hasVideo()) return nullptr;
  std::lock_guard lock(videoMutex_);
  auto entry = static_cast<std::size_t>(std::clamp(frame, 0, frameCount - 1));
  // A dropped frame (an empty chunk) shows the frame before it.
  while (entry > 0 && streams_.frames[entry].size == 0) --entry;
  std::span<const std::byte> bitmap;
  if (!video_.codec()) {
    bitmap = readFrameChunk(entry);
  } else if (decodePicture(entry)) {
    bitmap = video_.output();
  } else {
    return nullptr;
  }
  auto image = std::make_shared<Media::ImageBuffer>(pixelFormat, width, height);
  image->convertFrom(video_.outputHeader(), bitmap);
  return image;
}

std::span<const std::byte> AviFileInput::readFrameChunk(std::size_t entry) {
  const AviStreams::FrameEntry& chunk = streams_.frames[entry];
  if (videoScratch_.size() < chunk.size) videoScratch_.resize(chunk.size);
  return std::span(videoScratch_.data(), videoFile_->readAt(chunk.position, videoScratch_.data(), chunk.size));
}

bool AviFileInput::decodePicture(std::size_t entry) {
  Media::VideoCodec& codec = *video_.codec();
  const auto number = static_cast<std::int64_t>(entry);
  if (!codec.holds(number)) {
    // A picture of a chunk already decoded that has not come out yet comes with the
    // next chunks; any other starts from the key frame, unless the chunks in between go
    // on from the last one decoded.
    const bool coming = nextFrame_ >= 0 && number < nextFrame_ && number >= codec.nextPicture();
    if (!coming) {
      std::size_t start = entry;
      while (start > 0 && streams_.frames[start].delta && static_cast<std::int64_t>(start) != nextFrame_) --start;
      if (static_cast<std::int64_t>(start) != nextFrame_) codec.reset(static_cast<std::int64_t>(start));
      for (std::size_t chunk = start; chunk <= entry; ++chunk) feed(chunk);
    }
    // A decoder that reorders hands a picture out up to its delay in chunks later.
    while (!codec.holds(number) && nextFrame_ < frameCount && nextFrame_ <= number + codec.reorderDelay()) {
      feed(static_cast<std::size_t>(nextFrame_));
    }
    if (!codec.holds(number) && nextFrame_ >= frameCount) {
      codec.finish();
      nextFrame_ = -256;
    }
  }
  // A picture that failed leaves the one before it in the output.
  return video_.takePicture(number) || !video_.output().empty();
}

void AviFileInput::feed(std::size_t entry) {
  const std::span<const std::byte> data =
      streams_.frames[entry].size != 0 ? readFrameChunk(entry) : std::span<const std::byte>();
  video_.codec()->decode(data, streams_.frames[entry].delta == 0);
  nextFrame_ = static_cast<std::int64_t>(entry) + 1;
}

std::shared_ptr<Media::AudioBlockBuffer> AviFileInput::readAudio(std::int32_t block) {
  if (!hasAudio()) return nullptr;
  std::lock_guard lock(audioMutex_);
  // Zeroed, so that what lies beyond the stream's end is silence.
  const std::span<std::byte> room = audio_.silentBlock();
  if (block >= 0) {
    const std::uint64_t position = bytesPerSecond() * static_cast<std::uint64_t>(block);
    if (audio_.usesCodec()) {
      fillFromCodec(block, position, room);
    } else {
      fillUncompressed(position, room);
    }
  }
  return std::make_shared<Media::AudioBlockBuffer>(audio_.sampleData(room));
}

std::uint64_t AviFileInput::bytesPerSecond() const {
  // Multiplied before it is divided: rate / scale alone loses the fraction of blocks a
  // second that ADPCM streams have.
  return std::uint64_t{streams_.audioRate} * streams_.blockAlign / streams_.audioScale;
}

std::size_t AviFileInput::fillUncompressed(std::uint64_t position, std::span<std::byte> room) {
  const std::vector<AviStreams::AudioEntry>& chunks = streams_.audioChunks;
  if (chunks.empty()) return 0;
  auto [chunk, skip] = locate(chunks, position);
  std::size_t filled = 0;
  for (; filled < room.size() && chunk < chunks.size(); ++chunk, skip = 0) {
    const AviStreams::AudioEntry& entry = chunks[chunk];
    const std::uint64_t available = entry.size > skip ? entry.size - skip : 0;
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(available, room.size() - filled));
    if (count != 0) filled += audioFile_->readAt(entry.position + skip, room.data() + filled, count);
  }
  return filled;
}

std::size_t AviFileInput::fillFromCodec(std::int32_t block, std::uint64_t position, std::span<std::byte> room) {
  const std::vector<AviStreams::AudioEntry>& chunks = streams_.audioChunks;
  std::size_t filled = 0;
  if (block == lastBlock_ + 1) {
    // In order: what the decoder made past the last block comes first.
    filled = audio_.takeOutput(room);
  } else {
    if (chunks.empty()) return 0;
    // Decoding starts at the whole chunk a quarter of a second early, so that the
    // decoder has found its feet by the second asked for; what it makes before that
    // second is dropped.
    const std::uint64_t second = bytesPerSecond();
    audioChunk_ = locate(chunks, position - std::min(position, second / 4)).first;
    audio_.clear();
    if (second != 0) {
      const Media::WaveFormat& target = audio_.target();
      const double early = static_cast<double>(position - std::min(position, chunks[audioChunk_].offset)) *
                           target.sampleRate / static_cast<double>(second);
      audio_.skipOutput(static_cast<std::size_t>(std::llround(early)) * target.blockAlign);
    }
  }
  lastBlock_ = block;
  while (filled < room.size() && audioChunk_ < chunks.size()) {
    const AviStreams::AudioEntry& entry = chunks[audioChunk_++];
    audio_.insertSourceData(*audioFile_, entry.position, entry.size);
    audio_.decode();
    filled += audio_.takeOutput(room.subspan(filled));
  }
  return filled;
}

}  // namespace Plugin
