#include "media/blur/BoxBlur.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "media/CompiledShader.h"
#include "media/ComputeShader.h"
#include "media/ConstantBufferCommon.h"
#include "media/GraphicsDevice.h"
#include "media/PassTarget.h"
#include "media/PixelShader.h"
#include "media/ResourceBuffer.h"

namespace Media {

namespace {

// Lines (rows or columns) that one compute group walks, one line per invocation.
constexpr std::uint32_t kLinesPerGroup = 64;
// Images the scratch store holds at most: a blur in mode Grow passes through three
// sizes, the ぼかし detour adds two more, and a few callers blur at once per frame.
constexpr std::size_t kKeptImages = 8;
// Aspects come from a hundredth of an item with two decimals, so (1 - aspect) * radius
// is a multiple of 1e-4; this lifts a product such as 70.99999999 back to 71 before
// truncation without moving any value that is really below a whole number.
constexpr double kTruncationSlack = 1e-9;

constexpr const char* kBlock =
    "layout(std140, binding = 0) uniform BoxBlurConstants { int radius; int mode; float divide; int unused; } c;\n";

// The window of output pixel p starts at p - 2r in mode Grow (the result is shifted by
// r so the image's centre stays) and at p - r otherwise. Zero modes narrow the window
// to the source instead of testing each tap; the clamped mode clamps each tap.
constexpr const char* kPixelMain = R"(layout(location = 0) out vec4 target0;
void main() {
  ivec2 pixel = ivec2(gl_FragCoord.xy);
  int last = textureSize(source0, 0).A - 1;
  int first = pixel.A - (c.mode == 0 ? 2 * c.radius : c.radius);
  int end = first + 2 * c.radius;
  if (c.mode != 2) {
    first = max(first, 0);
    end = min(end, last);
  }
  vec4 sum = vec4(0.0);
  ivec2 p = pixel;
  for (int q = first; q <= end; ++q) {
    p.A = clamp(q, 0, last);
    sum += texelFetch(source0, p, 0);
  }
  target0 = sum * c.divide;
}
)";

// One invocation walks one line: the window's sum is built once, then each step adds
// the pixel entering the window and takes away the one leaving it. Everything past the
// clamped edge is the edge pixel, so the clamped mode counts those taps instead of
// reading them.
constexpr const char* kComputeMain = R"(layout(local_size_x = 64) in;
layout(binding = 0, SORVEL_IMAGE_FORMAT_0) uniform image2D target0;
vec4 tap(int line, int q, int last) {
  if (c.mode == 2) {
    q = clamp(q, 0, last);
  } else if (q < 0 || q > last) {
    return vec4(0.0);
  }
  ivec2 p;
  p.A = q;
  p.B = line;
  return texelFetch(source0, p, 0);
}
void main() {
  int line = int(gl_GlobalInvocationID.x);
  ivec2 size = imageSize(target0);
  if (line >= size.B) return;
  int last = textureSize(source0, 0).A - 1;
  int span = 2 * c.radius + 1;
  int first = c.mode == 0 ? -2 * c.radius : -c.radius;
  int end = first + span - 1;
  vec4 sum = vec4(0.0);
  for (int q = max(first, 0); q <= min(end, last); ++q) sum += tap(line, q, last);
  if (c.mode == 2) {
    sum += float(max(0, min(end, -1) - first + 1)) * tap(line, 0, last);
    sum += float(max(0, end - max(first, last + 1) + 1)) * tap(line, last, last);
  }
  ivec2 p;
  p.B = line;
  for (int i = 0; i < size.A; ++i) {
    p.A = i;
    imageStore(target0, p, sum * c.divide);
    sum += tap(line, first + i + span, last) - tap(line, first + i, last);
  }
}
)";

// The text with the axis of the pass for A and the other axis for B.
std::string forAxis(std::string_view text, BlurAxis axis) {
  const char along = axis == BlurAxis::X ? 'x' : 'y';
  const char across = axis == BlurAxis::X ? 'y' : 'x';
  std::string out(text);
  for (std::size_t i = 0; i + 1 < out.size(); ++i) {
    if (out[i] == '.' && (out[i + 1] == 'A' || out[i + 1] == 'B')) out[i + 1] = out[i + 1] == 'A' ? along : across;
  }
  return out;
}

