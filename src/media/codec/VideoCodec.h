// A decoder of one compressed video stream, as the AVI reader drives it: chunks go in in
// file order, pictures come out numbered in display order and are written in the bitmap
// form the reader chose. Made by a CodecProvider; used by one thread at a time (the
// reader holds its file's video lock).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "media/image/BitmapInfoHeader.h"

namespace Media {

class VideoCodec {
 public:
  virtual ~VideoCodec() = default;

  // Whether pictures can come out as this bitmap: YUY2 at 16 bits, or RGB (compression
  // 0) at 32 or 24 bits, rows as a bitmap of that form lays them out.
  virtual bool canOutput(const BitmapInfoHeader& output) = 0;
  // From now on pictures come out in `output`, a form that canOutput accepted.
  virtual void begin(const BitmapInfoHeader& output) = 0;
  // Forgets held pictures and the decoder's references before a jump; the next picture
  // that comes out is number `first`.
  virtual void reset(std::int64_t first) = 0;
  // One chunk in file order. An empty chunk is a dropped frame: it stands for the
  // picture before it. False when the decoder refused the chunk; reading goes on.
  virtual bool decode(std::span<const std::byte> chunk, bool keyFrame) = 0;
  // The stream has no more chunks: the pictures held back for reordering come out.
  // Only reset() starts decoding again after it.
  virtual void finish() = 0;
  // How many chunks later than its own a picture may come out.
  virtual int reorderDelay() const = 0;
  // The number the next picture to come out will have.
  virtual std::int64_t nextPicture() const = 0;
  // Whether picture `number` has come out and is still held.
  virtual bool holds(std::int64_t number) const = 0;
  // Writes held picture `number` in the form begun into `output` (the form's
  // biSizeImage bytes) and lets go of the pictures before it; false when it is not held.
  virtual bool picture(std::int64_t number, std::span<std::byte> output) = 0;
};

}  // namespace Media
