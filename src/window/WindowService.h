// The main window and everything docked in it: the flat list of clients with their
// fractional rectangles and areas, the separators between them, the group tabs, the
// floating windows and the footer strip. There is no tree of splitters: a small
// algorithm keeps the flat list consistent at every relayout. Main thread only; other
// threads reach it through posted work or a wait handle.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "system/ConfigGroup.h"
#include "window/PlatformServices.h"
#include "window/WindowClient.h"
#include "window/WindowStyle.h"

namespace System {
class IniFile;
}

namespace Window {

// One client that a separator moves, and which of its edges lies on it.
struct SeparatorMember {
  WindowClient* client = nullptr;
  bool nearSide = true;  // true: its far edge (right or bottom) lies on the separator
};

struct SeparatorHit {
  bool vertical = true;  // a vertical line: it moves along x
  float position = 0.0f;  // fraction of the layout extent
  std::vector<SeparatorMember> members;  // the hit pair first: near, far
};

class WindowService : public WindowEventsBase {
 public:
  static constexpr const wchar_t* kTitle = L"Sorvel Vantor2";

  // Reads the `Window` group from `ini` (null: defaults, nothing stored) and creates the
  // main window, not yet shown.
  WindowService(PlatformServices& platform, const WindowStyle& style, System::IniFile* ini);
  ~WindowService() override;
  WindowService(const WindowService&) = delete;
  WindowService& operator=(const WindowService&) = delete;

  // The service of this process while it exists, for the clients made later.
  static WindowService* current() noexcept;

  PlatformServices& platform() noexcept { return platform_; }
  const WindowStyle& style() const noexcept { return style_; }
  System::IniFile* ini() const noexcept { return ini_; }
  PlatformWindow& mainWindow() noexcept { return *mainWindow_; }

  // Shows the main window (maximised when `zoom` is set) and lays it out.
  void show();
  // Runs when the user closes the main window; without one nothing happens.
  void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }
  // Paints the status bar into the footer strip; without one the strip is filled.
  void setFooterPainter(std::function<void(Media::RenderTarget&, const Media::RectF&)> painter) {
    footerPainter_ = std::move(painter);
  }

  // Called by the client's constructor and destructor.
  void registerClient(WindowClient& client);
  void removeClient(WindowClient& client);
  WindowClient* findClient(const std::wstring& title) const;
  const std::vector<WindowClient*>& dockedClients() const noexcept { return dockedClients_; }
  // Every client, in order of first creation.
  std::vector<WindowClient*> clients() const;

  // The layout extent: the main window's size less the frame and the footer.
  std::int32_t clientWidth() const noexcept { return clientWidth_; }
  std::int32_t clientHeight() const noexcept { return clientHeight_; }

  void relayout();
  void paint();
  // The target that `client` draws into: its floating window's or the main window's.
  Media::RenderTarget& targetOf(const WindowClient& client);
  // Paints one client and its frame at once, inside its own draw pair.
  void repaintClient(WindowClient& client);

  // The window menu's operations.
  void setArea(WindowClient& client, Area area);
  void setFloating(WindowClient& client, bool floating);
  void setGrouped(WindowClient& client, bool grouped);
  void moveFirst(WindowClient& client);
  void moveUp(WindowClient& client);
  void moveDown(WindowClient& client);
  void moveLast(WindowClient& client);
  bool canMoveUp(const WindowClient& client) const;
  bool canMoveDown(const WindowClient& client) const;
  void showClient(WindowClient& client);
  void toggleClient(WindowClient& client);
  // The members of the tab group in `area`, by `group`.
  std::vector<WindowClient*> groupMembers(Area area) const;
  // The group member of `area` that is shown, or null.
  WindowClient* shownGroupMember(Area area) const;

  // Separators, in main-window pixels.
  std::optional<SeparatorHit> hitTestSeparator(std::int32_t x, std::int32_t y) const;
  bool dragging() const noexcept { return dragging_; }
  const SeparatorHit& separator() const noexcept { return separator_; }

  // While a file export runs the user's input is dropped: clicks, drags, keys and the
  // close buttons of the main and floating windows. Painting and posted work go on.
  void setInputDisabled(bool disabled) noexcept { inputDisabled_ = disabled; }
  bool inputDisabled() const noexcept { return inputDisabled_; }

  // The message pump's wait handles: a readable descriptor calls `callback`.
  void addWaitHandle(int descriptor, std::function<void()> callback);
  void removeWaitHandle(int descriptor);

  // WindowEvents of the main window.
  void resized(std::int32_t width, std::int32_t height) override;
  void paintRequested() override;
  void closeRequested() override;
  void geometryChanged(const WindowGeometry& geometry, bool maximized, bool minimized) override;
  void mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;
  void mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;
  void mouseReleased(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t modifiers) override;

 private:
  struct ClientReference {
    WindowClient* client = nullptr;
    std::int32_t index = 0;  // order of first creation
  };

  void normalise();
  void renumberGroups();
  void assignAreas();
  void placeClients();
  void applyFloating(WindowClient& client);
  void makeRoom(WindowClient& client);
  std::vector<WindowClient*> shownInArea(Area area) const;
  std::vector<WindowClient*> areaOrder(Area area) const;
  void exchangeRectangles(WindowClient& a, WindowClient& b);
  bool walkSeparator(SeparatorHit& hit, int direction) const;
  WindowClient* separatorNeighbour(const SeparatorHit& hit, const WindowClient& from, bool nearSide,
                                   int direction) const;
  void dragSeparator(std::int32_t x, std::int32_t y);
  void endDrag();
  void paintFrame(Media::RenderTarget& target, WindowClient& client);
  void paintGroupTab(Media::RenderTarget& target, WindowClient& client);
  bool groupTabPressed(MouseButton button, std::int32_t x, std::int32_t y);
  void showWindowMenu(WindowClient& client, std::int32_t x, std::int32_t y);
  void updateCursor(CursorShape shape);

  PlatformServices& platform_;
  WindowStyle style_;
  System::IniFile* ini_ = nullptr;
  std::unique_ptr<PlatformWindow> mainWindow_;
  std::function<void()> closeHandler_;
  std::function<void(Media::RenderTarget&, const Media::RectF&)> footerPainter_;

  std::int32_t clientWidth_ = 0;
  std::int32_t clientHeight_ = 0;
  std::map<std::wstring, ClientReference> clientMap_;
  std::int32_t nextIndex_ = 0;
  std::vector<WindowClient*> dockedClients_;

  SeparatorHit separator_;
  bool dragging_ = false;
  std::int32_t dragStartX_ = 0;
  std::int32_t dragStartY_ = 0;
  // A tab being dragged: its client, and whether it moved.
  WindowClient* tabDrag_ = nullptr;
  CursorShape cursor_ = CursorShape::Arrow;
  bool inputDisabled_ = false;

  // The `Window` group: the main window's frame-less screen rectangle.
  std::int32_t x_ = 0;
  std::int32_t y_ = 0;
  std::int32_t w_ = 1280;
  std::int32_t h_ = 720;
  std::int32_t zoom_ = 0;
  // Declared last: destroyed first, it stores the values above.
  System::Config::Group config_;
};

}  // namespace Window
