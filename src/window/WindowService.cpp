#include "window/WindowService.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "media/target/RenderTarget.h"
#include "system/Exception.h"
#include "system/IniFile.h"
#include "window/WindowFloating.h"
#include "window/WindowGroupTab.h"

namespace Window {

namespace {

using System::Config::Int;

// Two edges closer than this are one edge.
constexpr float kTolerance = 0.0001f;
// The least share of a client in its stack, and the size of an empty box.
constexpr double kMinimumShare = 0.001;
// Pixels that a pushed client keeps while a separator is dragged.
constexpr double kDragMargin = 24.0;
// Group numbers past every real one, so that renumbering puts the client last.
constexpr std::int32_t kGroupLast = 10000;

WindowService* currentService = nullptr;

bool same(float a, float b) { return std::fabs(a - b) <= kTolerance; }

std::int32_t truncated(float value) { return static_cast<std::int32_t>(value); }

// Areas 0 and 1 stack their clients along y, the others along x.
bool stacksAlongY(Area area) { return area == Area::Left || area == Area::Right; }

float stackStart(const Fractions& rect, bool alongY) { return alongY ? rect.top : rect.left; }
float stackEnd(const Fractions& rect, bool alongY) { return alongY ? rect.bottom : rect.right; }

struct Box {
  double left = 0.0;
  double top = 0.0;
  double right = 0.0;
  double bottom = 0.0;
  bool empty() const noexcept { return right <= left || bottom <= top; }
  double width() const noexcept { return empty() ? 0.0 : right - left; }
  double height() const noexcept { return empty() ? 0.0 : bottom - top; }
};

Box boundingBox(const std::vector<WindowClient*>& clients) {
  if (clients.empty()) return {};
  Box box{1.0, 1.0, 0.0, 0.0};
  for (const WindowClient* client : clients) {
    const Fractions f = client->fractions();
    box.left = std::min<double>(box.left, f.left);
    box.top = std::min<double>(box.top, f.top);
    box.right = std::max<double>(box.right, f.right);
    box.bottom = std::max<double>(box.bottom, f.bottom);
  }
  return box;
}

void sortAlong(std::vector<WindowClient*>& clients, bool alongY) {
  std::stable_sort(clients.begin(), clients.end(), [alongY](const WindowClient* a, const WindowClient* b) {
    const Fractions fa = a->fractions();
    const Fractions fb = b->fractions();
    return stackStart(fa, alongY) + stackEnd(fa, alongY) < stackStart(fb, alongY) + stackEnd(fb, alongY);
  });
}

// The pixel edge of a fraction; see placeClients().
struct PixelRect {
  std::int32_t left = kHiddenPosition;
  std::int32_t top = kHiddenPosition;
  std::int32_t right = kHiddenPosition;
  std::int32_t bottom = kHiddenPosition;
};

PixelRect pixelRect(const Fractions& f, std::int32_t width, std::int32_t height, std::int32_t separator) {
  PixelRect p;
  const std::int32_t left = truncated(static_cast<float>(width) * f.left);
  p.left = left + 1;
  p.top = truncated(static_cast<float>(height) * f.top);
  p.right = std::max(left, truncated(static_cast<float>(width) * f.right) - separator) + 1;
  p.bottom = std::max(p.top, truncated(static_cast<float>(height) * f.bottom) - separator);
  return p;
}

}  // namespace

WindowService* WindowService::current() noexcept { return currentService; }

WindowService::WindowService(PlatformServices& platform, const WindowStyle& style, System::IniFile* ini)
    : platform_(platform), style_(style), ini_(ini) {
  config_.setSection("Window");
  config_.add<Int>("x", &x_, 0);
  config_.add<Int>("y", &y_, 0);
  config_.add<Int>("w", &w_, 1280);
  config_.add<Int>("h", &h_, 720);
  config_.add<Int>("zoom", &zoom_, 0);
  config_.load(ini);
  WindowOptions options;
  options.title = kTitle;
  options.geometry = {x_, y_, std::max(w_, 256), std::max(h_, 256)};
  mainWindow_ = platform_.createWindow(options, *this);
  currentService = this;
}

WindowService::~WindowService() {
  if (currentService == this) currentService = nullptr;
}

void WindowService::show() {
  mainWindow_->show(zoom_ != 0);
  relayout();
}

// ---- clients

void WindowService::registerClient(WindowClient& client) {
  const auto found = clientMap_.find(client.title());
  if (found != clientMap_.end()) {
    // A client made again under a known title keeps its place in the creation order.
    found->second.client = &client;
  } else {
    clientMap_[client.title()] = {&client, nextIndex_++};
  }
  if (client.floating()) {
    client.setFloatingWindow(std::make_unique<WindowFloating>(*this, client));
    applyFloating(client);
  } else {
    // Docked clients stand in order of first creation, a client made again included.
    dockedClients_.push_back(&client);
    std::stable_sort(dockedClients_.begin(), dockedClients_.end(), [this](WindowClient* a, WindowClient* b) {
      return clientMap_.at(a->title()).index < clientMap_.at(b->title()).index;
    });
  }
}

void WindowService::removeClient(WindowClient& client) {
  std::erase(dockedClients_, &client);
  for (const SeparatorMember& member : separator_.members) {
    if (member.client == &client) {
      separator_ = {};
      dragging_ = false;
      break;
    }
  }
  if (tabDrag_ == &client) tabDrag_ = nullptr;
  const auto found = clientMap_.find(client.title());
  if (found != clientMap_.end() && found->second.client == &client) found->second.client = nullptr;
  client.setFloatingWindow(nullptr);
}

WindowClient* WindowService::findClient(const std::wstring& title) const {
  const auto found = clientMap_.find(title);
  return found == clientMap_.end() ? nullptr : found->second.client;
}

std::vector<WindowClient*> WindowService::clients() const {
  std::vector<std::pair<std::int32_t, WindowClient*>> ordered;
  for (const auto& [title, reference] : clientMap_) {
    if (reference.client) ordered.emplace_back(reference.index, reference.client);
  }
  std::sort(ordered.begin(), ordered.end());
  std::vector<WindowClient*> result;
  for (const auto& entry : ordered) result.push_back(entry.second);
  return result;
}

std::vector<WindowClient*> WindowService::shownInArea(Area area) const {
  std::vector<WindowClient*> shown;
  for (WindowClient* client : dockedClients_) {
    if (!client->hidden() && client->area() == area) shown.push_back(client);
  }
  return shown;
}

// The order that the move operations and the separator swap follow.
std::vector<WindowClient*> WindowService::areaOrder(Area area) const {
  std::vector<WindowClient*> order = shownInArea(area);
  const bool byLeft = static_cast<std::int32_t>(area) > 1;
  std::stable_sort(order.begin(), order.end(), [byLeft](const WindowClient* a, const WindowClient* b) {
    return byLeft ? a->fractions().left < b->fractions().left : a->fractions().top < b->fractions().top;
  });
  return order;
}

std::vector<WindowClient*> WindowService::groupMembers(Area area) const {
  std::vector<WindowClient*> members;
  for (WindowClient* client : dockedClients_) {
    if (client->group() != 0 && client->area() == area) members.push_back(client);
  }
  std::stable_sort(members.begin(), members.end(),
                   [](const WindowClient* a, const WindowClient* b) { return a->group() < b->group(); });
  return members;
}

WindowClient* WindowService::shownGroupMember(Area area) const {
  for (WindowClient* member : groupMembers(area)) {
    if (!member->hidden()) return member;
  }
  return nullptr;
}

// ---- layout

void WindowService::relayout() {
  // One draw pair for the whole pass; a caller's pair, if open, is shared.
  Media::RenderTarget& target = mainWindow_->renderTarget();
  target.beginDraw();
  try {
    clientWidth_ = mainWindow_->clientWidth() - 2 + style_.separatorSize;
    clientHeight_ = mainWindow_->clientHeight() + style_.separatorSize - style_.footerHeight;
    normalise();
    renumberGroups();
    assignAreas();
    placeClients();
    for (WindowClient* client : clients()) {
      if (client->floating()) applyFloating(*client);
    }
    paint();
  } catch (...) {
    target.endDraw();
    throw;
  }
  target.endDraw();
}

void WindowService::normalise() {
  for (WindowClient* client : dockedClients_) {
    Fractions f = client->fractions();
    f.left = std::clamp(f.left, 0.0f, 0.999f);
    f.top = std::clamp(f.top, 0.0f, 0.999f);
    f.right = std::clamp(f.right, f.left, 1.0f);
    f.bottom = std::clamp(f.bottom, f.top, 1.0f);
    client->setFractions(f);
  }
}

void WindowService::renumberGroups() {
  for (std::int32_t area = 0; area < kAreaCount; ++area) {
    std::int32_t number = 0;
    for (WindowClient* member : groupMembers(static_cast<Area>(area))) member->setGroup(++number);
  }
}

void WindowService::assignAreas() {
  Box free{0.0, 0.0, 1.0, 1.0};
  for (std::int32_t index = 0; index < kAreaCount; ++index) {
    const Area area = static_cast<Area>(index);
    std::vector<WindowClient*> shown = shownInArea(area);
    if (shown.empty()) continue;
    std::vector<WindowClient*> later;
    for (WindowClient* client : dockedClients_) {
      if (!client->hidden() && static_cast<std::int32_t>(client->area()) > index) later.push_back(client);
    }
    Box own = boundingBox(shown);
    if (own.empty()) own = {0.0, 0.0, kMinimumShare, kMinimumShare};
    const Box rest = boundingBox(later);

    // The area keeps its own edge on the side it claims and takes the free box for the
    // rest; it gets its share of what is free in proportion to the areas after it.
    Box box = free;
    switch (area) {
      case Area::Left: {
        const double size = std::max(own.right - free.left, kMinimumShare);
        const double total = free.right - free.left;
        const double taken = rest.width() > 0.0 ? total * size / (rest.width() + size) : total;
        box.right = free.left + taken;
        free.left = box.right;
        break;
      }
      case Area::Right: {
        const double size = std::max(free.right - own.left, kMinimumShare);
        const double total = free.right - free.left;
        const double taken = rest.width() > 0.0 ? total * size / (rest.width() + size) : total;
        box.left = free.right - taken;
        free.right = box.left;
        break;
      }
      case Area::Top: {
        const double size = std::max(own.bottom - free.top, kMinimumShare);
        const double total = free.bottom - free.top;
        const double taken = rest.height() > 0.0 ? total * size / (rest.height() + size) : total;
        box.bottom = free.top + taken;
        free.top = box.bottom;
        break;
      }
      case Area::Bottom: {
        const double size = std::max(free.bottom - own.top, kMinimumShare);
        const double total = free.bottom - free.top;
        const double taken = rest.height() > 0.0 ? total * size / (rest.height() + size) : total;
        box.top = free.bottom - taken;
        free.bottom = box.top;
        break;
      }
      case Area::Centre:
        break;
    }

    // The stack fills the box exactly, each client in proportion to its old size.
    const bool alongY = stacksAlongY(area);
    sortAlong(shown, alongY);
    double total = 0.0;
    std::vector<double> shares;
    for (const WindowClient* client : shown) {
      const Fractions f = client->fractions();
      shares.push_back(std::max<double>(stackEnd(f, alongY) - stackStart(f, alongY), kMinimumShare));
      total += shares.back();
    }
    const double start = alongY ? box.top : box.left;
    const double size = alongY ? box.bottom - box.top : box.right - box.left;
    double running = 0.0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const double from = start + running * size / total;
      running += shares[i];
      const double to = start + running * size / total;
      Fractions f;
      if (alongY) {
        f = {static_cast<float>(box.left), static_cast<float>(from), static_cast<float>(box.right),
             static_cast<float>(to)};
      } else {
        f = {static_cast<float>(from), static_cast<float>(box.top), static_cast<float>(to),
             static_cast<float>(box.bottom)};
      }
      shown[i]->setFractions(f);
    }
  }
  // Hidden members of a tab group stand where the shown one stands.
  for (std::int32_t index = 0; index < kAreaCount; ++index) {
    const WindowClient* shown = shownGroupMember(static_cast<Area>(index));
    if (!shown) continue;
    for (WindowClient* member : groupMembers(static_cast<Area>(index))) {
      if (member->hidden()) member->setFractions(shown->fractions());
    }
  }
}

