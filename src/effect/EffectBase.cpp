#include "effect/EffectBase.h"

#include <atomic>

#include "system/Exception.h"
#include "system/Log.h"
#include "system/Text.h"
#include "translate/Translate.h"

namespace Effect {

namespace {

std::atomic<std::uint64_t> nextInstanceId{1};

[[noreturn]] void notImplemented(const char* place) { throw NotImplemented(place); }

void appendLine(std::string& text, std::string_view key, std::string_view value) {
  text.append(key);
  text += '=';
  text.append(value);
  text += "\r\n";
}

}  // namespace

EffectBase::EffectBase(const EffectInfo& info)
    : instanceId_(nextInstanceId.fetch_add(1)), info_(&info), items_(buildItems(info.items)) {}

EffectBase::~EffectBase() = default;

EffectItem* EffectBase::findItem(std::wstring_view name) const {
  for (const auto& item : items_) {
    if (item->name() == name) return item.get();
  }
  return nullptr;
}

EffectItem* EffectBase::findItemOrThrow(std::wstring_view name) const {
  if (EffectItem* found = findItem(name)) return found;
  throw System::NoteException("Effect::EffectBase::item", "item not found.", System::Text::toUtf8(name));
}

std::unique_ptr<Media::ResourceBuffer> EffectBase::inputVideo(Render::ObjectContext& /*context*/) {
  notImplemented("Effect::EffectBase::inputVideo");
}

void EffectBase::prepareVideo(Render::ObjectContext& /*context*/) {}

void EffectBase::outputVideo(Render::ObjectContext& /*context*/, Media::RenderBuffer& /*target*/,
                             Media::ResourceBuffer& /*image*/) {
  notImplemented("Effect::EffectBase::outputVideo");
}

void EffectBase::drawAnchor(Render::ObjectContext& /*context*/, std::int32_t /*width*/, std::int32_t /*height*/) {}

void EffectBase::getOutputView(Render::ObjectContext& /*context*/, Render::ObjectView& /*view*/) {
  notImplemented("Effect::EffectBase::getOutputView");
}

std::unique_ptr<Media::ResourceBuffer> EffectBase::filterVideo(Render::ObjectContext& /*context*/,
                                                               std::unique_ptr<Media::ResourceBuffer> /*image*/) {
  notImplemented("Effect::EffectBase::filterVideo");
}

void EffectBase::controlVideo(Render::ObjectContext& /*context*/) {}

std::shared_ptr<Media::AudioBuffer> EffectBase::inputAudio(Render::ObjectContext& /*context*/) {
  notImplemented("Effect::EffectBase::inputAudio");
}

void EffectBase::prepareAudio(Render::ObjectContext& /*context*/) {}

void EffectBase::outputAudio(Render::ObjectContext& /*context*/, std::shared_ptr<Media::AudioBuffer> /*block*/) {
  notImplemented("Effect::EffectBase::outputAudio");
}

std::shared_ptr<Media::AudioBuffer> EffectBase::filterAudio(Render::ObjectContext& /*context*/,
                                                                 std::shared_ptr<Media::AudioBuffer> /*block*/) {
  notImplemented("Effect::EffectBase::filterAudio");
}

void EffectBase::controlAudio(Render::ObjectContext& /*context*/) {}

std::wstring EffectBase::getDisplayName() const { return Translate::translate("Effect", name()); }

std::int32_t EffectBase::getMediaFlag(std::int32_t /*query*/) const { return 0; }

std::int32_t EffectBase::getLayerRange() const { notImplemented("Effect::EffectBase::getLayerRange"); }

const std::array<float, 16>* EffectBase::storedWorld() const { return nullptr; }

const std::array<float, 16>* EffectBase::storedViewProjection() const { return nullptr; }

std::shared_ptr<Media::WaveformBuffer> EffectBase::getWaveform() const { return nullptr; }

std::int32_t EffectBase::getWaveformPosition(Render::ObjectContext& /*context*/) const {
  notImplemented("Effect::EffectBase::getWaveformPosition");
}

bool EffectBase::anchorEvent(const Anchor::AnchorEvent& /*event*/) {
  notImplemented("Effect::EffectBase::anchorEvent");
}

bool EffectBase::itemEvent(ItemEvent& /*event*/) { return false; }

bool EffectBase::acceptsFile(const std::wstring& /*path*/) const { return false; }

void EffectBase::initialize() {}

void EffectBase::updateItems() {}

void EffectBase::createCommonResource() {}

void EffectBase::shareCommonResource(const EffectBase& /*prototype*/) {}

std::string EffectBase::saveIniSectionParameter() const {
  std::string text;
  appendLine(text, "effect.name", System::Text::toUtf8(name()));
  if (disable) appendLine(text, "effect.disable", "1");
  if (hide) appendLine(text, "display.hide", "1");
  if (lock) appendLine(text, "display.lock", "1");
  for (const auto& item : items_) appendLine(text, System::Text::toUtf8(item->name()), item->toString());
  return text;
}

void EffectBase::loadIniSectionParameter(const System::IniFile::SectionRef& section) {
  disable = section.find("effect.disable").tryInt().value_or(0) != 0;
  hide = section.find("display.hide").tryInt().value_or(0) != 0;
  lock = section.find("display.lock").tryInt().value_or(0) != 0;
  for (const auto& item : items_) {
    const std::string key = System::Text::toUtf8(item->name());
    if (!section.contains(key)) continue;
    const std::string& value = section.find(key).text;
    try {
      item->fromString(value);
    } catch (const std::exception&) {
      System::Log::warn("Effect::EffectBase::loadIniSectionParameter", "ini file effect parameter invalid. [%s](%s)",
                        key.c_str(), value.c_str());
    }
  }
}

void EffectBase::loadVtoSectionParameter(const System::IniFile::SectionRef& section,
                                         const System::IniFile::SectionRef& oldNames) {
  const std::wstring effectName = name();
  for (const auto& entry : section) {
    const std::string& key = entry.key;
    if (key == "_disable") {
      disable = entry.value.tryInt().value_or(0) != 0;
      continue;
    }
    if (key == "_name") continue;
    EffectItem* item = findItem(System::Text::fromUtf8(key));
    if (!item) {
      const std::string& renamed = oldNames.find(key).text;
      if (!renamed.empty()) item = findItem(System::Text::fromUtf8(renamed));
    }
    if (!item) continue;
    try {
      item->fromLegacy(entry.value.text, key, effectName, false);
    } catch (const std::exception&) {
      System::Log::warn("Effect::EffectBase::loadVtoSectionParameter", L"ini file effect parameter invalid. [%ls](%ls)",
                        System::Text::fromUtf8(key).c_str(), System::Text::fromUtf8(entry.value.text).c_str());
    }
  }
}

void EffectBase::setItemData(const EffectBase& other) {
  if (items_.size() != other.items_.size()) {
    throw System::NoteException("Effect::EffectBase::setItemData", "different number of items.");
  }
  for (std::size_t i = 0; i < items_.size(); ++i) items_[i]->assign(*other.items_[i]);
}

}  // namespace Effect
