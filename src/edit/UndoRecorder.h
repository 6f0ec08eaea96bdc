// What the edit operations tell the undo history before they change something: each
// call names a target whose state is captured now and compared again when the edit
// section closes, so an operation registers generously and the history keeps only what
// changed. The undo service implements it; operations take it as a pointer that may be
// null where no history is kept (loading, tests of the placement rules).
#pragma once

#include <memory>

namespace Effect {
class EffectBase;
}

namespace Edit {

struct LayerInfo;
class Object;

class UndoRecorder {
 public:
  virtual ~UndoRecorder() = default;

  // Layer, frames and section point positions.
  virtual void addObjectUpdate(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectCreate(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectDelete(const std::shared_ptr<Object>& object) = 0;
  // The section points and, with them, the key values of every effect.
  virtual void addObjectSection(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectGroup(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectEffect(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectFlag(const std::shared_ptr<Object>& object) = 0;
  virtual void addObjectLayerRange(const std::shared_ptr<Object>& object) = 0;
  virtual void addEffectUpdate(const std::shared_ptr<Effect::EffectBase>& effect) = 0;
  // A row is known by its info, which survives the row.
  virtual void addLayerUpdate(const std::shared_ptr<LayerInfo>& layer) = 0;
  virtual void addLayerMove(const std::shared_ptr<LayerInfo>& layer) = 0;
  virtual void addLayerCreate(const std::shared_ptr<LayerInfo>& layer) = 0;
  virtual void addLayerDelete(const std::shared_ptr<LayerInfo>& layer) = 0;
};

}  // namespace Edit
