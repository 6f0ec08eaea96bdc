// The base of every parameter of an effect: its kind, its name, and its value as the
// text that project, alias and default files hold. Items are read by the render threads
// from the object copies they are handed and edited on the main thread under the edit
// lock; an item holds no lock of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Effect {

// The kind codes of the items; a script may ask for an item by its kind.
enum class ItemKind : std::uint8_t {
  Integer = 0,
  Number = 1,
  Check = 2,
  CheckButton = 3,
  Text = 4,
  String = 5,
  File = 6,
  Color = 7,
  Select = 8,
  SelectButton = 9,
  PlayPosition = 10,  // a number that is a play position in seconds
  Scene = 11,
  LayerRange = 12,
  FigureSelect = 13,
  PickColor = 14,  // a colour that may be "not set", picked from the preview
  MaskSelect = 15,
  FontSelect = 16,
  Button = 18,
  YUV = 19,
  NumberGroup = 20,
  CheckInteger = 21,
  ScriptVariable = 100,
  ScriptArray = 101,
  HiddenInteger = 200,
};

class EffectItem {
 public:
  EffectItem(ItemKind kind, std::wstring name) : kind_(kind), name_(std::move(name)) {}
  virtual ~EffectItem() = default;
  EffectItem(const EffectItem&) = default;
  EffectItem& operator=(const EffectItem&) = delete;

  ItemKind kind() const noexcept { return kind_; }
  const std::wstring& name() const noexcept { return name_; }

  // The control hands a user's change of this item to the effect (event 1).
  bool notifyChange() const noexcept { return notifyChange_; }
  void setNotifyChange(bool notify) noexcept { notifyChange_ = notify; }
  // Hidden items keep their value and their place in the files; only the settings
  // window leaves them out.
  bool visible() const noexcept { return visible_; }
  void setVisible(bool visible) noexcept { visible_ = visible; }

  // Copies the value from an item of the same class; another class is the caller's
  // fault and throws std::bad_cast.
  virtual void assign(const EffectItem& other) = 0;
  virtual bool equals(const EffectItem& other) const = 0;
  virtual std::unique_ptr<EffectItem> clone() const = 0;

  // The value as UTF-8 text, and back. A text that cannot be read throws and leaves the
  // value as it was.
  virtual std::string toString() const = 0;
  virtual void fromString(std::string_view text) = 0;
  // The default written in a script's header.
  virtual void fromScriptDefault(std::string_view text) { fromString(text); }
  // The value of the legacy object file; `key` and `effectName` name where it stood.
  virtual void fromLegacy(std::string_view text, std::string_view /*key*/, std::wstring_view /*effectName*/,
                          bool /*flag*/) {
    fromString(text);
  }

  virtual std::optional<std::wstring> getFilePath() const { return std::nullopt; }
  // Throws "not implement." for items without a path.
  virtual void setFilePath(const std::wstring& path);

 private:
  ItemKind kind_;
  std::wstring name_;
  bool notifyChange_ = false;
  bool visible_ = true;
};

// The shared body of assign/equals/clone for an item class whose value is its copyable
// state: `Derived` names the class and `Base` the class it derives from.
template <class Derived, class Base>
class ItemValue : public Base {
 public:
  using Base::Base;

  void assign(const EffectItem& other) override { static_cast<Derived&>(*this).copyValue(dynamic_cast<const Derived&>(other)); }
  bool equals(const EffectItem& other) const override {
    const auto* same = dynamic_cast<const Derived*>(&other);
    return same && static_cast<const Derived&>(*this).sameValue(*same);
  }
  std::unique_ptr<EffectItem> clone() const override {
    return std::make_unique<Derived>(static_cast<const Derived&>(*this));
  }
};

}  // namespace Effect
