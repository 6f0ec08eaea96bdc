#include "platform/qt/QtCursorSet.h"

#include <QCoreApplication>
#include <QFile>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

#include <map>

namespace Platform {

namespace {

struct CursorEntry {
  Window::CursorShape shape;
  Qt::CursorShape system;
  const char* file;  // the program's own cursor, or null
};

constexpr CursorEntry kCursors[] = {
    {Window::CursorShape::Arrow, Qt::ArrowCursor, nullptr},
    {Window::CursorShape::SizeWestEast, Qt::SplitHCursor, nullptr},
    {Window::CursorShape::SizeNorthSouth, Qt::SplitVCursor, nullptr},
    {Window::CursorShape::SizeAll, Qt::SizeAllCursor, nullptr},
    {Window::CursorShape::Hand, Qt::PointingHandCursor, nullptr},
    {Window::CursorShape::IBeam, Qt::IBeamCursor, nullptr},
    {Window::CursorShape::No, Qt::ForbiddenCursor, nullptr},
    {Window::CursorShape::Wait, Qt::WaitCursor, nullptr},
    {Window::CursorShape::Swap, Qt::DragMoveCursor, nullptr},
    {Window::CursorShape::Hidden, Qt::BlankCursor, nullptr},
    {Window::CursorShape::SliderHover, Qt::SizeHorCursor, "slider.svg"},
    {Window::CursorShape::SliderDrag, Qt::SizeHorCursor, "slide.svg"},
    {Window::CursorShape::Move, Qt::SizeAllCursor, "move.svg"},
    {Window::CursorShape::PanAll, Qt::SizeAllCursor, "pan-all.svg"},
    {Window::CursorShape::PanEastWest, Qt::SizeHorCursor, "pan-east-west.svg"},
    {Window::CursorShape::PanNorthSouth, Qt::SizeVerCursor, "pan-north-south.svg"},
};

// Cursors are 32 pixels with the hot spot in the middle, as every file is drawn.
constexpr int kSize = 32;

const CursorEntry& entryOf(Window::CursorShape shape) {
  for (const CursorEntry& entry : kCursors) {
    if (entry.shape == shape) return entry;
  }
  return kCursors[0];
}

}  // namespace

QCursor loadCursor(Window::CursorShape shape, const QString& folder) {
  const CursorEntry& entry = entryOf(shape);
  if (entry.file == nullptr) return QCursor(entry.system);
  const QString path = folder + QLatin1Char('/') + QLatin1String(entry.file);
  if (!QFile::exists(path)) return QCursor(entry.system);
  QSvgRenderer renderer(path);
  if (!renderer.isValid()) return QCursor(entry.system);
  QPixmap pixmap(kSize, kSize);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  renderer.render(&painter);
  painter.end();
  return QCursor(pixmap, kSize / 2, kSize / 2);
}

QCursor cursorFor(Window::CursorShape shape) {
  static std::map<Window::CursorShape, QCursor> loaded;
  const auto found = loaded.find(shape);
  if (found != loaded.end()) return found->second;
  const QCursor cursor = loadCursor(shape, QCoreApplication::applicationDirPath() + QStringLiteral("/cursors"));
  loaded.emplace(shape, cursor);
  return cursor;
}

}  // namespace Platform
