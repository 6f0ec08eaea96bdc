#include "control/ButtonInputControl.h"

#include "control/WindowMouseService.h"

namespace Control {

bool ButtonInputControl::Edit::keyDown(std::int32_t key) {
  if (key == 13 || key == 27) {
    cancelled_ = key == 27;
    service()->setFocus(nullptr);
    return true;
  }
  return EditControl::keyDown(key);
}

void ButtonInputControl::Edit::focusLost() {
  EditControl::focusLost();
  const bool keep = !cancelled_;
  cancelled_ = false;
  owner_.endEdit(keep);
}

ButtonInputControl::ButtonInputControl(Window::WindowControl* parent)
    : Window::WindowControl(parent), button_(*this), edit_(*this) {}

void ButtonInputControl::setText(const std::wstring& text) {
  button_.text = text;
  button_.paint();
}

void ButtonInputControl::beginEdit() {
  button_.visible = false;
  edit_.visible = true;
  edit_.setText(button_.text);
  edit_.selectAll();
  service()->setFocus(&edit_);
  edit_.restartCaret();
  edit_.paint();
}

void ButtonInputControl::endEdit(bool keep) {
  if (!edit_.visible) return;
  edit_.visible = false;
  button_.visible = true;
  if (keep && edit_.text() != button_.text) {
    button_.text = edit_.text();
    if (onCommit) onCommit(button_.text);
  }
  button_.paint();
}

void TitleHeaderControl::place() {
  Window::WindowControlRenderTarget::place();
  if (service() != nullptr) {
    rect.h = service()->style().titleHeaderHeight;
    clipRect = parent() != nullptr ? rect.intersected(parent()->clipRect) : rect;
  }
}

void TitleHeaderControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  target.fillRect(bounds(), Media::Brush::solid(style.titleHeader));
  const Media::RectF box = bounds();
  target.drawText(title, style.font, {6.0f, 0.0f, box.right - 6.0f, box.bottom}, Media::Brush::solid(style.text));
}

void ListItemBase::place() {
  Window::WindowControlRenderTarget::place();
  if (service() == nullptr || parent() == nullptr) return;
  const std::int32_t height = service()->style().listItemHeight;
  rect.y = parent()->rect.y + layout.top + index * height;
  rect.h = height;
  clipRect = rect.intersected(parent()->clipRect);
}

void ListItemControl::leftDown(std::int32_t, std::int32_t) {
  if (onSelect) onSelect(index);
}

void ListItemControl::draw(Media::RenderTarget& target, const Window::ControlStyle& style) {
  const Media::ColorF body = selected ? style.buttonBodySelect : (hovered ? style.buttonBodyHover : style.background);
  target.fillRect(bounds(), Media::Brush::solid(body));
  const Media::RectF box = bounds();
  target.drawText(text, style.font, {4.0f, 0.0f, box.right - 4.0f, box.bottom}, Media::Brush::solid(style.text));
}

}  // namespace Control
