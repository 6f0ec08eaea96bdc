#include "support/FakeCodecs.h"

#include <algorithm>
#include <cstring>

namespace PluginTest {

bool FakeVideoCodec::canOutput(const Media::BitmapInfoHeader& output) {
  return output.biBitCount == 16 ? givesYuy2_ : output.biBitCount == 32;
}

void FakeVideoCodec::begin(const Media::BitmapInfoHeader& output) {
  calls_.push_back("begin " + std::to_string(output.biBitCount));
}

void FakeVideoCodec::reset(std::int64_t first) {
  calls_.push_back("reset " + std::to_string(first));
  waiting_.clear();
  held_.clear();
  next_ = first;
}

bool FakeVideoCodec::decode(std::span<const std::byte> chunk, bool keyFrame) {
  calls_.push_back(std::string(keyFrame ? "key " : "decode ") + std::to_string(chunk.empty() ? -1 : int(chunk[0])));
  waiting_.push_back(chunk.empty() ? std::byte{0} : chunk[0]);
  if (static_cast<int>(waiting_.size()) > delay_) {
    out(waiting_.front());
    waiting_.pop_front();
  }
  return true;
}

void FakeVideoCodec::finish() {
  calls_.push_back("finish");
  for (const std::byte value : waiting_) out(value);
  waiting_.clear();
}

void FakeVideoCodec::out(std::byte value) { held_.emplace_back(next_++, value); }

bool FakeVideoCodec::holds(std::int64_t number) const {
  return std::any_of(held_.begin(), held_.end(), [&](const auto& entry) { return entry.first == number; });
}

bool FakeVideoCodec::picture(std::int64_t number, std::span<std::byte> output) {
  std::erase_if(held_, [&](const auto& entry) { return entry.first < number; });
  if (held_.empty() || held_.front().first != number) return false;
  std::fill(output.begin(), output.end(), held_.front().second);
  return true;
}

std::unique_ptr<Media::VideoCodec> FakeCodecProvider::openVideo(std::uint32_t code, std::span<const std::byte>,
                                                                std::span<const std::byte>) {
  if (code != Media::fourcc("FAKE")) return nullptr;
  return std::make_unique<FakeVideoCodec>(calls, delay_, givesYuy2_);
}

std::unique_ptr<Media::AudioCodec> FakeCodecProvider::openAudio(const Media::WaveFormat&) { return nullptr; }

}  // namespace PluginTest
