// libFuzzer entry for the built-in media readers. Built four times, once a reader
// (SORVEL_FUZZ_READER: 0 AVI, 1 WAV, 2 BMP, 3 TGA): each input is written to a file of
// that reader's extension, opened the way the input service opens it, and read. A
// refused file is the normal result for most inputs; what counts as a finding is a
// crash, a sanitizer report, a hang, runaway memory, or a broken promise of the reader:
//
// - open never throws: a file that cannot be read is refused;
// - an opened file has video or sound, a size of 1 to 16384 each way, a frame count of
//   at least 1 with video, and a rate of at most 768 kHz in one or two channels;
// - a frame that is read has the file's format and size; a block of sound has exactly
//   one second of samples. Reads may fail only with the system's own exceptions.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "media/audio/AudioBlockBuffer.h"
#include "media/image/ImageBuffer.h"
#include "plugin/AviFileReader.h"
#include "plugin/ImageFileReader.h"
#include "plugin/InputFile.h"
#include "plugin/WaveFileReader.h"
#include "system/Exception.h"
#include "system/Log.h"

namespace {

[[noreturn]] void fault(const char* what) {
  std::fprintf(stderr, "\n*** sorvel_media_fuzz: %s\n", what);
  std::fflush(stderr);
  std::abort();
}

Plugin::InputPlugin& reader() {
#if SORVEL_FUZZ_READER == 0
  static Plugin::AviFileReader instance;
#elif SORVEL_FUZZ_READER == 1
  static Plugin::WaveFileReader instance;
#else
  static Plugin::ImageFileReader instance;
#endif
  return instance;
}

const char* extension() {
  constexpr const char* kExtensions[] = {".avi", ".wav", ".bmp", ".tga"};
  return kExtensions[SORVEL_FUZZ_READER];
}

// One file per process, rewritten for each input: workers of -fork and -jobs each have
// their own.
const std::filesystem::path& inputPath() {
  static const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("sorvel-media-fuzz-" + std::to_string(getpid()) + extension());
  return path;
}

void checkFrame(Plugin::InputFile& file, std::int32_t frame) {
  try {
    const std::shared_ptr<Media::ImageBuffer> image = file.readVideo(frame);
    if (image && (image->format() != file.pixelFormat || image->width() != file.width ||
                  image->height() != file.height)) {
      fault("a frame differs from the file's format or size");
    }
  } catch (const System::Exception&) {
  }
}

void checkBlock(Plugin::InputFile& file, std::int32_t block) {
  try {
    const std::shared_ptr<Media::AudioBlockBuffer> sound = file.readAudio(block);
    if (!sound || sound->sampleCount() != file.sampleRate) fault("a block of sound is not one second long");
  } catch (const System::Exception&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // Refusals log an error each; the log of a fuzz run would be all of them.
  System::Log::setHandler([](const System::Log::Type&, const char*, const char*) {});
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove(inputPath(), ignored);
  });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  {
    std::ofstream out(inputPath(), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  }
  std::shared_ptr<Plugin::InputFile> file;
  try {
    file = reader().open(inputPath().wstring(), 0);
  } catch (...) {
    fault("open threw instead of refusing the file");
  }
  if (!file) return 0;
  if (!file->hasVideo() && !file->hasAudio()) fault("an opened file has neither video nor sound");
  if (file->hasVideo()) {
    if (file->frameCount < 1 || file->width < 1 || file->height < 1 || file->width > 16384 || file->height > 16384) {
      fault("an opened video has no frames or an impossible size");
    }
    // In order, a jump back, a jump forward, and the ends.
    for (const std::int32_t frame : {0, 1, 2, file->frameCount / 2, 1, file->frameCount - 1, file->frameCount}) {
      checkFrame(*file, frame);
    }
  }
  if (file->hasAudio()) {
    if (file->channels < 1 || file->channels > 2 || file->sampleRate < 1 || file->sampleRate > 768000) {
      fault("an opened sound has an impossible channel count or rate");
    }
    const auto last = static_cast<std::int32_t>(std::min<std::int64_t>(file->sampleCount / file->sampleRate, 1 << 20));
    for (const std::int32_t block : {0, 1, 2, last, 1, last + 1}) checkBlock(*file, block);
  }
  return 0;
}
