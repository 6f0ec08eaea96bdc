// The box blur on the CPU, written from what a pass is meant to sum rather than from
// either GPU form: each output pixel adds its whole window afresh, with no running sum.
// Slow and exact; for checks on small images only.
#pragma once

#include <cstdint>

#include "media/blur/BoxBlur.h"
#include "media/reference/PassImage.h"

namespace Media {

// One pass of radius `radius` along `axis`. With `halfSteps` each result is rounded to
// half precision, as an RGBA16F intermediate stores it.
PassImage boxPassReference(const PassImage& source, BlurAxis axis, std::int32_t radius, BlurMode mode,
                           bool halfSteps = false);
// The four passes of a blur, radii derived here from radius and aspect.
PassImage blurReference(const PassImage& image, std::int32_t radius, double aspect, BlurMode mode,
                        bool halfSteps = false);

}  // namespace Media