void WindowService::placeClients() {
  for (WindowClient* client : dockedClients_) {
    if (client->hidden()) {
      client->setGroupTab(nullptr);
      client->setPixelRect(kHiddenPosition, kHiddenPosition, 0, 0);
      continue;
    }
    const PixelRect p = pixelRect(client->fractions(), clientWidth_, clientHeight_, style_.separatorSize);
    std::int32_t top = p.top;
    if (client->group() != 0) {
      if (!client->groupTab()) client->setGroupTab(std::make_unique<WindowGroupTab>());
      const std::int32_t strip = std::min((p.bottom - p.top) / 2, style_.groupTabHeight);
      client->groupTab()->setRect(p.left, p.top, p.right - p.left, strip);
      top += strip;
    } else {
      client->setGroupTab(nullptr);
    }
    client->setPixelRect(p.left, top, p.right - p.left, p.bottom - top);
  }
}

// A floating client fills its window, which is shown while the client is.
void WindowService::applyFloating(WindowClient& client) {
  WindowFloating* floating = client.floatingWindow();
  if (!floating) return;
  PlatformWindow& window = floating->window();
  if (client.hidden()) {
    if (window.isVisible()) window.hide();
    client.setPixelRect(kHiddenPosition, kHiddenPosition, 0, 0);
    return;
  }
  if (!window.isVisible()) window.show(client.floatingZoomed());
  client.setPixelRect(0, 0, window.clientWidth(), window.clientHeight());
}

