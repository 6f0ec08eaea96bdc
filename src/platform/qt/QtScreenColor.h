// The colour on the screen at a point, for the colour pickers' modal pick: the mouse
// service asks for it when the pick's click lands outside the picking control.
#pragma once

#include <cstdint>

#include "media/target/RenderTarget.h"

namespace Platform {

// Screen pixels; opaque black where no screen can be read there.
Media::ColorF screenColorAt(std::int32_t x, std::int32_t y);

}  // namespace Platform
