// The one separable box blur of the program: ぼかし and every effect that borrows its
// blur (glow, shadows, masks, wipes) come here through the ぼかし prototype. Each pass
// averages 2r + 1 premultiplied pixels along one axis; a blur is four such passes, which
// make a triangular kernel on each axis. Small radii run as full-frame draws that read
// the whole window per pixel; from a summed radius of kComputeRadiusSum on, a compute
// shader keeps a running sum along each row or column, so the cost stops growing with
// the radius. Both forms give the same pixels within float rounding.
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

// Where the compute form takes over: the sum of both axes' radii.
inline constexpr std::int32_t kComputeRadiusSum = 200;

constexpr BlurForm blurFormFor(BlurRadii radii) noexcept {
  return radii.x + radii.y >= kComputeRadiusSum ? BlurForm::Compute : BlurForm::Pixel;
}

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
  std::array<std::unique_ptr<PixelShader>, 2> pixelShaders_;
  std::array<std::unique_ptr<ComputeShader>, 2> computeShaders_;
  std::array<std::unique_ptr<ConstantBufferCommon>, 4> constants_;
  std::array<std::optional<Block>, 4> blocks_;
  std::size_t passIndex_ = 0;
  std::vector<std::unique_ptr<ResourceBuffer>> kept_;
};

}  // namespace Media