Media::RenderTarget& WindowService::targetOf(const WindowClient& client) {
  if (client.floatingWindow()) return client.floatingWindow()->window().renderTarget();
  return mainWindow_->renderTarget();
}

// ---- painting

void WindowService::paint() {
  Media::RenderTarget& target = mainWindow_->renderTarget();
  Media::DrawScope scope(target, {0.0f, 0.0f, static_cast<float>(mainWindow_->clientWidth()),
                                  static_cast<float>(mainWindow_->clientHeight())});
  const auto solid = [](const Media::ColorF& color) { return Media::Brush::solid(color); };
  target.fillRect({0.0f, 0.0f, static_cast<float>(mainWindow_->clientWidth()),
                   static_cast<float>(mainWindow_->clientHeight())},
                  solid(style_.background));
  const float separator = static_cast<float>(style_.separatorSize);
  for (WindowClient* client : dockedClients_) {
    if (client->hidden()) continue;
    const float top = static_cast<float>(client->groupTab() ? client->groupTab()->y() : client->y());
    const float left = static_cast<float>(client->x());
    const float right = static_cast<float>(client->x() + client->width());
    const float bottom = static_cast<float>(client->y() + client->height());
    if (right + separator < static_cast<float>(clientWidth_)) {
      target.fillRect({right, top - 1.0f, right + separator, bottom + 1.0f}, solid(style_.windowSeparator));
    }
    if (bottom + separator < static_cast<float>(clientHeight_)) {
      target.fillRect({left - 1.0f, bottom, right + separator, bottom + separator}, solid(style_.windowSeparator));
    }
  }
  for (WindowClient* client : dockedClients_) {
    if (client->hidden()) continue;
    if (client->groupTab()) paintGroupTab(target, *client);
    if (client->width() > 0 && client->height() > 0) {
      Media::DrawScope clientScope(target, {static_cast<float>(client->x()), static_cast<float>(client->y()),
                                            static_cast<float>(client->x() + client->width()),
                                            static_cast<float>(client->y() + client->height())});
      client->paint(target);
    }
    paintFrame(target, *client);
  }
  const float height = static_cast<float>(mainWindow_->clientHeight());
  const Media::RectF footer{0.0f, height - static_cast<float>(style_.footerHeight),
                            static_cast<float>(mainWindow_->clientWidth()), height};
  if (footerPainter_) {
    footerPainter_(target, footer);
  } else {
    target.fillRect(footer, solid(style_.footer));
  }
}

