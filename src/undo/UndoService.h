// The history of edits: an edit section opens a record, the edit registers the targets
// it is about to change, and the close of the section keeps what really changed as one
// record of the current scene's history. Menus and shortcuts call undo and redo. A
// global service (System::Singleton) in the editor; tests make one for an edit service
// of their own. Main thread only.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "edit/UndoRecorder.h"
#include "system/ConfigGroup.h"
#include "undo/UndoHistory.h"

namespace Edit {
class EditService;
class Scene;
}  // namespace Edit
namespace Effect {
class EffectItem;
}

namespace Undo {

class UndoService final : public Edit::UndoRecorder {
 public:
  // The singleton form: it comes up before the edit service and is attached to it once
  // that exists.
  UndoService();
  explicit UndoService(Edit::EditService& edit);
  ~UndoService() override;
  UndoService(const UndoService&) = delete;
  UndoService& operator=(const UndoService&) = delete;

  // Connects to the edit service's sections, so that EditSection::recordUndo reaches
  // this history. detach() must run before the edit service goes; the destructor does
  // it for a service that is still attached.
  void attach(Edit::EditService& edit);
  void detach();

  // Opens a record, dropping whatever an earlier record left open.
  void begin();
  // Closes the open record: the items that changed nothing are dropped and, if any is
  // left, the record goes to the front of the current scene's history, whose undone
  // records are lost. Sets `modified`. Nothing happens when no record is open.
  void commit();
  // A record is open (an action, or a drag that spans many sections, is under way).
  bool recording() const noexcept { return recording_; }

  // The registrations: each captures its target's state at once. Outside an open
  // record they do nothing.
  void addObjectUpdate(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectCreate(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectDelete(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectSection(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectGroup(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectEffect(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectFlag(const std::shared_ptr<Edit::Object>& object) override;
  void addObjectLayerRange(const std::shared_ptr<Edit::Object>& object) override;
  void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>& effect) override;
  void addLayerUpdate(const std::shared_ptr<Edit::LayerInfo>& layer) override;
  void addLayerMove(const std::shared_ptr<Edit::LayerInfo>& layer) override;
  void addLayerCreate(const std::shared_ptr<Edit::LayerInfo>& layer) override;
  void addLayerDelete(const std::shared_ptr<Edit::LayerInfo>& layer) override;

  // Take back, or apply again, the next record of the current scene's history, in an
  // edit section of their own.
  void undo();
  void redo();
  // The same for a text box: only when the next record changed nothing but `item`, and
  // without refreshing the settings windows, so the box keeps its focus and caret.
  void undoText(const Effect::EffectItem& item);
  void redoText(const Effect::EffectItem& item);
  bool canUndo() const;
  bool canRedo() const;

  // The project has changes that were not saved.
  bool modified() const noexcept { return modified_; }
  // After a save (or a new or loaded project): remembers where every history stands and
  // clears `modified`. Undo and redo back to exactly these positions clear it again;
  // any other position sets it.
  void markSaved();

  // Records kept per scene, as the configuration says.
  std::int32_t undoMax() const noexcept { return undoMax_; }

 private:
  using HistoryMap = std::map<std::weak_ptr<Edit::Scene>, UndoHistory, std::owner_less<std::weak_ptr<Edit::Scene>>>;

  // The history of the edit service's current scene, made on first use; null when not
  // attached.
  UndoHistory* currentHistory();
  // The same without making one.
  UndoHistory* findHistory();
  const UndoHistory* findHistory() const;
  // Forgets the histories of scenes that are gone (deleted, or replaced by a load).
  void dropLostHistories();
  void updateModified();
  void add(std::unique_ptr<UndoItem> item);
  // Whether the record is a text box's own: one effect item changed and nothing else.
  static bool isTextRecord(const UndoRecord& record, const Effect::EffectItem& item);

  Edit::EditService* edit_ = nullptr;
  System::Config::Group config_;
  std::int32_t undoMax_ = 100;
  bool holdsIniFile_ = false;
  HistoryMap histories_;
  std::vector<std::unique_ptr<UndoItem>> openRecord_;
  bool recording_ = false;
  bool modified_ = false;
  // Cleared when a history that differed from its saved position went with its scene:
  // that difference can no longer be undone.
  bool savedReachable_ = true;
  // Serials are unique among all histories of the service; 0 stands for "no record".
  std::uint64_t nextSerial_ = 1;
};

}  // namespace Undo
