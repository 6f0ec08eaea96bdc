#include "cache/AudioRangeRead.h"

#include <algorithm>

#include "media/audio/AudioBuffer.h"

namespace Cache {

namespace {

// Walks the source sample by sample across its one-second blocks.
class SourceCursor {
 public:
  SourceCursor(const AudioBlockFetch& fetch, std::int64_t sourceRate, std::int64_t block, std::int64_t index)
      : fetch_(fetch), rate_(sourceRate), block_(block), index_(index), current_(fetch(block)) {}

  bool valid() const noexcept { return current_ && index_ < current_->sampleCount(); }
  float left() const noexcept { return current_->channelData(0)[index_]; }
  float right() const noexcept { return current_->channelData(1)[index_]; }
  // Moves one sample on; false once the source has no more.
  bool advance() {
    if (++index_ >= rate_) {
      index_ = 0;
      current_ = fetch_(++block_);
    }
    return valid();
  }

 private:
  const AudioBlockFetch& fetch_;
  std::int64_t rate_;
  std::int64_t block_;
  std::int64_t index_;
  std::shared_ptr<const Media::AudioBuffer> current_;
};

}  // namespace

void readAudioSpan(Media::AudioBuffer& out, std::int64_t sourceRate, std::int32_t positionRate,
                   const AudioReadPosition& at, const AudioBlockFetch& fetch) {
  out.clear();
  if (at.step == 0 || sourceRate <= 0 || positionRate <= 0) return;
  SourceCursor source(fetch, sourceRate, at.block, at.index);
  if (!source.valid()) return;
  float* left = out.channelData(0);
  float* right = out.channelData(1);
  const std::int64_t r = positionRate;
  const std::uint32_t count = out.sampleCount();
  std::uint32_t written = 0;

  if (at.step == r) {
    for (; written < count; ++written) {
      left[written] = source.left();
      right[written] = source.right();
      if (!source.advance()) {
        ++written;
        break;
      }
    }
  } else if (at.step < r) {
    float aLeft = source.left(), aRight = source.right();
    bool more = source.advance();
    float bLeft = more ? source.left() : aLeft, bRight = more ? source.right() : aRight;
    std::int64_t acc = r - at.frac;
    for (; written < count; ++written) {
      const float weight = static_cast<float>(acc) / static_cast<float>(r);
      left[written] = (aLeft - bLeft) * weight + bLeft;
      right[written] = (aRight - bRight) * weight + bRight;
      acc -= at.step;
      if (acc < 1) {
        acc += r;
        if (!more) {
          ++written;
          break;
        }
        aLeft = bLeft;
        aRight = bRight;
        more = source.advance();
        if (more) {
          bLeft = source.left();
          bRight = source.right();
        }
      }
    }
  } else {
    std::int64_t available = r - at.frac;
    bool more = true;
    for (; written < count && more; ++written) {
      double sumLeft = 0.0, sumRight = 0.0;
      std::int64_t needed = at.step;
      while (needed > 0 && more) {
        const std::int64_t taken = std::min(available, needed);
        sumLeft += static_cast<double>(source.left()) * taken;
        sumRight += static_cast<double>(source.right()) * taken;
        needed -= taken;
        available -= taken;
        if (available == 0) {
          available = r;
          more = source.advance();
        }
      }
      left[written] = static_cast<float>(sumLeft / at.step);
      right[written] = static_cast<float>(sumRight / at.step);
    }
  }

  if (at.reversed) {
    std::reverse(left, left + written);
    if (right != left) std::reverse(right, right + written);
  }
}

}  // namespace Cache
