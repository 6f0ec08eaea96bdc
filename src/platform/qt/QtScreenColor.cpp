#include "platform/qt/QtScreenColor.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

namespace Platform {

Media::ColorF screenColorAt(std::int32_t x, std::int32_t y) {
  QScreen* screen = QGuiApplication::screenAt(QPoint(x, y));
  if (screen == nullptr) return {0.0f, 0.0f, 0.0f, 1.0f};
  const QRect area = screen->geometry();
  const QImage image = screen->grabWindow(0, x - area.x(), y - area.y(), 1, 1).toImage();
  if (image.isNull() || image.width() < 1 || image.height() < 1) return {0.0f, 0.0f, 0.0f, 1.0f};
  const QColor color = image.pixelColor(0, 0);
  return {static_cast<float>(color.redF()), static_cast<float>(color.greenF()), static_cast<float>(color.blueF()),
          1.0f};
}

}  // namespace Platform
