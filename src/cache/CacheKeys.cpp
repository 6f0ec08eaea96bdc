#include "cache/CacheKeys.h"

#include <cstring>

namespace Cache {

std::uint64_t fnv1a64(const void* data, std::size_t size) noexcept {
  constexpr std::uint64_t kOffsetBasis = 0xcbf29ce484222325ull;
  constexpr std::uint64_t kPrime = 0x100000001b3ull;
  const auto* bytes = static_cast<const unsigned char*>(data);
  std::uint64_t hash = kOffsetBasis;
  for (std::size_t i = 0; i < size; ++i) {
    hash ^= bytes[i];
    hash *= kPrime;
  }
  return hash;
}

std::uint64_t hashCacheKey(const std::wstring& name, std::int32_t number) noexcept {
  unsigned char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);
  return fnv1a64(bytes, sizeof bytes) ^ fnv1a64(name.data(), name.size() * sizeof(wchar_t));
}

}  // namespace Cache
