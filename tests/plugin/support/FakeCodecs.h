// Decoders that the readers' tests hand in place of libavcodec's, to see how a reader
// drives them: every call is written down, and a picture is the first byte of its
// chunk repeated. The video decoder may hold pictures back like one that reorders.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "media/codec/CodecProvider.h"

namespace PluginTest {

class FakeVideoCodec : public Media::VideoCodec {
 public:
  FakeVideoCodec(std::vector<std::string>& calls, int delay, bool givesYuy2)
      : calls_(calls), delay_(delay), givesYuy2_(givesYuy2) {}

  bool canOutput(const Media::BitmapInfoHeader& output) override;
  void begin(const Media::BitmapInfoHeader& output) override;
  void reset(std::int64_t first) override;
  bool decode(std::span<const std::byte> chunk, bool keyFrame) override;
  void finish() override;
  int reorderDelay() const override { return delay_; }
  std::int64_t nextPicture() const override { return next_; }
  bool holds(std::int64_t number) const override;
  bool picture(std::int64_t number, std::span<std::byte> output) override;

 private:
  void out(std::byte value);

  std::vector<std::string>& calls_;
  int delay_;
  bool givesYuy2_;
  std::deque<std::byte> waiting_;
  std::vector<std::pair<std::int64_t, std::byte>> held_;
  std::int64_t next_ = 0;
};

class FakeCodecProvider : public Media::CodecProvider {
 public:
  // Opens "FAKE" video only.
  explicit FakeCodecProvider(int delay = 0, bool givesYuy2 = false) : delay_(delay), givesYuy2_(givesYuy2) {}

  std::unique_ptr<Media::VideoCodec> openVideo(std::uint32_t code, std::span<const std::byte> inputFormat,
                                               std::span<const std::byte> sample) override;
  std::unique_ptr<Media::AudioCodec> openAudio(const Media::WaveFormat& format) override;

  // "reset 90", "decode 91", "finish", in the order the reader called.
  std::vector<std::string> calls;

 private:
  int delay_;
  bool givesYuy2_;
};

}  // namespace PluginTest
