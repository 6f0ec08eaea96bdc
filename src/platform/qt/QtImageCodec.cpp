#include "platform/qt/QtImageCodec.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QString>

#include <cstring>

#include "media/image/ImageBuffer.h"
#include "system/Exception.h"
#include "system/ReplacingFile.h"

namespace Platform {

namespace {

// What a reader may allocate for one picture, in MiB: the largest image a GPU buffer
// holds (16384 squared, 4 bytes a pixel). Qt's own default refuses an 8K picture, and
// without a limit a forged header could ask for any amount.
constexpr int kAllocationLimit = 1024;

QString toQString(const std::wstring& text) { return QString::fromStdWString(text); }

std::string note(const QString& error, const std::wstring& path) {
  return (error + QStringLiteral(" (") + toQString(path) + QStringLiteral(")")).toStdString();
}

// The Qt form of a CPU image's bytes, by its format and alpha.
QImage::Format qtFormat(Media::Format format, bool premultiplied) {
  switch (format) {
    case Media::Format::Rgba8Unorm:
      return premultiplied ? QImage::Format_RGBA8888_Premultiplied : QImage::Format_RGBA8888;
    case Media::Format::Bgra8Unorm:
      // Bytes B, G, R, A are a 32-bit ARGB word on a little-endian machine.
      return premultiplied ? QImage::Format_ARGB32_Premultiplied : QImage::Format_ARGB32;
    case Media::Format::Rgba16Unorm:
      return premultiplied ? QImage::Format_RGBA64_Premultiplied : QImage::Format_RGBA64;
    default:
      return QImage::Format_RGB32;
  }
}

class QtImageCodec : public Media::ImageCodec {
 public:
  std::optional<Media::ImageSize> readSize(const std::wstring& path) override {
    QImageReader reader(toQString(path));
    reader.setAllocationLimit(kAllocationLimit);
    if (!reader.canRead()) return std::nullopt;
    QSize size = reader.size();
    // A reader that cannot tell the size from the header has to decode the picture.
    if (!size.isValid()) size = reader.read().size();
    if (size.isEmpty()) return std::nullopt;
    return Media::ImageSize{static_cast<std::uint32_t>(size.width()), static_cast<std::uint32_t>(size.height())};
  }

  std::shared_ptr<Media::ImageBuffer> read(const std::wstring& path, const char* place) override {
    QImageReader reader(toQString(path));
    reader.setAllocationLimit(kAllocationLimit);
    QImage decoded;
    if (!reader.read(&decoded)) {
      throw System::NoteException(place, "QImageReader::read", note(reader.errorString(), path));
    }
    const QImage rgba = decoded.convertToFormat(QImage::Format_RGBA8888);
    if (rgba.isNull()) {
      throw System::NoteException(place, "QImage::convertToFormat can not convert.", note(QString(), path));
    }
    const auto width = static_cast<std::uint32_t>(rgba.width());
    const auto height = static_cast<std::uint32_t>(rgba.height());
    auto image = std::make_shared<Media::ImageBuffer>(Media::Format::Rgba8Unorm, width, height);
    for (std::uint32_t y = 0; y < height; ++y) {
      std::memcpy(image->row(y), rgba.constScanLine(static_cast<int>(y)), std::size_t{width} * 4);
    }
    return image;
  }

  void write(const std::wstring& path, Media::ImageContainer container, const Media::ImageBuffer& image,
             const Media::ImageWriteOptions& options, const char* place) override {
    // A view of the image's rows where they lie; nothing is copied unless converted.
    const QImage view(reinterpret_cast<const uchar*>(image.data()), static_cast<int>(image.width()),
                      static_cast<int>(image.height()), static_cast<qsizetype>(image.pitch()),
                      qtFormat(image.format(), options.premultiplied));
    const bool jpeg = container == Media::ImageContainer::Jpeg;
    // Encoded in memory first, so that the file is replaced whole or not at all.
    QByteArray encoded;
    QBuffer buffer(&encoded);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, jpeg ? QByteArrayLiteral("jpeg") : QByteArrayLiteral("png"));
    if (options.quality) writer.setQuality(qRound(*options.quality * 100.0f));
    if (!writer.write(jpeg ? view.convertToFormat(QImage::Format_RGB32) : view)) {
      throw System::NoteException(place, "QImageWriter::write", note(writer.errorString(), path));
    }
    System::ReplacingFile file(path);
    file.file().write(encoded.constData(), static_cast<std::size_t>(encoded.size()));
    file.commit();
  }
};

}  // namespace

std::unique_ptr<Media::ImageCodec> createQtImageCodec() { return std::make_unique<QtImageCodec>(); }

}  // namespace Platform
