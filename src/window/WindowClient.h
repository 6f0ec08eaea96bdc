// A dockable window content: its rectangle as fractions of the main window's layout, its
// area, group and floating state, all kept in its own configuration group and written
// back when it is destroyed. Clients register with the window service as they are made.
// Main thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "system/ConfigGroup.h"
#include "window/PlatformServices.h"
#include "window/WindowFloating.h"
#include "window/WindowGroupTab.h"

namespace Media {
class RenderTarget;
}

namespace Window {

class WindowService;

enum class Area : std::int32_t { Left = 0, Right = 1, Top = 2, Bottom = 3, Centre = 4 };
inline constexpr std::int32_t kAreaCount = 5;

// What a client is before its configuration is read: the defaults of its group.
struct ClientDefinition {
  std::string group;   // "Window.preview"
  std::wstring title;  // also its identity in the service
  std::int32_t kind = 1;  // 0: always docked; 1: normal; 2: floating without caption
  float left = 0.0f;
  float top = 0.0f;
  float right = 1.0f;
  float bottom = 1.0f;
  Area area = Area::Centre;
  bool shown = true;
};

struct Fractions {
  float left = 0.0f;
  float top = 0.0f;
  float right = 0.0f;
  float bottom = 0.0f;
  friend bool operator==(const Fractions&, const Fractions&) = default;
};

// A hidden client stands here, outside every window, so that it is never hit.
inline constexpr std::int32_t kHiddenPosition = 0x10000;

class WindowClient {
 public:
  WindowClient(WindowService& service, const ClientDefinition& definition);
  virtual ~WindowClient();
  WindowClient(const WindowClient&) = delete;
  WindowClient& operator=(const WindowClient&) = delete;

  // Draws the client at the origin of the target, inside its pixel rectangle.
  virtual void paint(Media::RenderTarget& target);
  // The pixel rectangle has changed.
  virtual void layoutChanged() {}
  // Fills the client's popup menu; the base adds the ウィンドウ配置 items.
  virtual void buildWindowMenu(PopupMenu& menu);
  // The title in the user's language.
  virtual std::wstring getTitle() const;
  // `hide` = !visible; the caller relayouts.
  virtual void setVisible(bool visible);
  // The client's host window changed (floating or docked again).
  virtual void recreate() { layoutChanged(); }
  // A click or drag in the client, relative to its pixel rectangle; true when taken.
  virtual bool mousePressed(MouseButton, std::int32_t, std::int32_t) { return false; }

  WindowService& service() const noexcept { return service_; }
  const std::wstring& title() const noexcept { return title_; }
  const std::string& groupName() const noexcept { return config_.section(); }
  std::int32_t kind() const noexcept { return kind_; }

  // Pixels in the host window.
  std::int32_t x() const noexcept { return x_; }
  std::int32_t y() const noexcept { return y_; }
  std::int32_t width() const noexcept { return width_; }
  std::int32_t height() const noexcept { return height_; }
  void setPixelRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height);

  Fractions fractions() const noexcept { return {left_, top_, right_, bottom_}; }
  void setFractions(const Fractions& rect) noexcept;
  Area area() const noexcept { return static_cast<Area>(area_); }
  void setArea(Area area) noexcept { area_ = static_cast<std::int32_t>(area); }
  bool hidden() const noexcept { return hide_ != 0; }
  void setHidden(bool hidden) noexcept { hide_ = hidden ? 1 : 0; }
  std::int32_t group() const noexcept { return group_; }
  void setGroup(std::int32_t group) noexcept { group_ = group; }
  bool floating() const noexcept { return floating_ != 0; }
  void setFloatingFlag(bool floating) noexcept { floating_ = floating ? 1 : 0; }
  WindowGeometry floatingGeometry() const noexcept { return {floatX_, floatY_, floatWidth_, floatHeight_}; }
  void setFloatingGeometry(const WindowGeometry& geometry) noexcept;
  bool floatingZoomed() const noexcept { return zoom_ != 0; }
  void setFloatingZoomed(bool zoomed) noexcept { zoom_ = zoomed ? 1 : 0; }

  WindowFloating* floatingWindow() const noexcept { return floatingWindow_.get(); }
  void setFloatingWindow(std::unique_ptr<WindowFloating> window);
  std::unique_ptr<WindowFloating> takeFloatingWindow() noexcept { return std::move(floatingWindow_); }
  WindowGroupTab* groupTab() const noexcept { return groupTab_.get(); }
  void setGroupTab(std::unique_ptr<WindowGroupTab> tab);

 private:
  WindowService& service_;
  std::wstring title_;
  std::int32_t kind_ = 1;
  std::int32_t x_ = kHiddenPosition;
  std::int32_t y_ = kHiddenPosition;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;

  float left_ = 0.0f;
  float top_ = 0.0f;
  float right_ = 0.0f;
  float bottom_ = 0.0f;
  std::int32_t area_ = 0;
  std::int32_t hide_ = 0;
  std::int32_t group_ = 0;
  std::int32_t floating_ = 0;
  std::int32_t floatX_ = 0;
  std::int32_t floatY_ = 0;
  std::int32_t floatWidth_ = 0;
  std::int32_t floatHeight_ = 0;
  std::int32_t zoom_ = 0;

  std::unique_ptr<WindowGroupTab> groupTab_;
  std::unique_ptr<WindowFloating> floatingWindow_;
  // Declared last: destroyed first, it stores the values above.
  System::Config::Group config_;
};

}  // namespace Window
