#include "render/ResourceCache.h"

#include <gtest/gtest.h>

#include <memory>

#include "media/DeviceFakeBackend.h"
#include "media/GraphicsDevice.h"
#include "media/ResourceBuffer.h"

namespace {

using Render::ResourceCache;

class TemporaryImages : public ::testing::Test {
 protected:
  std::shared_ptr<Media::ResourceBuffer> image() { return std::make_shared<Media::ResourceBuffer>(device_); }

  Media::GraphicsDevice device_{[] { return std::make_unique<MediaTest::FakeBackend>(); }, Media::DeviceSettings{}};
};

TEST_F(TemporaryImages, LeastRecentlyUsedGoFirstWhenThePixelsExceedTheLimit) {
  ResourceCache cache(300);
  const auto a = image();
  cache.put("a", a, 100);
  cache.put("b", image(), 100);
  cache.put("c", image(), 100);
  EXPECT_EQ(cache.get("a"), a);  // now the most recent: b is the oldest
  cache.put("d", image(), 100);
  EXPECT_EQ(cache.get("b"), nullptr);
  EXPECT_NE(cache.get("a"), nullptr);
  EXPECT_NE(cache.get("c"), nullptr);
  EXPECT_EQ(cache.total(), 300u);

  // Storing under a key again replaces the entry and its size.
  cache.put("a", image(), 50);
  EXPECT_EQ(cache.total(), 250u);
  EXPECT_EQ(cache.count(), 3u);
}

TEST_F(TemporaryImages, AnImageLargerThanTheLimitDoesNotStayButLivesOnWhereHeld) {
  ResourceCache cache(100);
  cache.put("small", image(), 60);
  auto large = image();
  const std::weak_ptr<Media::ResourceBuffer> watch = large;
  cache.put("large", std::move(large), 101);
  EXPECT_EQ(cache.get("large"), nullptr);
  EXPECT_EQ(cache.get("small"), nullptr);  // trimmed from the back until nothing is left
  EXPECT_EQ(cache.total(), 0u);
  EXPECT_TRUE(watch.expired());
}

}  // namespace
