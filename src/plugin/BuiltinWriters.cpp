#include "plugin/BuiltinWriters.h"

#include <cmath>
#include <cstdio>

#include "media/audio/RawAudioBuffer.h"
#include "media/image/ImageBuffer.h"
#include "media/image/ImageService.h"
#include "plugin/AviFileWriter.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/FileName.h"
#include "system/Singleton.h"

namespace Plugin {

namespace {

const std::vector<std::wstring> kVideoTypes{L"RGB24bit", L"RGBA32bit", L"YUY2", L"RGBA64bit(PA64)",
                                            L"RGBA64bit(HF64)"};
const std::vector<std::wstring> kAudioTypes{L"PCM16bit", L"PCM(float)32bit"};

Media::ImageService& images() {
  Media::ImageService* service = System::Singleton<Media::ImageService>::get();
  if (!service) throw System::NoteException("Plugin::OutputFile::save", "image library not installed.");
  return *service;
}

class AviFileSaveFile final : public OutputFile {
 public:
  AviFileSaveFile(const OutputScene& scene, const std::wstring& path, std::shared_ptr<OutputSource> source,
                  Media::Format format, std::uint16_t tag)
      : OutputFile(scene, path, std::move(source)), format_(format), tag_(tag) {}

  void save() override {
    System::File file;
    file.open(path(), System::File::Mode::Write);
    AviStreamFormat stream;
    stream.width = static_cast<std::uint32_t>(scene().width);
    stream.height = static_cast<std::uint32_t>(scene().height);
    stream.videoFormat = format_;
    stream.rate = static_cast<std::uint32_t>(scene().rate);
    stream.scale = static_cast<std::uint32_t>(scene().scale);
    stream.sampleRate = static_cast<std::uint32_t>(scene().audioRate);
    stream.audioTag = tag_;
    stream.audioBits = tag_ == 1 ? 16 : 32;
    AviFileWriter writer(file, stream);
    // Whatever stops the loop, the file is closed with headers that count what it holds.
    try {
      for (std::int32_t i = 0; i < range().frameCount && !cancelled(); ++i) {
        setProgress(i, range().frameCount);
        const std::int32_t frame = range().startFrame + i;
        const std::shared_ptr<Media::ImageBuffer> image = getVideo(frame, format_, true);
        const std::vector<std::byte> bitmap = image ? image->toBitmap() : std::vector<std::byte>{};
        const std::shared_ptr<Media::RawAudioBuffer> sound = getAudio(frame, tag_);
        std::span<const std::byte> samples;
        std::uint32_t count = 0;
        if (sound) {
          count = sound->sampleCount;
          samples = {reinterpret_cast<const std::byte*>(sound->bytes.data()), std::size_t{count} * sound->blockBytes};
        }
        writer.writeFrame(bitmap, samples, count);
      }
      setProgress(range().frameCount, range().frameCount);
    } catch (...) {
      writer.finish();
      throw;
    }
    writer.finish();
  }

 private:
  Media::Format format_;
  std::uint16_t tag_;
};

// One picture, or a numbered run of them.
class PictureSaveFile final : public OutputFile {
 public:
  PictureSaveFile(const OutputScene& scene, const std::wstring& path, std::shared_ptr<OutputSource> source,
                  Media::ImageContainer container, bool transparent, std::int32_t quality, bool sequence)
      : OutputFile(scene, path, std::move(source)),
        container_(container),
        transparent_(transparent),
        quality_(quality),
        sequence_(sequence) {}

  bool announcesEnd() const override { return sequence_; }

  void save() override {
    if (!sequence_) {
      write(scene().cursorFrame, path());
      return;
    }
    for (std::int32_t i = 0; i < range().frameCount && !cancelled(); ++i) {
      setProgress(i, range().frameCount);
      if (!write(range().startFrame + i, sequenceFileName(path(), range().frameCount, i))) break;
    }
    setProgress(range().frameCount, range().frameCount);
  }

 private:
  bool write(std::int32_t frame, const std::wstring& name) {
    const bool alpha = container_ == Media::ImageContainer::Png && transparent_;
    const std::shared_ptr<Media::ImageBuffer> image =
        getVideo(frame, alpha ? Media::Format::Bgra8Unorm : Media::Format::Bgrx8Unorm, true);
    if (!image) return false;
    if (container_ == Media::ImageContainer::Jpeg) {
      images().saveJpeg(*image, name, quality_);
    } else {
      images().saveToFile(name, Media::ImageContainer::Png, *image, Media::ImageWriteOptions{});
    }
    return true;
  }

