// The drawing target of a window: what window frames, clients and controls draw with.
// It keeps the counted draw scope, the origin and the clip stack itself; a platform
// implementation fills the primitives. Coordinates are pixels relative to the current
// origin. Main thread only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Media {

// Straight (not premultiplied) channels, 0.0 to 1.0.
struct ColorF {
  float r = 0.0f;
  float g = 0.0f;
  float b = 0.0f;
  float a = 1.0f;
  friend bool operator==(const ColorF&, const ColorF&) = default;
};

struct PointF {
  float x = 0.0f;
  float y = 0.0f;
  friend bool operator==(const PointF&, const PointF&) = default;
};

struct SizeF {
  float width = 0.0f;
  float height = 0.0f;
};

// Edges, right and bottom exclusive.
struct RectF {
  float left = 0.0f;
  float top = 0.0f;
  float right = 0.0f;
  float bottom = 0.0f;
  float width() const noexcept { return right - left; }
  float height() const noexcept { return bottom - top; }
  bool empty() const noexcept { return right <= left || bottom <= top; }
  RectF moved(float dx, float dy) const noexcept { return {left + dx, top + dy, right + dx, bottom + dy}; }
  RectF intersected(const RectF& other) const noexcept;
  friend bool operator==(const RectF&, const RectF&) = default;
};

// A solid colour, or a linear gradient from `start` to `end` (in target coordinates
// relative to the origin at the time of drawing).
struct Brush {
  ColorF color;
  bool gradient = false;
  ColorF endColor;
  PointF start;
  PointF end;

  static Brush solid(ColorF color) { return Brush{color, false, color, {}, {}}; }
  static Brush linear(ColorF from, ColorF to, PointF start, PointF end) { return Brush{from, true, to, start, end}; }
};

// The toolkit's four strokes: flat caps with mitred joins, the same with round joins,
// dashes, and the 3-on 3-off dashes of anchors.
enum class StrokeStyle : std::int32_t { Solid = 0, RoundJoin = 1, Dash = 2, AnchorDash = 3 };

struct TextFormat {
  std::wstring family;
  float size = 13.0f;  // pixels
  bool bold = false;
  bool italic = false;
};

enum class TextAlignment : std::int32_t { Leading = 0, Center = 1, Trailing = 2 };

// A laid-out piece of text. Positions count characters of the text it was made from.
class TextLayout {
 public:
  struct HitTest {
    std::size_t position = 0;  // the character under the point
    bool trailing = false;     // the point lies on its trailing half
    bool inside = false;       // the point lies on the text at all
  };
  struct Caret {
    float x = 0.0f;
    float top = 0.0f;
    float height = 0.0f;
  };
  struct Line {
    std::size_t start = 0;
    std::size_t length = 0;  // including its line end
    float top = 0.0f;
    float height = 0.0f;
    float baseline = 0.0f;  // from the line's top
  };

  virtual ~TextLayout() = default;
  virtual std::size_t length() const = 0;
  // The extent of the laid-out text.
  virtual SizeF size() const = 0;
  virtual HitTest hitTestPoint(float x, float y) const = 0;
  // Where the caret stands before `position` (after it with `trailing`).
  virtual Caret caretAt(std::size_t position, bool trailing) const = 0;
  virtual std::vector<Line> lines() const = 0;
};

// Premultiplied BGRA pixels owned by the target that made it.
class Bitmap {
 public:
  virtual ~Bitmap() = default;
  virtual std::int32_t width() const = 0;
  virtual std::int32_t height() const = 0;
};

class RenderTarget {
 public:
  virtual ~RenderTarget() = default;

  // The counted pair: only the outermost beginDraw opens the target and only the
  // outermost endDraw flushes it. A failed flush throws "target->EndDraw" at
  // Media::RenderTarget::endDraw; the count is back at zero either way.
  void beginDraw();
  void endDraw();
  std::int32_t drawDepth() const noexcept { return depth_; }

