// The keys of the caches of decoded media: a name and a number. The name is a file's path
// in its track form (Plugin::InputService::MakeMultiTrackFileName), or "*" and a scene id
// in decimal for a scene used as media. Their hash is FNV-1a 64 over the number's four
// bytes XORed with FNV-1a 64 over the bytes of the name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace Cache {

std::uint64_t fnv1a64(const void* data, std::size_t size) noexcept;
std::uint64_t hashCacheKey(const std::wstring& name, std::int32_t number) noexcept;

// Whether the name stands for a scene used as media.
inline bool isSceneName(const std::wstring& name) noexcept { return !name.empty() && name[0] == L'*'; }

struct AudioCacheKey {
  std::wstring name;
  std::int32_t block = 0;  // one block is one second of the source
  bool operator==(const AudioCacheKey&) const = default;
};

struct ImageCacheKey {
  std::wstring name;
  std::int32_t frame = 0;  // 0 for a still image
  bool operator==(const ImageCacheKey&) const = default;
};

}  // namespace Cache

template <>
struct std::hash<Cache::AudioCacheKey> {
  std::size_t operator()(const Cache::AudioCacheKey& key) const noexcept {
    return static_cast<std::size_t>(Cache::hashCacheKey(key.name, key.block));
  }
};

template <>
struct std::hash<Cache::ImageCacheKey> {
  std::size_t operator()(const Cache::ImageCacheKey& key) const noexcept {
    return static_cast<std::size_t>(Cache::hashCacheKey(key.name, key.frame));
  }
};
