#include "platform/qt/QtSvgDocument.h"

#include <QColor>
#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <algorithm>
#include <optional>

#include "media/image/ImageBuffer.h"
#include "system/Exception.h"
#include "system/File.h"
#include "system/Text.h"

namespace Platform {

namespace {

const QString kPaintAttributes[] = {QStringLiteral("fill"), QStringLiteral("stroke")};

// The colour of a paint that is a plain colour; none for "none", references to
// gradients or patterns, "currentColor", "inherit" and what does not parse.
std::optional<QColor> plainColor(const QString& text) {
  const QString value = text.trimmed();
  if (value.isEmpty() || value == QLatin1String("none") || value == QLatin1String("inherit") ||
      value.compare(QLatin1String("currentColor"), Qt::CaseInsensitive) == 0 || value.startsWith(QLatin1String("url("))) {
    return std::nullopt;
  }
  static const QRegularExpression rgb(
      QStringLiteral(R"(^rgb\(\s*([0-9.]+)(%?)\s*,\s*([0-9.]+)(%?)\s*,\s*([0-9.]+)(%?)\s*\)$)"));
  if (const QRegularExpressionMatch match = rgb.match(value); match.hasMatch()) {
    auto channel = [&](int index) {
      const double number = match.captured(index).toDouble();
      const double scaled = match.captured(index + 1).isEmpty() ? number : number * 2.55;
      return std::clamp(static_cast<int>(scaled + 0.5), 0, 255);
    };
    return QColor(channel(1), channel(3), channel(5));
  }
  const QColor color = QColor::fromString(value);
  if (!color.isValid()) return std::nullopt;
  return color;
}

// Calls `visit(name, value)` for each property of a style attribute, and gives back the
// attribute with the values `visit` returned.
template <class Visit>
QString rewriteStyle(const QString& style, Visit visit) {
  QStringList properties = style.split(QLatin1Char(';'));
  for (QString& property : properties) {
    const qsizetype colon = property.indexOf(QLatin1Char(':'));
    if (colon < 0) continue;
    const QString name = property.left(colon).trimmed();
    const QString value = property.mid(colon + 1);
    const QString written = visit(name, value);
    if (written != value) property = name + QLatin1Char(':') + written;
  }
  return properties.join(QLatin1Char(';'));
}

// Every element below and including `element`, depth first.
template <class Visit>
void forEachElement(const QDomElement& element, Visit& visit) {
  visit(element);
  for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
    forEachElement(child, visit);
  }
}

bool isPaint(const QString& name) { return std::find(std::begin(kPaintAttributes), std::end(kPaintAttributes), name) != std::end(kPaintAttributes); }

bool isTextElement(const QString& tagName) {
  const QString local = tagName.mid(tagName.lastIndexOf(QLatin1Char(':')) + 1);
  return local == QLatin1String("text") || local == QLatin1String("textArea");
}

struct Parsed {
  QDomDocument document;
  QString error;
};

// The file's XML, or why it is no SVG document that this program can draw.
Parsed parse(const std::wstring& path) {
  Parsed parsed;
  QFile file(QString::fromStdWString(path));
  if (!file.open(QIODevice::ReadOnly)) {
    parsed.error = file.errorString();
    return parsed;
  }
  if (file.size() > System::File::readAllLimit()) {
    parsed.error = QStringLiteral("file too large");
    return parsed;
  }
  int line = 0;
  if (!parsed.document.setContent(file.readAll(), &parsed.error, &line)) {
    parsed.error += QStringLiteral(" at line %1").arg(line);
    return parsed;
  }
  const QString root = parsed.document.documentElement().tagName();
  if (root != QLatin1String("svg") && !root.endsWith(QLatin1String(":svg"))) {
    parsed.error = QStringLiteral("no svg element");
    return parsed;
  }
  // Qt's SVG reader asks the font database for text, which ends the process when no
  // application object exists (the command-line renderer).
  if (!QGuiApplication::instance()) {
    bool text = false;
    auto findText = [&](const QDomElement& element) { text = text || isTextElement(element.tagName()); };
    forEachElement(parsed.document.documentElement(), findText);
    if (text) parsed.error = QStringLiteral("text needs the application's fonts");
  }
  return parsed;
}

class QtSvgDocument : public Media::SvgDocument {
 public:
  QtSvgDocument(QDomDocument document, const char* place, const std::wstring& path)
      : document_(std::move(document)), renderer_(document_.toByteArray(-1)) {
    if (!renderer_.isValid()) throw System::NoteException(place, "not an SVG document.", System::Text::toUtf8(path));
    const QSize size = renderer_.defaultSize();
    size_ = Media::SvgSize{static_cast<double>(size.width()), static_cast<double>(size.height())};
    checkMonochrome();
  }