// One pixel around the client and its tab strip.
void WindowService::paintFrame(Media::RenderTarget& target, WindowClient& client) {
  bool focus = false;
  if (dragging_) {
    for (const SeparatorMember& member : separator_.members) focus = focus || member.client == &client;
  }
  const Media::Brush brush = Media::Brush::solid(focus ? style_.borderFocus : style_.windowBorder);
  const float left = static_cast<float>(client.x()) - 1.0f;
  const float top = static_cast<float>(client.groupTab() ? client.groupTab()->y() : client.y()) - 1.0f;
  const float right = static_cast<float>(client.x() + client.width());
  const float bottom = static_cast<float>(client.y() + client.height());
  target.fillRect({left, top, right + 1.0f, top + 1.0f}, brush);
  target.fillRect({left, bottom, right + 1.0f, bottom + 1.0f}, brush);
  target.fillRect({left, top, left + 1.0f, bottom + 1.0f}, brush);
  target.fillRect({right, top, right + 1.0f, bottom + 1.0f}, brush);
}

void WindowService::paintGroupTab(Media::RenderTarget& target, WindowClient& client) {
  const WindowGroupTab& tab = *client.groupTab();
  const std::vector<WindowClient*> members = groupMembers(client.area());
  if (members.empty() || tab.height() <= 0) return;
  const std::int32_t count = static_cast<std::int32_t>(members.size());
  for (std::int32_t i = 0; i < count; ++i) {
    const float left = static_cast<float>(tab.x() + i * tab.width() / count);
    const float right = static_cast<float>(tab.x() + (i + 1) * tab.width() / count);
    const Media::RectF rect{left, static_cast<float>(tab.y()), right, static_cast<float>(tab.y() + tab.height())};
    const bool shown = !members[static_cast<std::size_t>(i)]->hidden();
    target.fillRect(rect, Media::Brush::solid(shown ? style_.buttonBodySelect : style_.buttonBody));
    target.drawText(members[static_cast<std::size_t>(i)]->getTitle(), style_.font, rect,
                    Media::Brush::solid(style_.text), Media::TextAlignment::Center);
  }
}

void WindowService::repaintClient(WindowClient& client) {
  if (client.hidden()) return;
  if (!client.floatingWindow()) {
    paint();
    return;
  }
  Media::RenderTarget& target = targetOf(client);
  Media::DrawScope scope(target, {0.0f, 0.0f, static_cast<float>(client.width()), static_cast<float>(client.height())});
  client.paint(target);
}

// ---- window menu operations

void WindowService::setArea(WindowClient& client, Area area) {
  if (client.group() == 0 || client.floating()) {
    client.setArea(area);
    relayout();
    return;
  }
  // Leaves one tab group and joins the other.
  const Area old = client.area();
  if (!client.hidden()) {
    for (WindowClient* member : groupMembers(old)) {
      if (member != &client) {
        member->setFractions(client.fractions());
        member->setHidden(false);
        break;
      }
    }
  }
  client.setArea(area);
  client.setGroup(kGroupLast);
  if (WindowClient* shown = shownGroupMember(area); shown && shown != &client) {
    client.setFractions(shown->fractions());
    shown->setHidden(true);
  }
  client.setVisible(true);
  relayout();
}

void WindowService::setGrouped(WindowClient& client, bool grouped) {
  if ((client.group() != 0) == grouped) return;
  const Area area = client.area();
  if (grouped) {
    // The client joins last and becomes the member that is shown, in the place of the
    // one shown before.
    WindowClient* shown = shownGroupMember(area);
    client.setGroup(kGroupLast);
    if (shown && client.hidden()) client.setFractions(shown->fractions());
    client.setVisible(true);
    for (WindowClient* member : groupMembers(area)) {
      if (member != &client && !member->hidden()) member->setHidden(true);
    }
  } else {
    client.setGroup(0);
    if (client.hidden()) client.setVisible(true);
  }
  const std::vector<WindowClient*> members = groupMembers(area);
  if (!members.empty() && !shownGroupMember(area)) members.front()->setVisible(true);
  relayout();
}

