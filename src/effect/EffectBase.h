// The base of every effect: an input, output, filter or control step of an object's
// chain, with its items. The registry keeps one instance of each class as a prototype
// that is never placed on the timeline; objects own their own instances. Items are
// edited on the main thread under the edit lock; the render threads work on copies.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "effect/EffectInfo.h"
#include "effect/ItemEvent.h"
#include "effect/item/EffectItem.h"
#include "system/Exception.h"
#include "system/IniFile.h"

namespace Anchor {
struct AnchorEvent;
}
namespace Media {
class AudioBuffer;
class RenderBuffer;
class ResourceBuffer;
class WaveformBuffer;
}  // namespace Media
namespace Render {
struct ObjectContext;
struct ObjectView;
}  // namespace Render

namespace Effect {

// What the base's drawing and sound operations throw for an effect that has not built
// them: the walk leaves such an object out, and says so once, instead of failing the
// frame; so unlike other exceptions it logs nothing itself.
class NotImplemented : public System::Exception {
 public:
  explicit NotImplemented(const char* place) : place_(place) {
    setText(std::string("not implement.\n\n[Place]\n") + place + "()");
  }
  // The operation that is missing, as "Effect::EffectBase::inputVideo".
  const std::string& place() const noexcept { return place_; }

 private:
  std::string place_;
};

class EffectBase {
 public:
  explicit EffectBase(const EffectInfo& info);
  virtual ~EffectBase();
  EffectBase(const EffectBase&) = delete;
  EffectBase& operator=(const EffectBase&) = delete;

  // Unique in the process, prototypes included; the render caches key on it.
  std::uint64_t instanceId() const noexcept { return instanceId_; }
  // The key. All instances of one class share the pointer, which tells their define.
  const wchar_t* name() const noexcept { return info_->name; }
  EffectType type() const noexcept { return info_->type; }
  EffectMedia media() const noexcept { return info_->media; }
  EffectMedia placement() const noexcept { return info_->placement; }
  const wchar_t* category() const noexcept { return info_->category; }
  const EffectInfo& info() const noexcept { return *info_; }

  const std::vector<std::unique_ptr<EffectItem>>& items() const noexcept { return items_; }
  // Null when the effect has no item of that name.
  EffectItem* findItem(std::wstring_view name) const;
  // The item of that name and class; a missing one is a fault of the effect's table.
  template <class T>
  T& item(std::wstring_view name) const {
    return dynamic_cast<T&>(*findItemOrThrow(name));
  }

  bool disable = false;  // switched off
  bool hide = false;     // its items are folded away in the settings window
  bool lock = false;     // its items are locked against editing

  // Drawing and sound. The base throws "not implement." where the effect must answer,
  // and does nothing where doing nothing is right.
  virtual std::unique_ptr<Media::ResourceBuffer> inputVideo(Render::ObjectContext& context);
  virtual void prepareVideo(Render::ObjectContext& context);
  // The image stays the caller's: it becomes the last image once drawn.
  virtual void outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image);
  virtual void drawAnchor(Render::ObjectContext& context, std::int32_t width, std::int32_t height);
  // Fills the object's view record: where and how the object lands on the frame.
  virtual void getOutputView(Render::ObjectContext& context, Render::ObjectView& view);
  virtual std::unique_ptr<Media::ResourceBuffer> filterVideo(Render::ObjectContext& context,
                                                             std::unique_ptr<Media::ResourceBuffer> image);
  virtual void controlVideo(Render::ObjectContext& context);
  virtual std::shared_ptr<Media::AudioBuffer> inputAudio(Render::ObjectContext& context);
  virtual void prepareAudio(Render::ObjectContext& context);
  virtual void outputAudio(Render::ObjectContext& context, std::shared_ptr<Media::AudioBuffer> block);
  virtual std::shared_ptr<Media::AudioBuffer> filterAudio(Render::ObjectContext& context,
                                                               std::shared_ptr<Media::AudioBuffer> block);
  virtual void controlAudio(Render::ObjectContext& context);

  // The title of the object on the timeline: the translated key, or what the effect shows.
  virtual std::wstring getDisplayName() const;
  // Query 0: the source has sound; query 1: its number of audio tracks.
  virtual std::int32_t getMediaFlag(std::int32_t query) const;
  // How many layers a control effect governs (0: all); throws for other effects.
  virtual std::int32_t getLayerRange() const;
  // What a group or camera control stored for the objects it governs, rows multiplied on
  // the left: the world matrix of a group (a camera has none), and the view-projection
  // of either. Null for other effects and before the control has run this frame.
  virtual const std::array<float, 16>* storedWorld() const;
  virtual const std::array<float, 16>* storedViewProjection() const;
  virtual std::shared_ptr<Media::WaveformBuffer> getWaveform() const;
  virtual std::int32_t getWaveformPosition(Render::ObjectContext& context) const;
  virtual bool anchorEvent(const Anchor::AnchorEvent& event);
  virtual bool itemEvent(ItemEvent& event);
  // Whether the effect's file item can hold this file.
  virtual bool acceptsFile(const std::wstring& path) const;
  // Once on a prototype after registration, and on a fresh instance when a stored
  // default is reset.
  virtual void initialize();
  // After an item changed: shows or hides the items that depend on it.
  virtual void updateItems();

  // A new instance of the most derived class, with the constructor's values.
  virtual std::shared_ptr<EffectBase> createInstance() const = 0;
  // On the prototype: what all instances share (compiled shaders, states).
  virtual void createCommonResource();
  // On a new instance: takes over what the prototype made.
  virtual void shareCommonResource(const EffectBase& prototype);

  // The effect section of the ini-form texts (project, alias and default files), each
  // line ended by CR LF: the name, the switches that are on, then every item.
  std::string saveIniSectionParameter() const;
  // Reads the switches and each item found in the section; a value that does not read
  // is logged and leaves its item as it was.
  void loadIniSectionParameter(const System::IniFile::SectionRef& section);
  // A section of a legacy object file; old item names are mapped through `oldNames`
  // (section "OldScript.<effect name>" of effect.conf).
  void loadVtoSectionParameter(const System::IniFile::SectionRef& section,
                               const System::IniFile::SectionRef& oldNames);
  // Copies every item from an effect of the same class; "different number of items."
  // when the counts differ, and then nothing changes.
  void setItemData(const EffectBase& other);

 protected:
  // For effects whose items come from elsewhere than their table (scripts).
  std::vector<std::unique_ptr<EffectItem>>& mutableItems() noexcept { return items_; }

 private:
  EffectItem* findItemOrThrow(std::wstring_view name) const;

  std::uint64_t instanceId_;
  const EffectInfo* info_;
  std::vector<std::unique_ptr<EffectItem>> items_;
};

// The createInstance of a class that is made with no arguments.
template <class Derived, class Base = EffectBase>
class EffectInstance : public Base {
 public:
  using Base::Base;
  std::shared_ptr<EffectBase> createInstance() const override { return std::make_shared<Derived>(); }
};

}  // namespace Effect