  Media::SvgSize viewportSize() const override { return size_; }
  bool monochrome() const override { return monochrome_; }
  std::optional<Media::FigureColor> fillColor() const override { return fillColor_; }

  void setColor(const Media::FigureColor& color) override {
    const QString name =
        QColor::fromRgbF(std::clamp(color[0], 0.0f, 1.0f), std::clamp(color[1], 0.0f, 1.0f),
                         std::clamp(color[2], 0.0f, 1.0f))
            .name(QColor::HexRgb);
    // The paint's own alpha lives in its opacity attributes, which stay untouched.
    auto recolour = [&](const QString& property, const QString& value) {
      return isPaint(property) && plainColor(value) ? name : value;
    };
    auto visit = [&](const QDomElement& constElement) {
      QDomElement element = constElement;
      for (const QString& attribute : kPaintAttributes) {
        if (element.hasAttribute(attribute) && plainColor(element.attribute(attribute))) {
          element.setAttribute(attribute, name);
        }
      }
      if (element.hasAttribute(QStringLiteral("style"))) {
        element.setAttribute(QStringLiteral("style"), rewriteStyle(element.attribute(QStringLiteral("style")), recolour));
      }
    };
    forEachElement(document_.documentElement(), visit);
    renderer_.load(document_.toByteArray(-1));
  }

  void draw(Media::ImageBuffer& image) const override {
    QImage target(reinterpret_cast<uchar*>(image.data()), static_cast<int>(image.width()),
                  static_cast<int>(image.height()), static_cast<qsizetype>(image.pitch()),
                  QImage::Format_RGBA64_Premultiplied);
    QPainter painter(&target);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    renderer_.render(&painter, QRectF(0.0, 0.0, image.width(), image.height()));
  }

 private:
  // Monochrome: at least one plain fill colour, all of them the same and opaque.
  void checkMonochrome() {
    std::optional<QColor> first;
    bool same = true;
    auto compare = [&](const QString& value) {
      const std::optional<QColor> color = plainColor(value);
      if (!color) return;
      if (!first) first = color;
      same = same && color->rgba() == first->rgba() && color->alpha() == 255;
    };
    auto visit = [&](const QDomElement& element) {
      if (element.hasAttribute(QStringLiteral("fill"))) compare(element.attribute(QStringLiteral("fill")));
      if (element.hasAttribute(QStringLiteral("style"))) {
        rewriteStyle(element.attribute(QStringLiteral("style")), [&](const QString& property, const QString& value) {
          if (property == QLatin1String("fill")) compare(value);
          return value;
        });
      }
    };
    forEachElement(document_.documentElement(), visit);
    monochrome_ = first.has_value() && same;
    if (monochrome_) {
      fillColor_ = Media::FigureColor{static_cast<float>(first->redF()), static_cast<float>(first->greenF()),
                                      static_cast<float>(first->blueF()), 1.0f};
    }
  }

  QDomDocument document_;
  // Rendering changes nothing a second drawing would see; the document has one owner.
  mutable QSvgRenderer renderer_;
  Media::SvgSize size_;
  bool monochrome_ = false;
  std::optional<Media::FigureColor> fillColor_;
};

}  // namespace

std::unique_ptr<Media::SvgDocument> openQtSvgDocument(const std::wstring& path, const char* place) {
  Parsed parsed = parse(path);
  if (!parsed.error.isEmpty()) {
    throw System::NoteException(place, "not an SVG document.",
                                System::Text::toUtf8(path) + " (" + parsed.error.toStdString() + ")");
  }
  return std::make_unique<QtSvgDocument>(std::move(parsed.document), place, path);
}

bool isQtSvgDocument(const std::wstring& path) {
  const Parsed parsed = parse(path);
  return parsed.error.isEmpty() && QSvgRenderer(parsed.document.toByteArray(-1)).isValid();
}

}  // namespace Platform
