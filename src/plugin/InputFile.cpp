#include "plugin/InputFile.h"

#include <algorithm>
#include <cmath>

#include "system/Exception.h"

namespace Plugin {

std::shared_ptr<Media::ImageBuffer> InputFile::readVideo(std::int32_t) {
  throw System::NoteException("Plugin::InputFile::readVideo", "not implement.");
}

std::shared_ptr<Media::AudioBlockBuffer> InputFile::readAudio(std::int32_t) {
  throw System::NoteException("Plugin::InputFile::readAudio", "not implement.");
}

std::int32_t InputFile::timeToFrame(double seconds) const {
  if (frameCount <= 0 || scale == 0) return 0;
  // std::round rounds halves away from zero.
  const double frame = std::round(static_cast<double>(rate) * seconds / static_cast<double>(scale));
  return static_cast<std::int32_t>(std::clamp(frame, 0.0, static_cast<double>(frameCount - 1)));
}

}  // namespace Plugin
