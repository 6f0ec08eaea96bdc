// The temporary images of one frame: the "cache:" buffers that scripts keep between the
// objects of a frame. One is made for each rendered frame and each nested render and is
// dropped with it, so nothing outlives the frame but what a script still holds. Limited
// in pixels, the oldest use going first. Used by the object tasks of its frame, which
// run one at a time, so it takes no lock.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>

namespace Media {
class ResourceBuffer;
}

namespace Render {

class ResourceCache {
 public:
  explicit ResourceCache(std::uint64_t limitPixels) : limit_(limitPixels) {}
  ResourceCache(const ResourceCache&) = delete;
  ResourceCache& operator=(const ResourceCache&) = delete;

  // The buffer stored under `key`, now the most recently used; empty when there is none.
  std::shared_ptr<Media::ResourceBuffer> get(const std::string& key);
  // Replaces any entry of the key, then drops the least recently used entries while the
  // total exceeds the limit: an entry larger than the limit does not stay.
  void put(const std::string& key, std::shared_ptr<Media::ResourceBuffer> buffer, std::uint64_t sizePixels);

  std::uint64_t total() const noexcept { return total_; }
  std::uint64_t limit() const noexcept { return limit_; }
  std::size_t count() const noexcept { return entries_.size(); }

 private:
  struct Entry {
    std::uint64_t size;
    std::shared_ptr<Media::ResourceBuffer> buffer;
    std::string key;
  };

  void trim();

  std::list<Entry> entries_;  // most recently used first
  std::unordered_map<std::string, std::list<Entry>::iterator> index_;
  std::uint64_t limit_;
  std::uint64_t total_ = 0;
};

}  // namespace Render