void WindowService::setFloating(WindowClient& client, bool floating) {
  if (client.floating() == floating) return;
  if (floating && client.kind() == 0) return;
  if (client.group() != 0) {
    const Area area = client.area();
    client.setGroup(0);
    if (client.hidden()) client.setVisible(true);
    const std::vector<WindowClient*> members = groupMembers(area);
    if (!members.empty() && !shownGroupMember(area)) members.front()->setVisible(true);
    relayout();
  }
  client.setFloatingFlag(floating);
  if (floating) {
    // The window opens where the client stood, in screen pixels.
    const WindowGeometry main = mainWindow_->geometry();
    client.setFloatingGeometry({main.x + client.x(), main.y + client.y(), client.width(), client.height()});
    std::erase(dockedClients_, &client);
    client.setGroupTab(nullptr);
    client.setFloatingWindow(std::make_unique<WindowFloating>(*this, client));
  } else {
    // The floating window may be on the stack below this call (its own menu): it goes
    // once the loop is back.
    if (WindowFloating* window = client.floatingWindow()) window->window().hide();
    std::shared_ptr<WindowFloating> old = client.takeFloatingWindow();
    platform_.post([old] {});
    // Docked again in the order of creation.
    std::vector<WindowClient*> ordered;
    for (WindowClient* other : clients()) {
      if (!other->floating()) ordered.push_back(other);
    }
    dockedClients_ = ordered;
    if (!client.hidden()) {
      client.setHidden(true);
      makeRoom(client);
      client.setHidden(false);
    }
  }
  platform_.post([this] { relayout(); });
  client.recreate();
}

void WindowService::makeRoom(WindowClient& client) {
  const Area area = client.area();
  const std::vector<WindowClient*> shown = shownInArea(area);
  const Fractions own = client.fractions();
  if (shown.empty()) {
    const float w = std::max(own.right - own.left, 0.001f);
    const float h = std::max(own.bottom - own.top, 0.001f);
    for (WindowClient* other : dockedClients_) {
      if (other == &client || other->hidden()) continue;
      Fractions f = other->fractions();
      switch (area) {
        case Area::Left:
          f.left = (f.left - 1.0f) * (1.0f - w) + 1.0f;
          f.right = (f.right - 1.0f) * (1.0f - w) + 1.0f;
          break;
        case Area::Right:
          f.left *= 1.0f - w;
          f.right *= 1.0f - w;
          break;
        case Area::Top:
          f.top = (f.top - 1.0f) * (1.0f - h) + 1.0f;
          f.bottom = (f.bottom - 1.0f) * (1.0f - h) + 1.0f;
          break;
        case Area::Bottom:
          f.top *= 1.0f - h;
          f.bottom *= 1.0f - h;
          break;
        case Area::Centre:
          break;
      }
      other->setFractions(f);
    }
    return;
  }
  // The client takes the area's cross extent and frees a band of its own size along
  // the stack, at its own place.
  const bool alongY = stacksAlongY(area);
  const Box box = boundingBox(shown);
  Fractions f = own;
  if (alongY) {
    f.left = static_cast<float>(box.left);
    f.right = static_cast<float>(box.right);
  } else {
    f.top = static_cast<float>(box.top);
    f.bottom = static_cast<float>(box.bottom);
  }
  client.setFractions(f);
  const double s = alongY ? box.top : box.left;
  const double e = alongY ? box.bottom : box.right;
  const double extent = std::max(e - s, kMinimumShare);
  const double k = (extent - std::max<double>(stackEnd(f, alongY) - stackStart(f, alongY), kMinimumShare)) / extent;
  if (k <= 0.0) return;
  const double middle = (stackStart(f, alongY) + stackEnd(f, alongY)) / 2.0;
  for (WindowClient* other : shown) {
    Fractions g = other->fractions();
    float& start = alongY ? g.top : g.left;
    float& end = alongY ? g.bottom : g.right;
    const double otherMiddle = (start + end) / 2.0;
    const double towards = otherMiddle < middle ? s : e;
    start = static_cast<float>((start - towards) * k + towards);
    end = static_cast<float>((end - towards) * k + towards);
    other->setFractions(g);
  }
}

void WindowService::showClient(WindowClient& client) {
  if (!client.hidden()) return;
  if (!client.floating()) {
    if (client.group() != 0) {
      if (WindowClient* shown = shownGroupMember(client.area()); shown && shown != &client) {
        client.setFractions(shown->fractions());
        shown->setHidden(true);
      }
    } else {
      makeRoom(client);
    }
  }
  client.setVisible(true);
  relayout();
}

void WindowService::toggleClient(WindowClient& client) {
  if (client.hidden()) {
    showClient(client);
    return;
  }
  client.setVisible(false);
  relayout();
}

bool WindowService::canMoveUp(const WindowClient& client) const {
  const std::vector<WindowClient*> order = areaOrder(client.area());
  return order.size() >= 2 && !order.empty() && order.front() != &client &&
         std::find(order.begin(), order.end(), &client) != order.end();
}