  Media::ImageContainer container_;
  bool transparent_;
  std::int32_t quality_;
  bool sequence_;
};

}  // namespace

AviFileSave::AviFileSave() : OutputPlugin(L"AVIファイル出力", L"AVI File (*.avi)", Video | Audio | HasSettings) {
  addSetting("VideoType", &videoType_, L"RGB24bit", kVideoTypes);
  addSetting("AudioType", &audioType_, L"PCM16bit", kAudioTypes);
  loadSettings(nullptr);
}

std::wstring AviFileSave::getSettingText() const { return L"Video: " + videoType_ + L" / Audio: " + audioType_; }

Media::Format AviFileSave::videoFormat() const {
  if (videoType_ == L"YUY2") return Media::Format::Yuy2;
  if (videoType_ == L"RGBA64bit(PA64)") return Media::Format::Rgba16Unorm;
  if (videoType_ == L"RGBA64bit(HF64)") return Media::Format::Rgba16Float;
  if (videoType_ == L"RGBA32bit") return Media::Format::Bgra8Unorm;
  return Media::Format::Bgrx8Unorm;
}

std::uint16_t AviFileSave::audioTag() const { return audioType_ == L"PCM(float)32bit" ? 3 : 1; }

std::unique_ptr<OutputFile> AviFileSave::createFile(const OutputScene& scene, const std::wstring& path,
                                                    std::shared_ptr<OutputSource> source) {
  return std::make_unique<AviFileSaveFile>(scene, path, std::move(source), videoFormat(), audioTag());
}

PngFileSave::PngFileSave() : OutputPlugin(L"PNGファイル出力", L"PNG File (*.png)", Video | HasSettings | Still) {
  addSetting("transparent", &transparent_, 1, 0, 1);
  loadSettings(nullptr);
}

std::unique_ptr<OutputFile> PngFileSave::createFile(const OutputScene& scene, const std::wstring& path,
                                                    std::shared_ptr<OutputSource> source) {
  return std::make_unique<PictureSaveFile>(scene, path, std::move(source), Media::ImageContainer::Png,
                                           transparent_ != 0, 0, false);
}

JpgFileSave::JpgFileSave()
    : OutputPlugin(L"JPEGファイル出力", L"JPEG File (*.jpg;*.jpeg)", Video | HasSettings | Still) {
  addSetting("quality", &quality_, 90, 1, 100);
  loadSettings(nullptr);
}

std::wstring JpgFileSave::getSettingText() const { return L"JPEG品質:" + std::to_wstring(quality_); }

std::unique_ptr<OutputFile> JpgFileSave::createFile(const OutputScene& scene, const std::wstring& path,
                                                    std::shared_ptr<OutputSource> source) {
  return std::make_unique<PictureSaveFile>(scene, path, std::move(source), Media::ImageContainer::Jpeg, false,
                                           quality_, false);
}

SequentialFileSave::SequentialFileSave()
    : OutputPlugin(L"連番ファイル出力", L"Imaeg File (*.png;*.jpg)", Video | HasSettings) {
  addSetting("transparent", &transparent_, 1, 0, 1);
  addSetting("quality", &quality_, 90, 1, 100);
  loadSettings(nullptr);
}

std::unique_ptr<OutputFile> SequentialFileSave::createFile(const OutputScene& scene, const std::wstring& path,
                                                           std::shared_ptr<OutputSource> source) {
  const std::wstring extension = System::FileName::extension(path);
  if (extension != L"png" && extension != L"jpg") {
    throw System::NoteException("Plugin::SequentialFileSave::createFile", "対応していないファイル拡張子です");
  }
  return std::make_unique<PictureSaveFile>(
      scene, path, std::move(source), extension == L"png" ? Media::ImageContainer::Png : Media::ImageContainer::Jpeg,
      transparent_ != 0, quality_, true);
}

std::wstring sequenceFileName(const std::wstring& path, std::int32_t count, std::int32_t index) {
  const int digits = count > 0 ? static_cast<int>(std::log10(static_cast<double>(count))) + 1 : 1;
  const std::wstring extension = System::FileName::extension(path);
  const std::wstring prefix = path.substr(0, path.size() - extension.size() - (extension.empty() ? 0 : 1));
  wchar_t number[32];
  std::swprintf(number, 32, L"%0*d", digits, index);
  return prefix + number + L"." + extension;
}

std::vector<std::shared_ptr<OutputPlugin>> builtinWriters() {
  return {std::make_shared<AviFileSave>(), std::make_shared<PngFileSave>(), std::make_shared<JpgFileSave>(),
          std::make_shared<SequentialFileSave>()};
}

}  // namespace Plugin