  // In pixels.
  virtual SizeF pixelSize() const = 0;

  // The origin is absolute; drawing coordinates are relative to it.
  PointF origin() const noexcept { return origin_; }
  void setOrigin(PointF origin) noexcept { origin_ = origin; }
  // Clips are given relative to the origin and intersect with the one below.
  void pushClip(const RectF& rect);
  void popClip();
  // Absolute; the whole target when the stack is empty.
  RectF clip() const;

  void clear(const ColorF& color);
  void fillRect(const RectF& rect, const Brush& brush);
  void fillRoundedRect(const RectF& rect, float radius, const Brush& brush);
  // The outline centred on the rectangle's edge, as the stroke of a path would be.
  void drawRect(const RectF& rect, const Brush& brush, float width, StrokeStyle style = StrokeStyle::Solid);
  void drawLine(PointF from, PointF to, const Brush& brush, float width, StrokeStyle style = StrokeStyle::Solid);
  // A polyline through `points`; `closed` joins the last point to the first.
  void drawPath(const std::vector<PointF>& points, bool closed, const Brush& brush, float width,
                StrokeStyle style = StrokeStyle::Solid);
  void fillPath(const std::vector<PointF>& points, const Brush& brush);
  void drawBitmap(const Bitmap& bitmap, const RectF& destination, const RectF& source, float opacity = 1.0f);
  void drawTextLayout(PointF at, const TextLayout& layout, const Brush& brush);
  // One line laid out into `rect`, vertically centred.
  void drawText(const std::wstring& text, const TextFormat& format, const RectF& rect, const Brush& brush,
                TextAlignment alignment = TextAlignment::Leading);

  virtual std::unique_ptr<TextLayout> createTextLayout(const std::wstring& text, const TextFormat& format,
                                                       float maxWidth, float maxHeight) = 0;
  // `pixels` are premultiplied BGRA rows of `pitch` bytes; they are copied.
  virtual std::shared_ptr<Bitmap> createBitmap(std::int32_t width, std::int32_t height, const void* pixels,
                                               std::size_t pitch) = 0;

 protected:
  // The primitives, in absolute coordinates; clip() holds at the time of the call.
  virtual void open() = 0;
  // Returns false when the platform could not flush.
  virtual bool flush() = 0;
  virtual void clipChanged() = 0;
  virtual void doClear(const ColorF& color) = 0;
  virtual void doFillRect(const RectF& rect, const Brush& brush) = 0;
  virtual void doFillRoundedRect(const RectF& rect, float radius, const Brush& brush) = 0;
  virtual void doDrawPath(const std::vector<PointF>& points, bool closed, const Brush& brush, float width,
                          StrokeStyle style) = 0;
  virtual void doFillPath(const std::vector<PointF>& points, const Brush& brush) = 0;
  virtual void doDrawBitmap(const Bitmap& bitmap, const RectF& destination, const RectF& source, float opacity) = 0;
  virtual void doDrawTextLayout(PointF at, const TextLayout& layout, const Brush& brush) = 0;

 private:
  Brush absolute(const Brush& brush) const;

  std::int32_t depth_ = 0;
  PointF origin_;
  std::vector<RectF> clips_;
};

// The paint scope of a control or client: counts one draw pair, makes `rect` the origin
// and clips to it, and undoes all three on the way out, exceptions included. `rect` is
// absolute, or relative to the current origin with `relative`.
class DrawScope {
 public:
  DrawScope(RenderTarget& target, const RectF& rect, bool relative = false);
  ~DrawScope() noexcept(false);
  DrawScope(const DrawScope&) = delete;
  DrawScope& operator=(const DrawScope&) = delete;

 private:
  RenderTarget& target_;
  PointF savedOrigin_;
  bool clipped_ = false;
  int exceptionsAtStart_ = 0;
};

}  // namespace Media
