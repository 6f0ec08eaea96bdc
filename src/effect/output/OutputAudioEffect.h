// What the output effects that play sound share: adding a block into the mix of the
// frame at the gains the context carries, after the gains of the sound group in force.
// Runs on the audio object thread, after the group's own control task.
#pragma once

#include <memory>

namespace Media {
class AudioBuffer;
}
namespace Render {
struct ObjectContext;
}

namespace Effect {

class OutputAudioEffect {
 public:
  // target.left[i] += gainLeft × block.left[i], the same on the right, over the shorter
  // of the two; a mono block feeds both sides. No target or no block mixes nothing.
  static void mix(Render::ObjectContext& context, const Media::AudioBuffer& block);
  // The gains of volume and pan in percent: the volume scales both sides, a pan to one
  // side lowers the other (pan 100 silences it).
  static void applyVolumeAndPan(float& left, float& right, double volume, double pan);

 protected:
  OutputAudioEffect() = default;
  ~OutputAudioEffect() = default;
};

}  // namespace Effect
