// The eight sampler states that shaders pick by number. Every state reads the top mip
// only and compares with "always"; what differs is the filter, the address modes and
// the border colour. The GPU back end creates each state at its first use.
#pragma once

#include <array>
#include <cstdint>

namespace Media {

enum class SamplerFilter : std::uint8_t { Linear, Point };
enum class AddressMode : std::uint8_t { Border, Clamp, Wrap, Mirror };

struct SamplerState {
  SamplerFilter filter;
  AddressMode addressU;
  AddressMode addressV;
  AddressMode addressW;
  std::array<float, 4> borderColor;
};

inline constexpr std::size_t kSamplerStateCount = 8;

inline constexpr std::array<SamplerState, kSamplerStateCount> kSamplerStates{{
    {SamplerFilter::Linear, AddressMode::Border, AddressMode::Border, AddressMode::Border, {0, 0, 0, 0}},
    {SamplerFilter::Linear, AddressMode::Clamp, AddressMode::Clamp, AddressMode::Clamp, {0, 0, 0, 0}},
    {SamplerFilter::Linear, AddressMode::Wrap, AddressMode::Wrap, AddressMode::Wrap, {0, 0, 0, 0}},
    {SamplerFilter::Linear, AddressMode::Mirror, AddressMode::Mirror, AddressMode::Mirror, {0, 0, 0, 0}},
    {SamplerFilter::Linear, AddressMode::Mirror, AddressMode::Border, AddressMode::Border, {0, 0, 0, 0}},
    {SamplerFilter::Point, AddressMode::Border, AddressMode::Border, AddressMode::Border, {0, 0, 0, 0}},
    {SamplerFilter::Point, AddressMode::Clamp, AddressMode::Clamp, AddressMode::Clamp, {0, 0, 0, 0}},
    {SamplerFilter::Linear, AddressMode::Border, AddressMode::Border, AddressMode::Border, {1, 1, 1, 1}},
}};

}  // namespace Media
