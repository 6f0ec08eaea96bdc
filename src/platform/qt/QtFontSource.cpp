#include "platform/qt/QtFontSource.h"

#include <QByteArray>
#include <QFont>
#include <QFontDatabase>
#include <QRawFont>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <mutex>
#include <tuple>

namespace Platform {

namespace {

// Qt's stretch factors (percent of the normal width) for the stretches 1 to 9.
constexpr int kQtStretches[] = {50, 62, 75, 87, 100, 112, 125, 150, 200};

int qtStretch(std::int32_t stretch) { return kQtStretches[std::clamp(stretch, 1, 9) - 1]; }

// The style a family's first font stands for: upright and nearest to regular weight.
QString regularStyle(const QString& family) {
  QString best;
  int bestDistance = 0;
  for (const QString& style : QFontDatabase::styles(family)) {
    const int distance = std::abs(QFontDatabase::weight(family, style) - QFont::Normal) +
                         (QFontDatabase::italic(family, style) ? 1000 : 0);
    if (best.isEmpty() || distance < bestDistance) {
      best = style;
      bestDistance = distance;
    }
  }
  return best;
}

// A big-endian 16-bit value of a font table; 0 past its end.
int tableValue(const QByteArray& table, qsizetype offset) {
  if (table.size() < offset + 2) return 0;
  return qFromBigEndian<qint16>(table.constData() + offset);
}

class QtFontSource : public Media::FontSource {
 public:
  std::vector<Media::FontFamily> families() override {
    std::vector<Media::FontFamily> families;
    for (const QString& name : QFontDatabase::families()) {
      if (QFontDatabase::isPrivateFamily(name)) continue;
      const QString style = regularStyle(name);
      Media::FontFamily family;
      family.name = name.toStdWString();
      // Qt 6 weighs fonts on the same 1 to 1000 scale.
      family.weight = std::clamp(QFontDatabase::weight(name, style), 1, 1000);
      family.italic = QFontDatabase::italic(name, style);
      family.symbol = QFontDatabase::writingSystems(name).contains(QFontDatabase::Symbol);
      families.push_back(std::move(family));
    }
    return families;
  }

  std::wstring systemDefaultFamily() override {
    QFont font;
    font.setStyleHint(QFont::SansSerif);
    QString family = font.defaultFamily();
    if (family.isEmpty()) family = QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
    return family.toStdWString();
  }

  std::optional<Media::FontDesignMetrics> designMetrics(const Media::FontHandle& handle) override {
    // The font engines behind QRawFont are shared; one lookup at a time, and each font
    // measured once.
    std::lock_guard lock(mutex_);
    const auto key = std::make_tuple(handle.family, handle.weight, handle.stretch, handle.italic);
    if (const auto found = cache_.find(key); found != cache_.end()) return found->second;
    std::optional<Media::FontDesignMetrics> metrics = measure(handle);
    cache_.emplace(key, metrics);
    return metrics;
  }

 private:
  static std::optional<Media::FontDesignMetrics> measure(const Media::FontHandle& handle) {
    QFont font(QString::fromStdWString(handle.family));
    font.setWeight(static_cast<QFont::Weight>(std::clamp(handle.weight, 1, 1000)));
    font.setStretch(qtStretch(handle.stretch));
    font.setItalic(handle.italic);
    font.setPixelSize(100);
    QRawFont raw = QRawFont::fromFont(font);
    if (!raw.isValid() || raw.unitsPerEm() <= 0) return std::nullopt;
    // At a pixel size of one em in design units, every metric is in design units.
    raw.setPixelSize(raw.unitsPerEm());
    Media::FontDesignMetrics metrics;
    metrics.designUnitsPerEm = raw.unitsPerEm();
    metrics.ascent = raw.ascent();
    metrics.descent = raw.descent();
    metrics.lineGap = raw.leading();
    // The OS/2 table holds the strike line: its size at byte 26, its position at 28.
    const QByteArray os2 = raw.fontTable("OS/2");
    metrics.strikethroughThickness = tableValue(os2, 26);
    metrics.strikethroughPosition = tableValue(os2, 28);
    if (metrics.strikethroughThickness <= 0) {
      metrics.strikethroughThickness = raw.lineThickness();
      metrics.strikethroughPosition = raw.xHeight() / 2;
    }
    return metrics;
  }

  std::mutex mutex_;
  std::map<std::tuple<std::wstring, std::int32_t, std::int32_t, bool>, std::optional<Media::FontDesignMetrics>>
      cache_;
};

}  // namespace

std::unique_ptr<Media::FontSource> createQtFontSource() { return std::make_unique<QtFontSource>(); }

}  // namespace Platform
