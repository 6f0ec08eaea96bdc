// The control effects answer how many layers they govern from their own item, and a
// new time control plays its range forward once.
#include <gtest/gtest.h>

#include <memory>

#include "effect/item/EffectItemNumber.h"
#include "effect/movement/MovementBase.h"
#include "effect/output/CameraControl.h"
#include "effect/output/GroupAudioControl.h"
#include "effect/output/GroupControl.h"
#include "effect/output/TimeControl.h"

namespace {

template <class T>
class LayerRangeTest : public ::testing::Test {};

using ControlEffects =
    ::testing::Types<Effect::GroupControl, Effect::GroupAudioControl, Effect::CameraControl, Effect::TimeControl>;
TYPED_TEST_SUITE(LayerRangeTest, ControlEffects);

TYPED_TEST(LayerRangeTest, FollowsItsOwnItemAcrossInstances) {
  TypeParam prototype;
  EXPECT_EQ(prototype.getLayerRange(), 0);

  // Each instance reads its own item, not the one of the effect it was made from.
  const std::shared_ptr<Effect::EffectBase> made = prototype.createInstance();
  made->findItem(L"対象レイヤー数")->fromString("7");
  EXPECT_EQ(made->getLayerRange(), 7);
  EXPECT_EQ(prototype.getLayerRange(), 0);

  // Loading values into an existing instance, as undo and defaults do, is seen too.
  prototype.setItemData(*made);
  EXPECT_EQ(prototype.getLayerRange(), 7);
}

TEST(TimeControlTest, InitializePlaysForwardOnceOverTheObject) {
  Effect::TimeControl effect;
  auto& position = effect.item<Effect::EffectItemNumber>(L"位置");
  position.setValue(0, 42.5);

  effect.initialize();

  EXPECT_EQ(position.movement().name(), L"直線移動");
  EXPECT_EQ(position.values(), (std::vector<std::int32_t>{0, 100000}));
  // What a project file holds for it: both keys, the movement and no easing.
  EXPECT_EQ(position.toString(), "0.000,100.000,直線移動,0");
}

}  // namespace
