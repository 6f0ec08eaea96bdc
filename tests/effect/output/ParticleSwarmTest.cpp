// Where the particles of パーティクル出力 stand at a moment: how many are born, how far
// they fly, fall and fade, where their life ends, the spread of their directions, and
// the turn of their emission with the path.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "edit/EditService.h"
#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/output/ParticleOutput.h"
#include "render/ObjectContext.h"

namespace {

using Effect::EffectItemNumber;
using Effect::ParticleOutput;

class ParticleSwarm : public ::testing::Test {
 protected:
  ParticleSwarm() {
    scene_ = edit_.getScene(0);
    scene_->videoRate = 30;
    scene_->videoScale = 1;
    object_ = scene_->createEmptyObject(2, 10, 99);
    set(L"出力頻度", 10);
    set(L"出力速度", 100);
    set(L"拡散角度", 0);
  }
  void set(const wchar_t* name, double value) { output_.item<EffectItemNumber>(name).setValue(0, value); }
  std::vector<ParticleOutput::Particle> at(std::int32_t frame) {
    Render::ObjectContext context;
    context.scene = scene_.get();
    context.object = object_;
    context.frame = frame;
    context.exactFrame = frame;
    return output_.particles(context);
  }

  Edit::EditService edit_;
  std::shared_ptr<Edit::Scene> scene_;
  std::shared_ptr<Edit::Object> object_;
  ParticleOutput output_;
};

TEST_F(ParticleSwarm, ParticlesAreBornAtTheRateAndFlyFallAndFade) {
  auto swarm = at(10 + 30);  // one second: particles 10 (just born) down to 0
  ASSERT_EQ(swarm.size(), 11u);
  EXPECT_EQ(swarm.front().index, 10);
  EXPECT_FLOAT_EQ(swarm.front().position[1], 0.0f);
  EXPECT_NEAR(swarm.back().position[1], 100.0f, 1e-3);  // direction 0 flies down the screen
  EXPECT_NEAR(swarm.back().position[0], 0.0f, 1e-3);

  set(L"重力", 200);
  EXPECT_NEAR(at(40).back().position[1], 200.0f, 1e-3);
  set(L"重力", 0);
  set(L"出力方向", 90);
  EXPECT_NEAR(at(40).back().position[0], -100.0f, 1e-3);

  set(L"生存時間", 0.5);  // ages up to half a second
  EXPECT_EQ(at(40).size(), 6u);
  set(L"生存時間", 0);
  set(L"透過速度", 100);  // gone at one second
  swarm = at(40);
  ASSERT_EQ(swarm.size(), 10u);
  EXPECT_NEAR(swarm.back().opacity, 0.1f, 1e-5);
  set(L"出力頻度", 0);
  EXPECT_TRUE(at(40).empty());
}

TEST_F(ParticleSwarm, DirectionsSpreadTheSameWayEveryTimeAndTurnWithThePath) {
  set(L"拡散角度", 30);
  const auto first = at(40);
  const auto again = at(40);
  bool spread = false;
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_EQ(first[i].position, again[i].position);
    const float reach = std::hypot(first[i].position[0], first[i].position[1]);
    EXPECT_LE(std::fabs(first[i].position[0]), reach * std::sin(15.0f * 3.14159265f / 180.0f) + 1e-3f);
    spread = spread || first[i].position[0] != 0.0f;
  }
  EXPECT_TRUE(spread);

  // An object moving to the right emits to the right when its direction follows the path.
  set(L"拡散角度", 0);
  EffectItemNumber& x = output_.item<EffectItemNumber>(L"X");
  x.setMovement(Effect::findMovement(L"直線移動"), 2);
  x.setValue(0, 0);
  x.setValue(1, 890);  // 10 a frame
  output_.item<Effect::EffectItemCheck>(L"出力方向の基準を移動方向にする").setValue(true);
  const auto particle = at(40).back();  // born at frame 10, where X is 0
  EXPECT_NEAR(particle.position[0], 100.0f, 1e-2);
  EXPECT_NEAR(particle.position[1], 0.0f, 1e-2);
}

TEST(ParticleRandom, IsAPureFunctionOfObjectAndParticle) {
  ParticleOutput::Random a(42, 7), b(42, 7), c(42, 8);
  for (int i = 0; i < 4; ++i) {
    const double value = a.uniform();
    EXPECT_EQ(value, b.uniform());
    EXPECT_GE(value, 0.0);
    EXPECT_LE(value, 1.0);
    EXPECT_NE(value, c.uniform());
  }
}

}  // namespace
