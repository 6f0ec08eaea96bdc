#include "control/WindowControl.h"

#include <algorithm>

#include "control/WindowMouseService.h"

namespace Window {

ControlRect ControlRect::intersected(const ControlRect& other) const noexcept {
  const std::int32_t left = std::max(x, other.x);
  const std::int32_t top = std::max(y, other.y);
  const std::int32_t right = std::min(x + w, other.x + other.w);
  const std::int32_t bottom = std::min(y + h, other.y + other.h);
  return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

ControlRect applyLayout(const ControlRect& parent, const ControlLayout& layout) noexcept {
  std::int32_t x0 = parent.x + layout.left;
  if (layout.left < 0) x0 += parent.w;
  std::int32_t y0 = parent.y + layout.top;
  if (layout.top < 0) y0 += parent.h;
  const std::int32_t x1 = layout.right + (layout.right >= 1 ? x0 : parent.x + parent.w);
  const std::int32_t y1 = layout.bottom + (layout.bottom >= 1 ? y0 : parent.y + parent.h);
  return {x0, y0, x1 - x0, y1 - y0};
}

WindowControl::WindowControl(WindowMouseService& service) : service_(&service) {}

WindowControl::WindowControl(WindowControl* parent) : parent_(parent) {
  if (parent_ != nullptr) {
    service_ = parent_->service_;
    depth_ = parent_->depth_ + 1;
    parent_->children_.push_back(this);
  }
}

void WindowControl::detachFromService() noexcept {
  service_ = nullptr;
  for (WindowControl* child : children_) child->detachFromService();
}

WindowControl::~WindowControl() {
  // The root goes with its service: what is left of the tree must not call a dead one.
  if (parent_ == nullptr && depth_ == 0) {
    for (WindowControl* child : children_) child->detachFromService();
  }
  // Children are members or owned elsewhere; they must not point back at a dead parent.
  for (WindowControl* child : children_) child->parent_ = nullptr;
  if (service_ != nullptr) service_->forget(*this);
  if (parent_ != nullptr) std::erase(parent_->children_, this);
}

void WindowControl::paint() {
  if (!shown()) return;
  for (WindowControl* child : children_) child->paint();
}

void WindowControl::layoutChildren() {
  for (WindowControl* child : children_) {
    child->place();
    child->layoutChildren();
  }
}

void WindowControl::place() {
  if (parent_ == nullptr) return;
  rect = applyLayout(parent_->rect, layout);
  clipRect = rect.intersected(parent_->clipRect);
}

void WindowControl::setVisible(bool shownNow) {
  if (visible == shownNow) return;
  visible = shownNow;
  if (!visible && service_ != nullptr) {
    // A hidden control keeps no press, hover or focus.
    if (focused) service_->setFocus(nullptr);
  }
  if (visible) {
    paint();
  } else if (parent_ != nullptr) {
    parent_->paint();
  }
}

void WindowControl::setEnabled(bool on) {
  if (enabled == on) return;
  enabled = on;
  paint();
}

bool WindowControl::shown() const noexcept {
  for (const WindowControl* control = this; control != nullptr; control = control->parent_) {
    if (!control->visible) return false;
  }
  return true;
}

}  // namespace Window
