#include "render/ResourceCache.h"

#include <utility>

#include "media/ResourceBuffer.h"

namespace Render {

std::shared_ptr<Media::ResourceBuffer> ResourceCache::get(const std::string& key) {
  const auto found = index_.find(key);
  if (found == index_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return found->second->buffer;
}

void ResourceCache::put(const std::string& key, std::shared_ptr<Media::ResourceBuffer> buffer,
                        std::uint64_t sizePixels) {
  if (const auto found = index_.find(key); found != index_.end()) {
    total_ -= found->second->size;
    entries_.erase(found->second);
    index_.erase(found);
  }
  entries_.push_front(Entry{sizePixels, std::move(buffer), key});
  index_.emplace(key, entries_.begin());
  total_ += sizePixels;
  trim();
}

void ResourceCache::trim() {
  while (total_ > limit_ && !entries_.empty()) {
    total_ -= entries_.back().size;
    index_.erase(entries_.back().key);
    entries_.pop_back();
  }
}

}  // namespace Render
