// パーティクル出力: repeats the object's image as a swarm of particles, born at a steady
// rate and flying out from the position, all drawn in one call as one geometry.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "effect/EffectBase.h"
#include "effect/output/OutputShaderEffect.h"

namespace Effect {

class ParticleOutput final : public EffectInstance<ParticleOutput>, public OutputShaderEffect {
 public:
  static const EffectInfo kInfo;
  // The newest particles a frame shows at most.
  static constexpr std::int64_t kMostParticles = 10000;

  ParticleOutput();

  void getOutputView(Render::ObjectContext& context, Render::ObjectView& view) override;
  void outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target, Media::ResourceBuffer& image) override;
  void createCommonResource() override { createOutputResource(); }
  void shareCommonResource(const EffectBase& prototype) override { shareOutputResource(prototype); }

  // One particle as the frame shows it, relative to the object's position.
  struct Particle {
    std::int64_t index = 0;  // its number in the order of birth
    std::array<float, 3> position{};
    float scale = 1.0f;  // of the image
    // Turned by `angle` degrees about `axis` (z unless randomly turned in 3D).
    std::array<float, 3> axis{0.0f, 0.0f, 1.0f};
    float angle = 0.0f;
    float opacity = 1.0f;
  };
  // The particles alive at the context's moment, the newest first. Pure: the same object
  // and moment give the same swarm, so any frame renders alone.
  std::vector<Particle> particles(const Render::ObjectContext& context) const;

  // The random sequence of particle `index` of the object whose seed is `seed`.
  class Random {
   public:
    Random(std::uint64_t seed, std::uint64_t index);
    // The next value, from 0 to 1.
    double uniform();

   private:
    std::uint64_t state_;
  };
};

}  // namespace Effect
