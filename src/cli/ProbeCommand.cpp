// probe: what the input service sees in media files, and one frame of a file as the
// program decodes it.
#include <cstdio>
#include <memory>
#include <optional>

#include "cli/Command.h"
#include "cli/Commands.h"
#include "cli/MediaServices.h"
#include "media/GraphicsService.h"
#include "media/RenderBuffer.h"
#include "media/ResourceBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ImageService.h"
#include "media/image/ResourceConvert.h"
#include "media/pass/FramePasses.h"
#include "plugin/InputFile.h"
#include "plugin/InputPlugin.h"
#include "plugin/InputService.h"
#include "system/Exception.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace Cli {

namespace {

struct ProbeOptions {
  std::vector<std::string> files;
  std::optional<std::int32_t> frame;
  std::string output;
};

// Reads the options; a message for the user where the command line is wrong.
std::optional<std::string> parse(const Arguments& arguments, ProbeOptions& options) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "--frame" || argument == "-o") {
      if (i + 1 == arguments.size()) return argument + " needs a value";
      const std::string& value = arguments[++i];
      if (argument == "-o") {
        options.output = value;
        continue;
      }
      char* end = nullptr;
      const long frame = std::strtol(value.c_str(), &end, 10);
      if (value.empty() || *end != '\0' || frame < 0 || frame > INT32_MAX) return "--frame takes a frame number";
      options.frame = static_cast<std::int32_t>(frame);
    } else if (argument.size() > 1 && argument[0] == '-') {
      return "unknown option '" + argument + "'";
    } else {
      options.files.push_back(argument);
    }
  }
  if (options.files.empty()) return "probe takes one or more media files";
  if (options.frame.has_value() != !options.output.empty()) return "--frame and -o go together";
  if (options.frame && options.files.size() != 1) return "--frame takes one media file";
  if (options.frame) {
    const std::wstring extension = System::FileName::extension(System::Text::fromUtf8(options.output));
    if (extension != L"png" && extension != L"jpg" && extension != L"jpeg") return "-o writes a .png or .jpg file";
  }
  return std::nullopt;
}

std::string narrow(const std::wstring& text) { return System::Text::toUtf8(text); }

std::string flagNames(std::uint32_t flags) {
  std::string names;
  const auto add = [&](std::uint32_t flag, const char* name) {
    if (flags & flag) names += (names.empty() ? "" : ", ") + std::string(name);
  };
  add(Plugin::InputFile::Video, "video");
  add(Plugin::InputFile::Audio, "audio");
  add(Plugin::InputFile::MultiTrack, "multi-track");
  add(Plugin::InputFile::OwnTimeToFrame, "own time-to-frame");
  return (names.empty() ? "none" : names) + " (" + std::to_string(flags) + ")";
}

void describe(const std::string& name, const Plugin::InputFile& file, std::ostream& out) {
  out << name << '\n';
  out << "  reader: " << (file.plugin ? narrow(file.plugin->name()) : "?") << '\n';
  out << "  flags: " << flagNames(file.flags) << '\n';
  if (file.hasVideo()) {
    char rate[64];
    std::snprintf(rate, sizeof(rate), "%u/%u (%.3f fps)", file.rate, file.scale,
                  file.scale ? static_cast<double>(file.rate) / file.scale : 0.0);
    const std::string format = Media::ImageBuffer::formatName(file.pixelFormat);
    out << "  frames: " << file.frameCount << '\n'
        << "  size: " << file.width << 'x' << file.height << '\n'
        << "  rate: " << rate << '\n'
        << "  pixel format: " << (format.empty() ? "unknown" : format) << " ("
        << static_cast<std::uint32_t>(file.pixelFormat) << ")\n";
  }
  if (file.hasAudio()) {
    const char* format = file.sampleFormat == 1 ? "PCM" : file.sampleFormat == 3 ? "float" : "unknown";
    out << "  samples: " << file.sampleCount << '\n'
        << "  sample format: " << format << " (" << file.sampleFormat << ")\n"
        << "  bits: " << file.sampleBits << '\n'
        << "  channels: " << file.channels << '\n'
        << "  sample rate: " << file.sampleRate << " Hz\n";
  }
  if (file.flags & Plugin::InputFile::MultiTrack) {
    out << "  tracks: " << file.videoTrackCount << " video, " << file.audioTrackCount << " audio\n";
  }
}

