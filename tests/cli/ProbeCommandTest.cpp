// sorvel2-cli probe over media files written by the test: what it prints for each
// reader, why it refuses what it cannot open, and a frame written as the program
// decodes it.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "cli/CliRun.h"
#include "cli/Commands.h"
#include "media/image/ImageBuffer.h"
#include "platform/qt/QtImageCodec.h"
#include "support/TempDirectory.h"
#include "system/Text.h"

namespace {

using CliTest::Outcome;
using CliTest::run;

void put16(std::string& bytes, std::uint32_t value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8 & 0xFF);
}

void put32(std::string& bytes, std::uint32_t value) {
  put16(bytes, value & 0xFFFF);
  put16(bytes, value >> 16);
}

// A 24-bit BMP of 3 by 2 pixels, bottom row first, rows padded to 12 bytes. Pixel
// (x, y) of the picture is B = 10 * x, G = 100 + y, R = 200.
std::string bitmap() {
  std::string bytes = "BM";
  put32(bytes, 54 + 24);
  put32(bytes, 0);
  put32(bytes, 54);
  put32(bytes, 40);
  put32(bytes, 3);
  put32(bytes, 2);
  put16(bytes, 1);
  put16(bytes, 24);
  for (int i = 0; i < 6; ++i) put32(bytes, 0);
  for (int y = 1; y >= 0; --y) {
    for (int x = 0; x < 3; ++x) bytes += {static_cast<char>(10 * x), static_cast<char>(100 + y), static_cast<char>(200)};
    bytes.append(3, '\0');
  }
  return bytes;
}

// One second of 16-bit stereo PCM at 8000 Hz, silent.
std::string wave() {
  std::string bytes = "RIFF";
  put32(bytes, 36 + 32000);
  bytes += "WAVEfmt ";
  put32(bytes, 16);
  put16(bytes, 1);
  put16(bytes, 2);
  put32(bytes, 8000);
  put32(bytes, 32000);
  put16(bytes, 4);
  put16(bytes, 16);
  bytes += "data";
  put32(bytes, 32000);
  bytes.append(32000, '\0');
  return bytes;
}

TEST(CliProbe, DescribesEachFileAndSaysWhyOthersFail) {
  TestSupport::TempDirectory folder;
  const std::string picture = folder.writeFile("picture.bmp", bitmap()).string();
  const std::string sound = folder.writeFile("sound.wav", wave()).string();
  const std::string broken = folder.writeFile("broken.avi", std::string("RIFF\x04\0\0\0AVI ", 12)).string();
  const std::string unknown = folder.writeFile("notes.xyz", "text").string();
  // A PNG goes past the uncompressed reader to the image library.
  const std::string photo = folder.path().string() + "/photo.png";
  Media::ImageBuffer pixels(Media::Format::Rgba8Unorm, 5, 4);
  pixels.clear();
  Platform::createQtImageCodec()->write(System::Text::fromUtf8(photo), Media::ImageContainer::Png, pixels, {},
                                        "CliProbe");
  const Outcome result = run({"probe", picture, sound, broken, unknown, photo});
  EXPECT_EQ(result.status, Cli::kPartlyFailed);
  EXPECT_EQ(result.out, picture +
                            "\n"
                            "  reader: Uncompressed Image File Reader\n"
                            "  flags: video (1)\n"
                            "  frames: 1\n"
                            "  size: 3x2\n"
                            "  rate: 1/1 (1.000 fps)\n"
                            "  pixel format: RGB24bit (88)\n" +
                            sound +
                            "\n"
                            "  reader: Wave File Reader\n"
                            "  flags: audio (2)\n"
                            "  samples: 8000\n"
                            "  sample format: PCM (1)\n"
                            "  bits: 16\n"
                            "  channels: 2\n"
                            "  sample rate: 8000 Hz\n" +
                            photo +
                            "\n"
                            "  reader: Image Library File Reader\n"
                            "  flags: video (1)\n"
                            "  frames: 1\n"
                            "  size: 5x4\n"
                            "  rate: 1/1 (1.000 fps)\n"
                            "  pixel format: RGBA32bit (28)\n");
  EXPECT_EQ(result.err, "sorvel2-cli: " + broken + ": can not open file. (hdrl chunk not found.)\n" +
                            "sorvel2-cli: " + unknown + ": not supported file.\n");
}

// The frame goes up into the frame's pixel format and comes back as straight RGBA: an
// opaque 8-bit picture survives exactly. The installed program runs, with its tuning
// files beside it, as a render node would run it.
TEST(CliProbe, WritesAFrameAsTheProgramDecodesIt) {
  TestSupport::TempDirectory folder;
  const std::string picture = folder.writeFile("picture.bmp", bitmap()).string();
  const std::string output = folder.path().string() + "/frame.png";
  const std::string command = "'" SORVEL2_CLI_EXECUTABLE "' probe '" + picture + "' --frame 0 -o '" + output + "' >'" +
                              folder.path().string() + "/out.txt' 2>&1";
  ASSERT_EQ(WEXITSTATUS(std::system(command.c_str())), Cli::kSuccess) << folder.readFile("out.txt");
  const auto codec = Platform::createQtImageCodec();
  const auto image = codec->read(System::Text::fromUtf8(output), "CliProbe");
  ASSERT_EQ(image->width(), 3u);
  ASSERT_EQ(image->height(), 2u);
  for (std::uint32_t y = 0; y < 2; ++y) {
    for (std::uint32_t x = 0; x < 3; ++x) {
      const auto* rgba = reinterpret_cast<const std::uint8_t*>(image->row(y)) + x * 4;
      EXPECT_EQ(std::vector<int>(rgba, rgba + 4), (std::vector<int>{200, static_cast<int>(100 + y),
                                                                    static_cast<int>(10 * x), 255}))
          << x << "," << y;
    }
  }
}

TEST(CliProbe, WrongCommandLinesAreRefused) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{{"probe"},
                                                                    {"probe", "a.avi", "--frame", "1"},
                                                                    {"probe", "a.avi", "--frame", "x", "-o", "o.png"},
                                                                    {"probe", "a.avi", "b.avi", "--frame", "1", "-o", "o.png"},
                                                                    {"probe", "a.avi", "--frame", "1", "-o", "o.txt"},
                                                                    {"probe", "--fast", "a.avi"}}) {
    const Outcome result = run(arguments);
    EXPECT_EQ(result.status, Cli::kUnreadable) << arguments.size();
    EXPECT_TRUE(result.out.empty());
  }
}

}  // namespace