CompiledShader pixelShaderText(BlurAxis axis) {
  CompiledShader shader;
  shader.stage = ShaderStage::Pixel;
  shader.inputs.push_back({"SV_Position", 0, 0xF, ComponentType::Float32});
  shader.textures.push_back({0, -1, 0});
  shader.constants.push_back({0, 0, 16});
  shader.glsl = std::string("#version 450\nlayout(binding = 0) uniform sampler2D source0;\n") + kBlock +
                forAxis(kPixelMain, axis);
  return shader;
}

CompiledShader computeShaderText(BlurAxis axis) {
  CompiledShader shader;
  shader.stage = ShaderStage::Compute;
  shader.images.push_back({0, 0});
  shader.textures.push_back({0, -1, 0});
  shader.constants.push_back({0, 0, 16});
  shader.threadGroupSize[0] = kLinesPerGroup;
  shader.glsl = std::string("#version 450\nlayout(binding = 0) uniform sampler2D source0;\n") + kBlock +
                forAxis(kComputeMain, axis);
  return shader;
}

}  // namespace

BlurRadii blurRadii(std::int32_t radius, double aspect) noexcept {
  radius = std::max(radius, 0);
  BlurRadii radii{radius, radius};
  const auto shortened = [&](double factor) {
    return std::max(0, static_cast<std::int32_t>(std::trunc(factor * radius + kTruncationSlack)));
  };
  if (aspect > 0.0) radii.y = shortened(1.0 - aspect);
  if (aspect < 0.0) radii.x = shortened(1.0 + aspect);
  return radii;
}

double blurFormCrossing(double pixelSmall, std::int32_t smallRadius, double pixelLarge, std::int32_t largeRadius,
                        double compute) noexcept {
  const double perRadius = (pixelLarge - pixelSmall) / (largeRadius - smallRadius);
  const double fixed = pixelSmall - perRadius * smallRadius;
  if (perRadius <= 0.0) return fixed <= compute ? std::numeric_limits<double>::infinity() : 0.0;
  return std::max(0.0, 4.0 * (compute - fixed) / perRadius);
}

BoxBlur::BoxBlur(GraphicsDevice& device) : device_(&device) {}

double BoxBlur::crossing() {
  if (crossing_) return *crossing_;
  constexpr std::uint32_t kSide = 256;
  constexpr std::int32_t kSmall = 4;
  constexpr std::int32_t kLarge = 32;
  std::unique_ptr<ResourceBuffer> source = scratch(kSide, kSide, device_->pixelFormat());
  std::unique_ptr<ResourceBuffer> target = scratch(kSide, kSide, device_->pixelFormat());
  source->clear(Color{0.5f, 0.5f, 0.5f, 1.0f});
  // The fastest of three runs after a warm-up, each waited for: the first runs pay for
  // compiling shaders and first touches of memory.
  const auto fastest = [&](std::int32_t radius, BlurForm form) {
    double best = std::numeric_limits<double>::infinity();
    for (int run = 0; run < 4; ++run) {
      const auto start = std::chrono::steady_clock::now();
      passIndex_ = 0;
      pass(*source, *target, BlurAxis::X, radius, BlurMode::KeepZero, form);
      device_->finish();
      const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
      if (run > 0) best = std::min(best, spent.count());
    }
    return best;
  };
  const double pixelSmall = fastest(kSmall, BlurForm::Pixel);
  const double pixelLarge = fastest(kLarge, BlurForm::Pixel);
  const double compute = fastest(kLarge, BlurForm::Compute);
  crossing_ = blurFormCrossing(pixelSmall, kSmall, pixelLarge, kLarge, compute);
  recycle(std::move(source));
  recycle(std::move(target));
  blocks_.fill(std::nullopt);
  return *crossing_;
}

BoxBlur::~BoxBlur() = default;

std::unique_ptr<ResourceBuffer> BoxBlur::blur(std::unique_ptr<ResourceBuffer> image, std::int32_t radius,
                                              double aspect, BlurMode mode) {
  if (!image || image->empty() || radius <= 0) return image;
  const BlurRadii radii = blurRadii(radius, aspect);
  const BlurForm form = forcedForm_ ? *forcedForm_ : blurFormFor(radii, crossing());
  // Each axis split in two, the larger half first: two boxes in a row on an axis make
  // a triangle, which looks far less blocky than one box of the full radius.
  const struct {
    BlurAxis axis;
    std::int32_t radius;
  } passes[] = {{BlurAxis::Y, radii.y - radii.y / 2},
                {BlurAxis::X, radii.x - radii.x / 2},
                {BlurAxis::Y, radii.y / 2},
                {BlurAxis::X, radii.x / 2}};
  passIndex_ = 0;
  bool callers = true;
  for (const auto& p : passes) {
    if (p.radius == 0) continue;
    image = step(std::move(image), p.axis, p.radius, mode, form, callers);
    callers = false;
  }
  return image;
}

