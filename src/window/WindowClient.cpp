#include "window/WindowClient.h"

#include <algorithm>

#include "media/target/RenderTarget.h"
#include "translate/Translate.h"
#include "window/WindowFloating.h"
#include "window/WindowGroupTab.h"
#include "window/WindowService.h"

namespace Window {

namespace {

using System::Config::Float;
using System::Config::Int;

// The window menu's texts, in the user's language.
std::wstring menuText(const wchar_t* text) { return Translate::translate("Menu", text); }

}  // namespace

WindowClient::WindowClient(WindowService& service, const ClientDefinition& definition)
    : service_(service), title_(definition.title), kind_(definition.kind) {
  // The order of the keys in a fresh file.
  config_.setSection(definition.group);
  config_.add<Float>("left", &left_, definition.left);
  config_.add<Float>("top", &top_, definition.top);
  config_.add<Float>("right", &right_, definition.right);
  config_.add<Float>("bottom", &bottom_, definition.bottom);
  config_.add<Int>("area", &area_, static_cast<std::int32_t>(definition.area));
  config_.add<Int>("hide", &hide_, definition.shown ? 0 : 1);
  config_.add<Int>("group", &group_, 0);
  config_.add<Int>("floating", &floating_, 0);
  config_.add<Int>("x", &floatX_, 0);
  config_.add<Int>("y", &floatY_, 0);
  config_.add<Int>("w", &floatWidth_, 0);
  config_.add<Int>("h", &floatHeight_, 0);
  config_.add<Int>("zoom", &zoom_, 0);
  config_.load(service.ini());
  // An area outside the five would take no room anywhere: it is the centre's.
  if (area_ < 0 || area_ >= kAreaCount) area_ = static_cast<std::int32_t>(Area::Centre);
  if (group_ < 0) group_ = 0;
  // Kind 0 cannot leave the main window, whatever the file says.
  if (kind_ == 0) floating_ = 0;
  service_.registerClient(*this);
}

WindowClient::~WindowClient() { service_.removeClient(*this); }

void WindowClient::paint(Media::RenderTarget& target) {
  // A content that draws nothing of its own yet: its background and title strip.
  const WindowStyle& style = service_.style();
  const float w = static_cast<float>(width_);
  const float h = static_cast<float>(height_);
  target.fillRect({0.0f, 0.0f, w, h}, Media::Brush::solid(style.background));
  const float header = std::min(static_cast<float>(style.titleHeaderHeight), h);
  target.fillRect({0.0f, 0.0f, w, header}, Media::Brush::solid(style.titleHeader));
  target.drawText(getTitle(), style.font, {6.0f, 0.0f, w - 6.0f, header}, Media::Brush::solid(style.text));
}

void WindowClient::buildWindowMenu(PopupMenu& menu) {
  WindowService& service = service_;
  PopupMenuItem placement{menuText(L"ウィンドウ配置")};
  if (floating()) {
    placement.children.emplace_back(menuText(L"ウィンドウを統合"),
                                    [this, &service] { service.setFloating(*this, false); });
  } else {
    static constexpr const wchar_t* kAreaNames[kAreaCount] = {L"左側エリア", L"右側エリア", L"上側エリア",
                                                              L"下側エリア", L"中央エリア"};
    for (std::int32_t area = 0; area < kAreaCount; ++area) {
      PopupMenuItem item{menuText(kAreaNames[area]), [this, &service, area] { service.setArea(*this, static_cast<Area>(area)); }};
      item.radio = true;
      item.checked = area_ == area;
      placement.children.push_back(std::move(item));
    }
    // The order inside a tab group is the shown member's.
    WindowClient* ordered = this;
    if (group_ != 0) {
      if (WindowClient* shown = service.shownGroupMember(area())) ordered = shown;
    }
    const bool up = service.canMoveUp(*ordered);
    const bool down = service.canMoveDown(*ordered);
    PopupMenuItem move{menuText(L"ウィンドウの移動")};
    move.children.emplace_back(menuText(L"先頭に移動"), [ordered, &service] { service.moveFirst(*ordered); }, up);
    move.children.emplace_back(menuText(L"上に移動"), [ordered, &service] { service.moveUp(*ordered); }, up);
    move.children.emplace_back(menuText(L"下に移動"), [ordered, &service] { service.moveDown(*ordered); }, down);
    move.children.emplace_back(menuText(L"最後に移動"), [ordered, &service] { service.moveLast(*ordered); }, down);
    placement.children.push_back(std::move(move));
    if (kind_ != 0) {
      placement.children.emplace_back(menuText(L"ウィンドウを分離"),
                                      [this, &service] { service.setFloating(*this, true); });
    }
    PopupMenuItem grouped{menuText(L"ウィンドウのグループ化"),
                          [this, &service] { service.setGrouped(*this, group_ == 0); }};
    grouped.checked = group_ > 0;
    placement.children.push_back(std::move(grouped));
  }
  menu.items.push_back(std::move(placement));
  menu.items.push_back(PopupMenuItem::separator());
  menu.items.emplace_back(menuText(L"ウィンドウを閉じる"), [this, &service] { service.toggleClient(*this); });
}

std::wstring WindowClient::getTitle() const { return Translate::translate("Menu", title_); }

void WindowClient::setVisible(bool visible) { hide_ = visible ? 0 : 1; }

void WindowClient::setPixelRect(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) {
  const bool changed = x != x_ || y != y_ || width != width_ || height != height_;
  x_ = x;
  y_ = y;
  width_ = width;
  height_ = height;
  if (changed) layoutChanged();
}

void WindowClient::setFractions(const Fractions& rect) noexcept {
  left_ = rect.left;
  top_ = rect.top;
  right_ = rect.right;
  bottom_ = rect.bottom;
}

void WindowClient::setFloatingGeometry(const WindowGeometry& geometry) noexcept {
  floatX_ = geometry.x;
  floatY_ = geometry.y;
  floatWidth_ = geometry.width;
  floatHeight_ = geometry.height;
}

void WindowClient::setFloatingWindow(std::unique_ptr<WindowFloating> window) { floatingWindow_ = std::move(window); }

void WindowClient::setGroupTab(std::unique_ptr<WindowGroupTab> tab) { groupTab_ = std::move(tab); }

}  // namespace Window
