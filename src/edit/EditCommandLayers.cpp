// The commands of the row headers, the jump to a time, and the view switches.
#include <algorithm>

#include "edit/EditCommand.h"
#include "edit/EditCommandSupport.h"
#include "edit/EditPrompt.h"
#include "edit/EditService.h"
#include "edit/Layer.h"
#include "edit/Object.h"
#include "edit/ObjectPlacement.h"
#include "edit/Scene.h"
#include "edit/SceneSelection.h"
#include "edit/UndoRecorder.h"
#include "system/Log.h"

namespace Edit {

using namespace CommandSupport;

namespace {

// The largest row a command accepts, as the rows of a project file are bounded.
constexpr std::int32_t kMaxLayer = 999999;

bool validLayer(std::int32_t layer) { return layer >= 0 && layer <= kMaxLayer; }

}  // namespace

void EditCommand::insertLayer(std::int32_t layer) {
  if (!validLayer(layer)) return;
  System::Log::info(place("insertLayer").c_str(), "insert layer layer=%d", layer);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  scene.createLayer(layer);
  if (UndoRecorder* undo = section.recordUndo()) undo->addLayerCreate(scene.getLayer(layer).info);
  request(section, {Request::Update, Request::Timeline, Request::Time, Request::Object});
}

void EditCommand::deleteLayer(std::int32_t layer) {
  if (!validLayer(layer) || layer >= edit_.currentScene()->layerCount()) return;
  System::Log::info(place("deleteLayer").c_str(), "delete layer layer=%d", layer);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  const Layer& row = scene.getLayer(layer);
  for (const std::shared_ptr<Object>& object : row.objects) {
    if (object->layer != layer) continue;
    if (undo) undo->addObjectDelete(object);
    SceneSelection::drop(scene, *object);
  }
  if (undo) undo->addLayerDelete(row.info);
  scene.deleteLayer(layer);
  request(section, {Request::Update, Request::Timeline, Request::Time, Request::Object});
}

void EditCommand::moveLayer(std::int32_t from, std::int32_t to) {
  if (!validLayer(from) || !validLayer(to) || from == to) return;
  System::Log::info(place("moveLayer").c_str(), "move layer layer=%d to=%d", from, to);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  // The rows that make way follow from the moved row's place when it is undone.
  if (UndoRecorder* undo = section.recordUndo()) undo->addLayerMove(scene.addLayers(from).info);
  scene.moveLayer(from, to);
  request(section, {Request::Update, Request::Timeline, Request::Time, Request::Object});
}

void EditCommand::changeLayerInfo(std::int32_t layer, const char* command, const char* format, int value,
                                  const std::function<void(LayerInfo& info)>& change) {
  System::Log::info(place(command).c_str(), format, layer, value);
  EditSection section(edit_);
  const std::shared_ptr<LayerInfo>& info = section.scene()->addLayers(layer).info;
  if (UndoRecorder* undo = section.recordUndo()) undo->addLayerUpdate(info);
  change(*info);
  request(section, {Request::Timeline, Request::Time, Request::Object});
}

void EditCommand::setLayerHide(std::int32_t layer, bool hide) {
  if (!validLayer(layer)) return;
  changeLayerInfo(layer, "setLayerHide", "set layer hide layer=%d hide=%d", hide ? 1 : 0,
                  [hide](LayerInfo& info) { info.hide = hide; });
}

void EditCommand::setLayerLock(std::int32_t layer, bool lock) {
  if (!validLayer(layer)) return;
  changeLayerInfo(layer, "setLayerLock", "set layer lock layer=%d lock=%d", lock ? 1 : 0,
                  [lock](LayerInfo& info) { info.lock = lock; });
}

void EditCommand::renameLayer(std::int32_t layer) {
  if (!validLayer(layer)) return;
  const std::optional<std::wstring> name =
      prompt_.askText(L"レイヤー名を変更", edit_.currentScene()->getLayer(layer).info->name);
  if (!name) return;
  changeLayerInfo(layer, "renameLayer", "rename layer layer=%d length=%d", static_cast<int>(name->size()),
                  [&name](LayerInfo& info) { info.name = *name; });
}

void EditCommand::toggleOtherLayersHide(std::int32_t layer) {
  const Scene& current = *edit_.currentScene();
  const std::int32_t rows = current.layerCount();
  if (!validLayer(layer) || rows < 2) return;
  bool allOthersHidden = true;
  for (std::int32_t row = 0; row < rows; ++row) {
    if (row != layer && !current.getLayer(row).info->hide) allOthersHidden = false;
  }
  System::Log::info(place("toggleOtherLayersHide").c_str(), "set other layers hide layer=%d hide=%d", layer,
                    allOthersHidden ? 0 : 1);
  EditSection section(edit_);
  Scene& scene = *section.scene();
  UndoRecorder* undo = section.recordUndo();
  for (std::int32_t row = 0; row < rows; ++row) {
    if (row == layer) continue;
    const std::shared_ptr<LayerInfo>& info = scene.getLayer(row).info;
    if (undo) undo->addLayerUpdate(info);
    info->hide = !allOthersHidden;
  }
  request(section, {Request::Timeline, Request::Time, Request::Object});
}

void EditCommand::jumpToFrame() {
  const Scene& scene = *edit_.currentScene();
  const std::optional<std::int32_t> frame = prompt_.askFrameLength(L"指定時間に移動", scene.videoRate, scene.videoScale,
                                                                   scene.cursorFrame, ObjectPlacement::kMaxInsertLength);
  if (!frame) return;
  EditSection section(edit_);
  section.scene()->cursorFrame = std::clamp(*frame, 0, ObjectPlacement::kMaxInsertLength);
  section.request(Request::Frame);
}

namespace {

struct ViewCommand {
  ViewOptions::Option option;
  const char* name;
  const char* format;
  bool section;  // the preview's switches redraw through a section's close
};

constexpr ViewCommand kViewCommands[] = {
    {ViewOptions::Option::GridXY, "setGridXY", "set xy grid enable=%d", true},
    {ViewOptions::Option::CameraGrid, "setCameraGrid", "set camera grid enable=%d", true},
    {ViewOptions::Option::CameraFreeView, "setCameraFreeView", "set camera free view enable=%d", true},
    {ViewOptions::Option::VisibleClippingObject, "setVisibleClippingObjectView", "set visible clipping object enable=%d",
     true},
    {ViewOptions::Option::LevelMeter, "setVisibleLevelMeter", "set visible level meter enable=%d", false},
    {ViewOptions::Option::TempoGrid, "setTempoGrid", "set tempo grid enable=%d", false},
    {ViewOptions::Option::Waveform, "setWaveform", "set waveform enable=%d", false},
};

}  // namespace

void EditCommand::setViewOption(ViewOptions::Option option, bool enable) {
  const ViewCommand& command = *std::find_if(std::begin(kViewCommands), std::end(kViewCommands),
                                             [option](const ViewCommand& each) { return each.option == option; });
  System::Log::info(place(command.name).c_str(), command.format, enable ? 1 : 0);
  ViewOptions& options = edit_.viewOptions();
  options.flag(option) = enable;
  if (options.changed) options.changed(option);
  if (!command.section) return;
  EditSection section(edit_);
  request(section, {Request::Time, Request::Object});
}

}  // namespace Edit