std::unique_ptr<ResourceBuffer> BoxBlur::boxBlur(std::unique_ptr<ResourceBuffer> image, std::int32_t radius) {
  if (!image || image->empty() || radius <= 0) return image;
  const BlurForm form = forcedForm_ ? *forcedForm_ : blurFormFor({radius, radius}, crossing());
  passIndex_ = 0;
  image = step(std::move(image), BlurAxis::Y, radius, BlurMode::Grow, form, true);
  return step(std::move(image), BlurAxis::X, radius, BlurMode::Grow, form, false);
}

std::unique_ptr<ResourceBuffer> BoxBlur::step(std::unique_ptr<ResourceBuffer> image, BlurAxis axis,
                                              std::int32_t radius, BlurMode mode, BlurForm form, bool callers) {
  const std::uint32_t width = axis == BlurAxis::X ? blurredLength(image->width(), radius, mode) : image->width();
  const std::uint32_t height = axis == BlurAxis::Y ? blurredLength(image->height(), radius, mode) : image->height();
  std::unique_ptr<ResourceBuffer> target = scratch(width, height, image->format());
  pass(*image, *target, axis, radius, mode, form);
  // In mode Grow the caller's image has a size no later pass asks for; keeping it would
  // only push out the intermediates that the next frame wants again.
  if (!(callers && mode == BlurMode::Grow)) recycle(std::move(image));
  return target;
}

void BoxBlur::pass(ResourceBuffer& source, ResourceBuffer& target, BlurAxis axis, std::int32_t radius, BlurMode mode,
                   BlurForm form) {
  const ConstantBufferCommon& block = constants(passIndex_++ % constants_.size(), radius, mode);
  if (form == BlurForm::Pixel) {
    PassOptions options;
    options.constants = &block;
    pixelShader(axis).draw(target, {&source}, options);
    return;
  }
  PassTarget(target).setComputeTarget(*device_, 0);
  const std::uint32_t lines = axis == BlurAxis::X ? target.height() : target.width();
  computeShader(axis).dispatch((lines + kLinesPerGroup - 1) / kLinesPerGroup, 1, 1, {&source}, {&block});
}

PixelShader& BoxBlur::pixelShader(BlurAxis axis) {
  std::unique_ptr<PixelShader>& shader = pixelShaders_[static_cast<std::size_t>(axis)];
  if (!shader) {
    shader = std::make_unique<PixelShader>(*device_);
    shader->load(pixelShaderText(axis));
  }
  return *shader;
}

ComputeShader& BoxBlur::computeShader(BlurAxis axis) {
  std::unique_ptr<ComputeShader>& shader = computeShaders_[static_cast<std::size_t>(axis)];
  if (!shader) {
    shader = std::make_unique<ComputeShader>(*device_);
    shader->load(computeShaderText(axis));
  }
  return *shader;
}

const ConstantBufferCommon& BoxBlur::constants(std::size_t index, std::int32_t radius, BlurMode mode) {
  const Block block{radius, static_cast<std::int32_t>(mode), 1.0f / static_cast<float>(2 * radius + 1), 0};
  std::unique_ptr<ConstantBufferCommon>& buffer = constants_[index];
  std::optional<Block>& held = blocks_[index];
  if (!buffer) {
    buffer = std::make_unique<ConstantBufferCommon>(*device_);
    buffer->create(block);
  } else if (!held || held->radius != block.radius || held->mode != block.mode) {
    buffer->update(&block);
  }
  held = block;
  return *buffer;
}

std::unique_ptr<ResourceBuffer> BoxBlur::scratch(std::uint32_t width, std::uint32_t height, Format format) {
  const auto found = std::find_if(kept_.begin(), kept_.end(), [&](const std::unique_ptr<ResourceBuffer>& image) {
    return image->width() == width && image->height() == height && image->format() == format;
  });
  if (found == kept_.end()) return std::make_unique<ResourceBuffer>(*device_, width, height, format);
  std::unique_ptr<ResourceBuffer> image = std::move(*found);
  kept_.erase(found);
  return image;
}

void BoxBlur::recycle(std::unique_ptr<ResourceBuffer> image) {
  if (!image || image->empty()) return;
  if (kept_.size() == kKeptImages) kept_.erase(kept_.begin());
  kept_.push_back(std::move(image));
}

}  // namespace Media
