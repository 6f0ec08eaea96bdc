#include "edit/LayerUndoStates.h"

#include "edit/EditSection.h"
#include "edit/Layer.h"
#include "edit/LayerObjectManager.h"
#include "edit/Scene.h"

namespace Edit {

namespace {

using Request = EditSection::Request;

// A row's change moves or hides objects: the timeline, the time settings and the
// object settings all have to look again.
void requestRowChange(EditSection& section) {
  section.request(Request::Time);
  section.request(Request::Object);
  section.request(Request::Timeline);
}

bool standsInScene(const LayerObjectManager& rows, const LayerInfo& info) {
  return info.index >= 0 && info.index < rows.layerCount() && rows.getLayer(info.index).info.get() == &info;
}

}  // namespace

void LayerUndoUpdate::store(const LayerInfo& info) {
  hide = info.hide;
  lock = info.lock;
  name = info.name;
}

void LayerUndoUpdate::restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const {
  info->hide = hide;
  info->lock = lock;
  info->name = name;
  requestRowChange(section);
}

void LayerUndoMove::store(const LayerInfo& info) { index = info.index; }

void LayerUndoMove::restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const {
  Scene& scene = *section.scene();
  if (!standsInScene(scene, *info)) return;
  scene.moveLayer(info->index, index);
  section.request(Request::Update);
  requestRowChange(section);
}

void LayerUndoCreateDelete::store(const LayerInfo& info) {
  const std::shared_ptr<const LayerObjectManager> scene = rows.lock();
  index = scene && standsInScene(*scene, info) ? info.index : -1;
}

void LayerUndoCreateDelete::restore(const std::shared_ptr<LayerInfo>& info, EditSection& section) const {
  Scene& scene = *section.scene();
  if (index >= 0) {
    if (standsInScene(scene, *info)) return;
    info->index = index;
    scene.createLayer(index, info);
  } else {
    if (!standsInScene(scene, *info)) return;
    scene.deleteLayer(info->index);
  }
  section.request(Request::Update);
  requestRowChange(section);
}

}  // namespace Edit
