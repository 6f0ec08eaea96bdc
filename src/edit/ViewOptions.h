// The switches of the views that the edit commands set: guides drawn over the preview
// and what the timeline shows. They belong to no project and are never undone; the
// preview and the timeline read them when they draw, and the listener tells them to.
#pragma once

#include <functional>

namespace Edit {

struct ViewOptions {
  enum class Option {
    GridXY,                 // the XY grid over the preview
    CameraGrid,             // the grid of the camera control
    CameraFreeView,         // the free view of the camera control
    VisibleClippingObject,  // clipping objects drawn as outlines
    LevelMeter,             // the level meter beside the preview
    TempoGrid,              // the tempo grid of the timeline
    Waveform,               // audio waveforms on the timeline
  };

  bool gridXY = false;
  bool cameraGrid = false;
  bool cameraFreeView = false;
  bool visibleClippingObject = false;
  bool levelMeter = false;
  bool tempoGrid = false;
  bool waveform = false;

  bool& flag(Option option) noexcept {
    switch (option) {
      case Option::GridXY: return gridXY;
      case Option::CameraGrid: return cameraGrid;
      case Option::CameraFreeView: return cameraFreeView;
      case Option::VisibleClippingObject: return visibleClippingObject;
      case Option::LevelMeter: return levelMeter;
      case Option::TempoGrid: return tempoGrid;
      case Option::Waveform: break;
    }
    return waveform;
  }

  // Told after an option changed, so the view that shows it lays out and redraws.
  std::function<void(Option option)> changed;
};

}  // namespace Edit
