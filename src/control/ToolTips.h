// The one tool-tip window of the program: made at first use, placed at a screen point
// (kept inside the screen's right edge), optionally hidden again by a timer. Controls
// show a tip from `hover` and hide it when the mouse leaves. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "window/PlatformServices.h"

namespace Window {

// A frameless, top-most text window of the platform.
class ToolTipWindow {
 public:
  virtual ~ToolTipWindow() = default;
  virtual void setText(const std::wstring& text) = 0;
  // The size the current text needs, in pixels.
  virtual WindowGeometry measure() const = 0;
  virtual void moveTo(std::int32_t x, std::int32_t y) = 0;
  virtual void setShown(bool shown) = 0;
};

class ToolTips {
 public:
  static constexpr std::size_t kMaxText = 1024;

  // `makeWindow` is called at the first show; `translate` turns the text into the
  // user's language (none: as given).
  ToolTips(PlatformServices& platform, std::function<std::unique_ptr<ToolTipWindow>()> makeWindow,
           std::function<std::wstring(const std::wstring&)> translate = {});
  ~ToolTips();
  ToolTips(const ToolTips&) = delete;
  ToolTips& operator=(const ToolTips&) = delete;

  // The instance of this process while it exists.
  static ToolTips* current() noexcept;
  // Hides the tip of the current instance, if one is shown.
  static void hideShown();

  // Screen pixels. A positive `timeOut` hides the tip after that many milliseconds; 0
  // cancels the timer of an earlier call; a negative one is only stored.
  void show(std::int32_t x, std::int32_t y, const std::wstring& text, std::int32_t timeOut);
  void hide();
  bool shown() const noexcept { return shown_; }
  const std::wstring& text() const noexcept { return text_; }

 private:
  void stopTimer();

  PlatformServices& platform_;
  std::function<std::unique_ptr<ToolTipWindow>()> makeWindow_;
  std::function<std::wstring(const std::wstring&)> translate_;
  std::unique_ptr<ToolTipWindow> window_;
  std::wstring text_;
  std::int32_t timeOut_ = 0;
  std::uint32_t timer_ = 0;
  bool shown_ = false;
};

}  // namespace Window