bool WindowService::canMoveDown(const WindowClient& client) const {
  const std::vector<WindowClient*> order = areaOrder(client.area());
  return order.size() >= 2 && order.back() != &client &&
         std::find(order.begin(), order.end(), &client) != order.end();
}

void WindowService::exchangeRectangles(WindowClient& a, WindowClient& b) {
  const Fractions rect = a.fractions();
  a.setFractions(b.fractions());
  b.setFractions(rect);
}

void WindowService::moveUp(WindowClient& client) {
  if (!canMoveUp(client)) return;
  const std::vector<WindowClient*> order = areaOrder(client.area());
  const auto at = std::find(order.begin(), order.end(), &client);
  exchangeRectangles(client, **(at - 1));
  relayout();
}

void WindowService::moveDown(WindowClient& client) {
  if (!canMoveDown(client)) return;
  const std::vector<WindowClient*> order = areaOrder(client.area());
  const auto at = std::find(order.begin(), order.end(), &client);
  exchangeRectangles(client, **(at + 1));
  relayout();
}

// The others before it shift forward by its size; it takes the start of the box.
void WindowService::moveFirst(WindowClient& client) {
  if (!canMoveUp(client)) return;
  const std::vector<WindowClient*> order = areaOrder(client.area());
  const bool byLeft = static_cast<std::int32_t>(client.area()) > 1;
  const Box box = boundingBox(order);
  const Fractions own = client.fractions();
  const float size = byLeft ? own.right - own.left : own.bottom - own.top;
  for (WindowClient* other : order) {
    if (other == &client) break;
    Fractions f = other->fractions();
    if (byLeft) {
      f.left += size;
      f.right += size;
    } else {
      f.top += size;
      f.bottom += size;
    }
    other->setFractions(f);
  }
  Fractions f = own;
  if (byLeft) {
    f.left = static_cast<float>(box.left);
    f.right = f.left + size;
  } else {
    f.top = static_cast<float>(box.top);
    f.bottom = f.top + size;
  }
  client.setFractions(f);
  relayout();
}

void WindowService::moveLast(WindowClient& client) {
  if (!canMoveDown(client)) return;
  const std::vector<WindowClient*> order = areaOrder(client.area());
  const bool byLeft = static_cast<std::int32_t>(client.area()) > 1;
  const Box box = boundingBox(order);
  const Fractions own = client.fractions();
  const float size = byLeft ? own.right - own.left : own.bottom - own.top;
  for (auto it = order.rbegin(); it != order.rend() && *it != &client; ++it) {
    Fractions f = (*it)->fractions();
    if (byLeft) {
      f.left -= size;
      f.right -= size;
    } else {
      f.top -= size;
      f.bottom -= size;
    }
    (*it)->setFractions(f);
  }
  Fractions f = own;
  if (byLeft) {
    f.right = static_cast<float>(box.right);
    f.left = f.right - size;
  } else {
    f.bottom = static_cast<float>(box.bottom);
    f.top = f.bottom - size;
  }
  client.setFractions(f);
  relayout();
}

// ---- separators

std::optional<SeparatorHit> WindowService::hitTestSeparator(std::int32_t x, std::int32_t y) const {
  struct Distance {
    std::int32_t d;
    WindowClient* client;
  };
  std::vector<Distance> distances;
  for (WindowClient* client : dockedClients_) {
    std::int32_t d = kHiddenPosition;
    if (!client->hidden()) {
      const PixelRect p = pixelRect(client->fractions(), clientWidth_, clientHeight_, style_.separatorSize);
      d = std::max({p.left - x, x - p.right, p.top - y, y - p.bottom});
    }
    distances.push_back({d, client});
  }
  if (distances.size() < 2) return std::nullopt;
  std::stable_sort(distances.begin(), distances.end(),
                   [](const Distance& a, const Distance& b) { return a.d < b.d; });
  if (distances[0].d > style_.separatorSize || distances[1].d > style_.separatorSize) return std::nullopt;
  WindowClient* a = distances[0].client;
  WindowClient* b = distances[1].client;
  const Fractions fa = a->fractions();
  const Fractions fb = b->fractions();
  SeparatorHit hit;
  if (same(fa.right, fb.left)) {
    hit = {true, fa.right, {{a, true}, {b, false}}};
  } else if (same(fa.bottom, fb.top)) {
    hit = {false, fa.bottom, {{a, true}, {b, false}}};
  } else if (same(fb.right, fa.left)) {
    hit = {true, fb.right, {{b, true}, {a, false}}};
  } else if (same(fb.bottom, fa.top)) {
    hit = {false, fb.bottom, {{b, true}, {a, false}}};
  } else {
    return std::nullopt;
  }
  if (!walkSeparator(hit, 1) || !walkSeparator(hit, -1)) return std::nullopt;
  return hit;
}

