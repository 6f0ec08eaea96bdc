#include "undo/UndoService.h"

#include <memory>
#include <utility>

#include "edit/EditSection.h"
#include "edit/EditService.h"
#include "edit/Layer.h"
#include "edit/LayerUndoStates.h"
#include "edit/Object.h"
#include "edit/ObjectUndoStates.h"
#include "edit/Scene.h"
#include "effect/EffectBase.h"
#include "effect/EffectUndoUpdate.h"
#include "system/Log.h"
#include "system/MainIniFile.h"
#include "system/Singleton.h"
#include "undo/UndoItemTemplate.h"

namespace Undo {

namespace {

using Request = Edit::EditSection::Request;
using EffectItemState = UndoItemTemplate<Effect::EffectBase, Effect::EffectUndoUpdate>;

template <class State, class Target, class... Args>
std::unique_ptr<UndoItemTemplate<Target, State>> makeItem(const std::shared_ptr<Target>& target,
                                                          const Args&... stateArgs) {
  return std::make_unique<UndoItemTemplate<Target, State>>(target, stateArgs...);
}

}  // namespace

UndoService::UndoService() {
  // The group stores into the main ini at the end, so the ini must outlive it.
  if (System::MainIniFile::get()) {
    System::Singleton<System::MainIniFile>::acquire();
    holdsIniFile_ = true;
  }
  config_.setSection("Undo");
  config_.add<System::Config::Int>("UndoMax", &undoMax_, 100);
  config_.load(System::MainIniFile::get());
}

UndoService::UndoService(Edit::EditService& edit) : UndoService() { attach(edit); }

UndoService::~UndoService() {
  detach();
  config_.store();
  config_.setSection("");
  if (holdsIniFile_) System::Singleton<System::MainIniFile>::release();
}

void UndoService::attach(Edit::EditService& edit) {
  detach();
  edit_ = &edit;
  edit.setUndoHooks({this, [this] { begin(); }, [this] { commit(); }});
}

void UndoService::detach() {
  if (!edit_) return;
  edit_->setUndoHooks({});
  edit_ = nullptr;
}

void UndoService::begin() {
  recording_ = true;
  openRecord_.clear();
}

void UndoService::commit() {
  if (!recording_) return;
  recording_ = false;
  std::vector<std::unique_ptr<UndoItem>> items = std::move(openRecord_);
  openRecord_.clear();
  UndoRecord record;
  for (std::unique_ptr<UndoItem>& item : items) {
    if (item->commit()) record.items.push_back(std::move(item));
  }
  if (record.items.empty()) return;
  UndoHistory* history = currentHistory();
  if (!history) return;
  dropLostHistories();
  record.serial = nextSerial_++;
  history->push(std::move(record), undoMax_);
  modified_ = true;
}

void UndoService::add(std::unique_ptr<UndoItem> item) { openRecord_.push_back(std::move(item)); }

void UndoService::addObjectUpdate(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoUpdate>(object));
}

void UndoService::addObjectCreate(const std::shared_ptr<Edit::Object>& object) {
  if (!recording_ || !object) return;
  // The command has already put the object in the scene; before it, it was not there.
  auto item = makeItem<Edit::ObjectUndoCreateDelete>(object);
  item->before().layer = -1;
  add(std::move(item));
}

void UndoService::addObjectDelete(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoCreateDelete>(object));
}

void UndoService::addObjectSection(const std::shared_ptr<Edit::Object>& object) {
  if (!recording_ || !object) return;
  add(makeItem<Edit::ObjectUndoSection>(object));
  // Every numeric item has one key value per section point, so all of them change too.
  for (const std::shared_ptr<Effect::EffectBase>& effect : object->effects) {
    add(makeItem<Effect::EffectUndoUpdate>(effect));
  }
}

void UndoService::addObjectGroup(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoGroup>(object));
}

void UndoService::addObjectEffect(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoEffect>(object));
}

void UndoService::addObjectFlag(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoFlag>(object));
}

void UndoService::addObjectLayerRange(const std::shared_ptr<Edit::Object>& object) {
  if (recording_ && object) add(makeItem<Edit::ObjectUndoLayerRange>(object));
}

void UndoService::addEffectUpdate(const std::shared_ptr<Effect::EffectBase>& effect) {
  if (recording_ && effect) add(makeItem<Effect::EffectUndoUpdate>(effect));
}

void UndoService::addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>& layer) {
  if (recording_ && layer) add(makeItem<Edit::LayerUndoUpdate>(layer));
}

void UndoService::addLayerMove(const std::shared_ptr<Edit::LayerInfo>& layer) {
  if (recording_ && layer) add(makeItem<Edit::LayerUndoMove>(layer));
}

