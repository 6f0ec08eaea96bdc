// A button that turns into a text box on a click: Return or a click elsewhere keeps
// what was typed, Esc gives it up. Used for names that are edited in place.
#pragma once

#include <functional>
#include <string>

#include "control/ButtonControl.h"
#include "control/EditControl.h"

namespace Control {

class ButtonInputControl : public Window::WindowControl {
 public:
  class Button : public TextButtonControl {
   public:
    explicit Button(ButtonInputControl& owner) : TextButtonControl(&owner), owner_(owner) { centred = false; }

   protected:
    void click() override { owner_.beginEdit(); }

   private:
    ButtonInputControl& owner_;
  };

  class Edit : public EditControl {
   public:
    explicit Edit(ButtonInputControl& owner) : EditControl(&owner), owner_(owner) { visible = false; }
    bool keyDown(std::int32_t key) override;
    void focusLost() override;

   private:
    ButtonInputControl& owner_;
    friend class ButtonInputControl;
    bool cancelled_ = false;
  };

  explicit ButtonInputControl(Window::WindowControl* parent);

  const std::wstring& text() const noexcept { return button_.text; }
  void setText(const std::wstring& text);
  void beginEdit();
  bool editing() const noexcept { return edit_.visible; }

  // The text the user kept.
  std::function<void(const std::wstring&)> onCommit;

  Button& button() noexcept { return button_; }
  Edit& edit() noexcept { return edit_; }

 private:
  void endEdit(bool keep);
  Button button_;
  Edit edit_;
};

// The title strip of a window: the TitleHeader colour and the title header's height.
class TitleHeaderControl : public Window::WindowControlRenderTarget {
 public:
  explicit TitleHeaderControl(Window::WindowControl* parent) : Window::WindowControlRenderTarget(parent) {
    enabled = false;
  }
  std::wstring title;
  void place() override;

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

// A row of a list, `ListItemHeight` high, placed under the rows before it by index.
class ListItemBase : public Window::WindowControlRenderTarget {
 public:
  ListItemBase(Window::WindowControl* parent, std::int32_t index)
      : Window::WindowControlRenderTarget(parent), index(index) {}
  std::int32_t index;
  bool selected = false;
  void place() override;
};

class ListItemControl : public ListItemBase {
 public:
  using ListItemBase::ListItemBase;
  std::wstring text;
  std::function<void(std::int32_t)> onSelect;
  void leftDown(std::int32_t, std::int32_t) override;
  void mouseEnter() override { paint(); }
  void mouseLeave() override { paint(); }

 protected:
  void draw(Media::RenderTarget& target, const Window::ControlStyle& style) override;
};

}  // namespace Control