// A client on `nearSide` of the separator that continues `from` in the direction.
WindowClient* WindowService::separatorNeighbour(const SeparatorHit& hit, const WindowClient& from, bool nearSide,
                                                int direction) const {
  const bool alongY = hit.vertical;  // a vertical line runs along y
  const Fractions f = from.fractions();
  const float end = direction > 0 ? stackEnd(f, alongY) : stackStart(f, alongY);
  for (WindowClient* client : dockedClients_) {
    if (client == &from || client->hidden()) continue;
    const Fractions g = client->fractions();
    const float edge = nearSide ? (hit.vertical ? g.right : g.bottom) : (hit.vertical ? g.left : g.top);
    if (!same(edge, hit.position)) continue;
    const float start = direction > 0 ? stackStart(g, alongY) : stackEnd(g, alongY);
    if (same(start, end)) return client;
  }
  return nullptr;
}

// Follows the separator past the hit pair in one direction, collecting the clients
// whose edges lie on it. False when the line is not straight.
bool WindowService::walkSeparator(SeparatorHit& hit, int direction) const {
  const bool alongY = hit.vertical;
  WindowClient* a = hit.members[0].client;
  WindowClient* b = hit.members[1].client;
  const auto endOf = [&](const WindowClient* client) {
    const Fractions f = client->fractions();
    return direction > 0 ? stackEnd(f, alongY) : stackStart(f, alongY);
  };
  for (std::size_t step = 0; step <= dockedClients_.size() * 2; ++step) {
    const float endA = endOf(a);
    const float endB = endOf(b);
    if (same(endA, endB)) {
      WindowClient* nextA = separatorNeighbour(hit, *a, true, direction);
      WindowClient* nextB = separatorNeighbour(hit, *b, false, direction);
      if (!nextA || !nextB) return true;
      if (nextA->area() != a->area() && nextB->area() != b->area()) return true;
      hit.members.push_back({nextA, true});
      hit.members.push_back({nextB, false});
      a = nextA;
      b = nextB;
      continue;
    }
    const bool aShort = direction > 0 ? endA < endB : endA > endB;
    WindowClient* next = separatorNeighbour(hit, aShort ? *a : *b, aShort, direction);
    if (!next) return false;
    hit.members.push_back({next, aShort});
    (aShort ? a : b) = next;
  }
  return true;
}

void WindowService::dragSeparator(std::int32_t x, std::int32_t y) {
  const double extent = std::max(separator_.vertical ? clientWidth_ : clientHeight_, 1);
  const double offset = separator_.vertical ? x - dragStartX_ : y - dragStartY_;
  const double margin = kDragMargin / extent;
  double position = separator_.position + offset / extent;
  const bool lower = position < separator_.position;
  const auto farEdge = [&](const WindowClient& client, bool nearSide) -> double {
    const Fractions f = client.fractions();
    if (separator_.vertical) return nearSide ? f.left : f.right;
    return nearSide ? f.top : f.bottom;
  };

  if (separator_.members.size() == 2 && separator_.members[0].client->area() == separator_.members[1].client->area()) {
    WindowClient& a = *separator_.members[0].client;
    WindowClient& b = *separator_.members[1].client;
    const double edge = lower ? farEdge(a, true) : farEdge(b, false);
    const bool passed = lower ? position <= edge : position >= edge;
    const bool near = lower ? position < edge + margin : position > edge - margin;
    if (passed) {
      // The separator stays; b moves one place in the area's order.
      bool swapped = false;
      if (lower) {
        exchangeRectangles(a, b);
        swapped = true;
      } else {
        const std::vector<WindowClient*> order = areaOrder(b.area());
        const auto at = std::find(order.begin(), order.end(), &b);
        if (at != order.end() && at + 1 != order.end()) {
          exchangeRectangles(b, **(at + 1));
          swapped = true;
        }
      }
      if (!swapped) return;
      relayout();
      // The drag goes on at the edge where the separator now stands, if that is again
      // a pair of one area; the press point moves to where the mouse is.
      const SeparatorHit old = separator_;
      const Fractions fa = old.members[0].client->fractions();
      std::int32_t hx = 0;
      std::int32_t hy = 0;
      if (old.vertical) {
        hx = truncated(static_cast<float>(clientWidth_) * old.position) + 1 - style_.separatorSize / 2;
        hy = truncated(static_cast<float>(clientHeight_) * (fa.top + fa.bottom) / 2.0f);
      } else {
        hx = truncated(static_cast<float>(clientWidth_) * (fa.left + fa.right) / 2.0f);
        hy = truncated(static_cast<float>(clientHeight_) * old.position) - style_.separatorSize / 2;
      }
      const std::optional<SeparatorHit> again = hitTestSeparator(hx, hy);
      if (again && again->members.size() == 2 && again->members[0].client->area() == again->members[1].client->area()) {
        separator_ = *again;
        dragStartX_ = x;
        dragStartY_ = y;
        relayout();
      } else {
        endDrag();
      }
      return;
    }
    if (near) {
      updateCursor(CursorShape::Swap);
      return;
    }
  }
  updateCursor(separator_.vertical ? CursorShape::SizeWestEast : CursorShape::SizeNorthSouth);

  // Every pushed client keeps the margin.
  for (const SeparatorMember& member : separator_.members) {
    const double edge = farEdge(*member.client, member.nearSide);
    if (lower && edge < separator_.position) position = std::max(position, edge + margin);
    if (!lower && edge > separator_.position) position = std::min(position, edge - margin);
  }
  const float value = static_cast<float>(position);
  for (const SeparatorMember& member : separator_.members) {
    Fractions f = member.client->fractions();
    if (separator_.vertical) {
      (member.nearSide ? f.right : f.left) = value;
    } else {
      (member.nearSide ? f.bottom : f.top) = value;
    }
    member.client->setFractions(f);
  }
  relayout();
}