void UndoService::addLayerCreate(const std::shared_ptr<Edit::LayerInfo>& layer) {
  if (!recording_ || !layer) return;
  const std::weak_ptr<const Edit::LayerObjectManager> rows = edit_ ? edit_->currentScene() : nullptr;
  // The row has just been made; before the command it did not exist.
  auto item = makeItem<Edit::LayerUndoCreateDelete>(layer, rows);
  item->before().index = -1;
  add(std::move(item));
}

void UndoService::addLayerDelete(const std::shared_ptr<Edit::LayerInfo>& layer) {
  if (!recording_ || !layer) return;
  const std::weak_ptr<const Edit::LayerObjectManager> rows = edit_ ? edit_->currentScene() : nullptr;
  add(makeItem<Edit::LayerUndoCreateDelete>(layer, rows));
}

void UndoService::undo() {
  UndoHistory* history = findHistory();
  if (!history || !history->canUndo()) return;
  UndoRecord& record = *history->nextUndo();
  history->stepBack();
  System::Log::info("Undo::UndoService::undo", "Undo: %d", static_cast<int>(record.items.size()));
  {
    Edit::EditSection section(*edit_);
    section.request(Request::Time);
    section.request(Request::Object);
    for (auto item = record.items.rbegin(); item != record.items.rend(); ++item) (*item)->restoreBefore(section);
  }
  updateModified();
}

void UndoService::redo() {
  UndoHistory* history = findHistory();
  if (!history || !history->canRedo()) return;
  history->stepForward();
  UndoRecord& record = *history->nextUndo();
  System::Log::info("Undo::UndoService::redo", "Redo: %d", static_cast<int>(record.items.size()));
  {
    Edit::EditSection section(*edit_);
    section.request(Request::Time);
    section.request(Request::Object);
    for (const std::unique_ptr<UndoItem>& item : record.items) item->restoreAfter(section);
  }
  updateModified();
}

bool UndoService::isTextRecord(const UndoRecord& record, const Effect::EffectItem& item) {
  if (record.items.size() != 1) return false;
  const auto* state = dynamic_cast<const EffectItemState*>(record.items.front().get());
  if (!state) return false;
  const auto& items = state->target()->items();
  for (std::size_t index = 0; index < items.size(); ++index) {
    if (items[index].get() == &item) return state->before().holdsOnly(index) && state->after().holdsOnly(index);
  }
  return false;
}

void UndoService::undoText(const Effect::EffectItem& item) {
  UndoHistory* history = findHistory();
  if (!history || !history->canUndo() || !isTextRecord(*history->nextUndo(), item)) return;
  const auto& state = static_cast<const EffectItemState&>(*history->nextUndo()->items.front());
  history->stepBack();
  System::Log::info("Undo::UndoService::undoText", "UndoText: %d", 1);
  {
    Edit::EditSection section(*edit_);
    section.request(Request::Time);
    section.request(Request::Object);
    state.before().apply(*state.target());
  }
  updateModified();
}

void UndoService::redoText(const Effect::EffectItem& item) {
  UndoHistory* history = findHistory();
  if (!history || !history->canRedo() || !isTextRecord(*history->nextRedo(), item)) return;
  history->stepForward();
  const auto& state = static_cast<const EffectItemState&>(*history->nextUndo()->items.front());
  System::Log::info("Undo::UndoService::redoText", "Redo: %d", 1);
  {
    Edit::EditSection section(*edit_);
    section.request(Request::Time);
    section.request(Request::Object);
    state.after().apply(*state.target());
  }
  updateModified();
}

bool UndoService::canUndo() const {
  const UndoHistory* history = findHistory();
  return history && history->canUndo();
}

bool UndoService::canRedo() const {
  const UndoHistory* history = findHistory();
  return history && history->canRedo();
}

void UndoService::markSaved() {
  dropLostHistories();
  for (auto& [scene, history] : histories_) history.markSaved();
  savedReachable_ = true;
  modified_ = false;
}

UndoHistory* UndoService::currentHistory() {
  if (!edit_ || !edit_->currentScene()) return nullptr;
  return &histories_[std::weak_ptr<Edit::Scene>(edit_->currentScene())];
}

UndoHistory* UndoService::findHistory() { return const_cast<UndoHistory*>(std::as_const(*this).findHistory()); }

const UndoHistory* UndoService::findHistory() const {
  if (!edit_ || !edit_->currentScene()) return nullptr;
  const auto found = histories_.find(std::weak_ptr<Edit::Scene>(edit_->currentScene()));
  return found == histories_.end() ? nullptr : &found->second;
}

void UndoService::dropLostHistories() {
  std::erase_if(histories_, [this](const auto& entry) {
    if (!entry.first.expired()) return false;
    if (!entry.second.atSaved()) savedReachable_ = false;
    return true;
  });
}

void UndoService::updateModified() {
  dropLostHistories();
  modified_ = !savedReachable_;
  for (const auto& [scene, history] : histories_) modified_ = modified_ || !history.atSaved();
}

}  // namespace Undo
