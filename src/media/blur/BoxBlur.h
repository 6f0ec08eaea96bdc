// The one separable box blur of the program: ぼかし and every effect that borrows its
// blur (glow, shadows, masks, wipes) come here through the ぼかし prototype. Each pass
// averages 2r + 1 premultiplied pixels along one axis; a blur is four such passes, which
// make a triangular kernel on each axis. A pass runs as a full-frame draw that reads the
// whole window per pixel, whose cost grows with the radius, or as a compute shader that
// keeps a running sum along each row or column, whose cost does not. Which is faster up
// to which radius depends on the device, so it is measured at the first blur (see
// crossing()). Both forms give the same pixels within float rounding.
// GPU thread only. Shaders are made at their first use; intermediate images are kept
// by size and format and reused, so a warm blur compiles and allocates nothing beyond
// a result of a new size.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "media/Format.h"

namespace Media {

class ComputeShader;
class ConstantBufferCommon;
class GraphicsDevice;
class PixelShader;
class ResourceBuffer;

// What lies beyond the source's edge, and whether the image grows to hold the spread.
enum class BlurMode : std::int32_t {
  Grow = 0,         // the result grows by 2r on the axis; outside counts as 0
  KeepZero = 1,     // the size stays; outside counts as 0
  KeepClamped = 2,  // the size stays; reads are clamped to the edge
};

enum class BlurForm : std::uint8_t { Pixel, Compute };
enum class BlurAxis : std::uint8_t { X, Y };

struct BlurRadii {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

// The radii of each axis for `radius` and `aspect` (-1 to 1): a positive aspect
// shortens y, a negative one x.
BlurRadii blurRadii(std::int32_t radius, double aspect) noexcept;

// The form for a blur of these radii on a device where the compute form is the faster
// from a summed radius of `crossing` on.
constexpr BlurForm blurFormFor(BlurRadii radii, double crossing) noexcept {
  return radii.x + radii.y >= crossing ? BlurForm::Compute : BlurForm::Pixel;
}

// The summed radius from which the compute form wins, from the time of a draw pass at two
// radii and of a compute pass: a draw pass costs about a + b * r, a compute pass about c
// whatever r, and a blur is four passes whose radii sum to the blur's. A draw pass that
// does not grow dearer with r never loses to a dearer compute pass.
double blurFormCrossing(double pixelSmall, std::int32_t smallRadius, double pixelLarge, std::int32_t largeRadius,
                        double compute) noexcept;

// The length of a pass's result along its axis.
constexpr std::uint32_t blurredLength(std::uint32_t length, std::int32_t radius, BlurMode mode) noexcept {
  return mode == BlurMode::Grow ? length + 2 * static_cast<std::uint32_t>(radius) : length;
}

class BoxBlur {
 public:
  explicit BoxBlur(GraphicsDevice& device);
  ~BoxBlur();
  BoxBlur(const BoxBlur&) = delete;
  BoxBlur& operator=(const BoxBlur&) = delete;

  // Four passes: y by ry - ry / 2, x by rx - rx / 2, y by ry / 2, x by rx / 2, with
  // rx and ry from blurRadii. A radius of 0, or an image of no area, hands the image
  // back untouched. The image is consumed: it may become the result or a scratch image.
  std::unique_ptr<ResourceBuffer> blur(std::unique_ptr<ResourceBuffer> image, std::int32_t radius, double aspect,
                                       BlurMode mode);
  // One y pass and one x pass with the full radius, mode Grow.
  std::unique_ptr<ResourceBuffer> boxBlur(std::unique_ptr<ResourceBuffer> image, std::int32_t radius);

  // One pass along `axis` into `target`, which must measure blurredLength on that axis
  // and the source's length on the other. A radius of 0 copies.
  void pass(ResourceBuffer& source, ResourceBuffer& target, BlurAxis axis, std::int32_t radius, BlurMode mode,
            BlurForm form);

  // Fixes the form whatever the radii, for comparing the two; none restores the choice
  // by the summed radius.
  void forceForm(std::optional<BlurForm> form) noexcept { forcedForm_ = form; }
  // The summed radius from which this device blurs faster by compute: measured at the
  // first call on a small scratch image (a few draw and compute passes, a few
  // milliseconds even on a software renderer), then kept.
  double crossing();

  // An image of this size and format from the kept ones, or a new one; its content is
  // whatever it held. Callers that want scratch images of their own share the store.
  std::unique_ptr<ResourceBuffer> scratch(std::uint32_t width, std::uint32_t height, Format format);
  // Keeps an image for a later scratch(); the oldest goes when too many are kept.
  void recycle(std::unique_ptr<ResourceBuffer> image);

 private:
  // One pass of a blur from `image` to a target of the pass's size; the source goes
  // back to the store unless it is the caller's image (`callers`) of a size no pass
  // will want.
  std::unique_ptr<ResourceBuffer> step(std::unique_ptr<ResourceBuffer> image, BlurAxis axis, std::int32_t radius,
                                       BlurMode mode, BlurForm form, bool callers);
  PixelShader& pixelShader(BlurAxis axis);
  ComputeShader& computeShader(BlurAxis axis);
  // The constants of the `index`-th pass of a blur, rewritten only when they change, so
  // that a pass never waits on a block the previous one still reads.
  const ConstantBufferCommon& constants(std::size_t index, std::int32_t radius, BlurMode mode);

  struct Block {
    std::int32_t radius;
    std::int32_t mode;
    float divide;
    std::int32_t unused;
  };

  GraphicsDevice* device_;
  std::optional<BlurForm> forcedForm_;
  std::optional<double> crossing_;
  std::array<std::unique_ptr<PixelShader>, 2> pixelShaders_;
  std::array<std::unique_ptr<ComputeShader>, 2> computeShaders_;
  std::array<std::unique_ptr<ConstantBufferCommon>, 4> constants_;
  std::array<std::optional<Block>, 4> blocks_;
  std::size_t passIndex_ = 0;
  std::vector<std::unique_ptr<ResourceBuffer>> kept_;
};

}  // namespace Media