void WindowService::endDrag() {
  dragging_ = false;
  separator_ = {};
  mainWindow_->captureMouse(false);
  relayout();
}

void WindowService::updateCursor(CursorShape shape) {
  if (shape == cursor_) return;
  cursor_ = shape;
  mainWindow_->setCursor(shape);
}

// ---- tabs and menus

bool WindowService::groupTabPressed(MouseButton button, std::int32_t x, std::int32_t y) {
  for (WindowClient* client : dockedClients_) {
    WindowGroupTab* tab = client->groupTab();
    if (client->hidden() || !tab || !tab->contains(x, y)) continue;
    const std::vector<WindowClient*> members = groupMembers(client->area());
    WindowClient* target = members[WindowGroupTab::tabAt(x - tab->x(), tab->width(), members.size())];
    if (button == MouseButton::Right) {
      showWindowMenu(*target, x, y);
    } else if (button == MouseButton::Left) {
      tabDrag_ = target;
      if (target->hidden()) showClient(*target);
    }
    return true;
  }
  return false;
}

void WindowService::showWindowMenu(WindowClient& client, std::int32_t x, std::int32_t y) {
  PopupMenu menu;
  client.buildWindowMenu(menu);
  const WindowGeometry at = mainWindow_->geometry();
  platform_.showPopupMenu(*mainWindow_, at.x + x, at.y + y, menu);
}

// ---- main window events

void WindowService::resized(std::int32_t, std::int32_t) { relayout(); }

void WindowService::paintRequested() { paint(); }

void WindowService::closeRequested() {
  if (inputDisabled_) return;
  if (closeHandler_) closeHandler_();
}

void WindowService::geometryChanged(const WindowGeometry& geometry, bool maximized, bool minimized) {
  zoom_ = maximized ? 1 : 0;
  if (maximized || minimized) return;
  x_ = geometry.x;
  y_ = geometry.y;
  w_ = geometry.width;
  h_ = geometry.height;
}

void WindowService::mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t) {
  if (inputDisabled_) return;
  if (dragging_) {
    dragSeparator(x, y);
    return;
  }
  if (tabDrag_) {
    // Dragging a tab exchanges its place with the tab under the mouse.
    WindowClient* shown = shownGroupMember(tabDrag_->area());
    if (shown && shown->groupTab() && tabDrag_->area() == shown->area()) {
      const WindowGroupTab& tab = *shown->groupTab();
      const std::vector<WindowClient*> members = groupMembers(shown->area());
      WindowClient* other = members[WindowGroupTab::tabAt(x - tab.x(), tab.width(), members.size())];
      if (other != tabDrag_) {
        const std::int32_t group = other->group();
        other->setGroup(tabDrag_->group());
        tabDrag_->setGroup(group);
        relayout();
      }
    }
    return;
  }
  const std::optional<SeparatorHit> hit = hitTestSeparator(x, y);
  if (!hit) {
    updateCursor(CursorShape::Arrow);
    return;
  }
  updateCursor(hit->vertical ? CursorShape::SizeWestEast : CursorShape::SizeNorthSouth);
}

void WindowService::mousePressed(MouseButton button, std::int32_t x, std::int32_t y, std::uint32_t) {
  if (inputDisabled_) return;
  if (groupTabPressed(button, x, y)) return;
  if (button == MouseButton::Left) {
    if (const std::optional<SeparatorHit> hit = hitTestSeparator(x, y)) {
      separator_ = *hit;
      dragging_ = true;
      dragStartX_ = x;
      dragStartY_ = y;
      mainWindow_->captureMouse(true);
      updateCursor(hit->vertical ? CursorShape::SizeWestEast : CursorShape::SizeNorthSouth);
      paint();
      return;
    }
  }
  for (WindowClient* client : dockedClients_) {
    if (client->hidden() || x < client->x() || y < client->y() || x >= client->x() + client->width() ||
        y >= client->y() + client->height()) {
      continue;
    }
    if (client->mousePressed(button, x - client->x(), y - client->y())) return;
    if (button == MouseButton::Right) showWindowMenu(*client, x, y);
    return;
  }
}

void WindowService::mouseReleased(MouseButton button, std::int32_t, std::int32_t, std::uint32_t) {
  if (button != MouseButton::Left) return;
  tabDrag_ = nullptr;
  if (dragging_) endDrag();
}

void WindowService::addWaitHandle(int descriptor, std::function<void()> callback) {
  platform_.addWaitHandle(descriptor, std::move(callback));
}

void WindowService::removeWaitHandle(int descriptor) { platform_.removeWaitHandle(descriptor); }

}  // namespace Window
