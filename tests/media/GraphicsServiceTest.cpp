// What the device reads from the system file before it starts.
#include <gtest/gtest.h>

#include <string>

#include "media/GraphicsService.h"
#include "system/Exception.h"
#include "system/IniFile.h"

namespace {

Media::DeviceSettings read(const std::string& lines) {
  System::IniFile file;
  file.loadMemory("[Config]\r\n" + lines);
  return Media::GraphicsService::readSettings(file.section("Config"));
}

TEST(GraphicsService, ReadsFormatsAndTheShadowMapSizeFromTheSystemFile) {
  const Media::DeviceSettings settings = read("PixelFormat=28\r\nShadowBufferSize=1024\r\n");
  EXPECT_EQ(settings.pixelFormat, Media::Format::Rgba8Unorm);
  EXPECT_EQ(settings.maskFormat, Media::Format::A8Unorm);
  EXPECT_EQ(settings.shadowBufferSize, 1024u);

  for (const char* broken : {"PixelFormat=10\r\n", "ShadowBufferSize=large\r\n"}) {
    try {
      read(broken);
      ADD_FAILURE() << broken;
    } catch (const System::Exception& failure) {
      EXPECT_NE(std::string(failure.what()).find("ini file parameter invalid format(int) or undefined."),
                std::string::npos);
    }
  }
  EXPECT_THROW(read("PixelFormat=12\r\nShadowBufferSize=1024\r\n"), System::NoteException);
}

}  // namespace