// Opens as video, else as audio. On failure, the reason: the input service's own
// message, with what the last reader that tried said about the file.
std::shared_ptr<Plugin::InputFile> open(MediaServices& services, const std::string& name, std::string& reason) {
  const std::wstring path = absolutePath(name);
  std::string failure;
  for (Plugin::MediaKind kind : {Plugin::MediaKind::Video, Plugin::MediaKind::Audio}) {
    try {
      services.takeProblems();
      return services.input().openFile(path, kind);
    } catch (const System::NoteException& exception) {
      std::vector<std::string> problems = services.takeProblems();
      // The last line is the service's own; a reader's reason stands before it.
      const std::string said = problems.size() >= 2 ? problems[problems.size() - 2] : "";
      const std::string message = exception.message() + (said.empty() ? "" : " (" + said + ")");
      // "not supported file." for one kind says less than what the other kind found.
      if (failure.empty() || exception.message() != "not supported file.") failure = message;
    }
  }
  reason = failure;
  return nullptr;
}

// Frame `frame` as the program shows it: uploaded and converted into the frame's pixel
// format, then read back as 8-bit RGBA with straight alpha, and written to `output`.
void writeFrame(MediaServices& services, Plugin::InputFile& file, std::int32_t frame, const std::string& output) {
  const std::shared_ptr<Media::ImageBuffer> image = file.readVideo(frame);
  if (!image) throw System::NoteException("Cli::probe", "frame could not be read.");
  Media::GraphicsService& graphics = services.graphics();
  Media::GraphicsDevice& device = graphics.device();
  Media::ResourceConvert& convert = *graphics.resourceConvert();
  Media::ResourceBuffer decoded(convert, *image, Media::ConvertParameters{});
  auto shown = std::make_unique<Media::RenderBuffer>(device, decoded.width(), decoded.height());
  device.run([&] { graphics.framePasses()->pixelShader(Media::FramePass::Copy).draw(*shown, {&decoded}); });
  const std::shared_ptr<Media::ImageBuffer> rgba = shown->toImageBuffer(convert, Media::Format::Rgba8Unorm, true);
  const std::wstring path = absolutePath(output);
  if (System::FileName::extension(path) == L"png") {
    services.images().saveToFile(path, Media::ImageContainer::Png, *rgba, Media::ImageWriteOptions{});
  } else {
    services.images().saveJpeg(*rgba, path, 90);
  }
  device.run([&] { shown.reset(); });
}

int probe(const Arguments& arguments, std::ostream& out, std::ostream& err) {
  ProbeOptions options;
  if (const std::optional<std::string> wrong = parse(arguments, options)) return usageError(err, *wrong);
  MediaServices services;
  int status = kSuccess;
  for (const std::string& name : options.files) {
    std::string reason;
    const std::shared_ptr<Plugin::InputFile> file = open(services, name, reason);
    if (!file) {
      err << "sorvel2-cli: " << name << ": " << reason << '\n';
      status = kPartlyFailed;
      continue;
    }
    describe(name, *file, out);
    if (!options.frame) continue;
    try {
      if (!file->hasVideo()) throw System::NoteException("Cli::probe", "file is no video.");
      writeFrame(services, *file, *options.frame, options.output);
    } catch (const std::exception& exception) {
      err << "sorvel2-cli: " << options.output << ": frame " << *options.frame
          << " not written: " << System::Text::singleLine(exception.what()) << '\n';
      status = kPartlyFailed;
    }
  }
  return status;
}

}  // namespace

const Command kProbeCommand{
    "probe", "probe FILE...", "print what the program reads in media files",
    "usage: sorvel2-cli probe FILE...\n"
    "       sorvel2-cli probe FILE --frame N -o OUT.png\n"
    "\n"
    "Opens each FILE as the editor does, through the readers of the input service in\n"
    "their order, and prints one block per file: the reader that took it, its flags,\n"
    "and for video the frame count, size, rate and pixel format, for sound the sample\n"
    "count, format, bits, channels and rate, for multi-track files the track counts.\n"
    "A file that cannot be opened gets one line on standard error saying why.\n"
    "\n"
    "With --frame N and -o OUT, frame N of the one FILE is written to OUT (.png or .jpg)\n"
    "as the program decodes it: converted into the frame's pixel format on the graphics\n"
    "device and back.\n"
    "\n"
    "exit status: 0 every file opened (and the frame was written), 1 some did not,\n"
    "2 the command line is wrong.\n",
    probe};

}  // namespace Cli
