// What the drawing outputs add to an object's view record: the standard drawing's
// position, turn, centre, zoom, aspect, transparency and blend mode, and the whole-pixel
// output's rounded position. No GPU: the view is the whole of what they decide here.
#include <gtest/gtest.h>

#include <memory>

#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/output/MovieOutput.h"
#include "effect/output/SimpleOutput.h"
#include "effect/output/VideoOutput.h"
#include "render/ObjectContext.h"

namespace {

using Effect::EffectItemNumber;

class OutputViewTest : public ::testing::Test {
 protected:
  OutputViewTest() {
    context_.object = object_;
    context_.view.x = 5.0f;
    context_.view.zoomX = 2.0f;
    context_.view.alpha = 0.5f;
  }
  template <class E>
  static void set(E& effect, const wchar_t* name, double value) {
    effect.template item<EffectItemNumber>(name).setValue(0, value);
  }
  template <class E>
  Render::ObjectView viewOf(E& effect) {
    Render::ObjectView view;
    effect.getOutputView(context_, view);
    return view;
  }

  std::shared_ptr<Edit::Object> object_ = std::make_shared<Edit::Object>();
  Render::ObjectContext context_;
};

TEST_F(OutputViewTest, StandardDrawingAddsToTheContextsViewInItsOrder) {
  Effect::VideoOutput effect;
  set(effect, L"X", 10);
  set(effect, L"Y", -20);
  set(effect, L"Z", 30);
  set(effect, L"中心X", 4);
  set(effect, L"Z軸回転", 45);
  set(effect, L"X軸回転", -90);
  set(effect, L"拡大率", 50);
  set(effect, L"縦横比", 40);
  set(effect, L"透明度", 25);
  const Render::ObjectView view = viewOf(effect);
  EXPECT_FLOAT_EQ(view.x, 15.0f);
  EXPECT_FLOAT_EQ(view.y, -20.0f);
  EXPECT_FLOAT_EQ(view.z, 30.0f);
  EXPECT_FLOAT_EQ(view.centreX, 4.0f);
  EXPECT_FLOAT_EQ(view.rotationZ, 45.0f);
  EXPECT_FLOAT_EQ(view.rotationX, -90.0f);
  // The aspect narrows x after the zoom: 2 * 0.5 * 0.6; y only zoomed.
  EXPECT_FLOAT_EQ(view.zoomX, 0.6f);
  EXPECT_FLOAT_EQ(view.zoomY, 0.5f);
  EXPECT_FLOAT_EQ(view.zoomZ, 0.5f);
  EXPECT_FLOAT_EQ(view.alpha, 0.375f);
  EXPECT_EQ(view.blend, 0);
}

TEST_F(OutputViewTest, FullAspectLeavesNoWidthOrNoHeightAndFullTransparencyNoAlpha) {
  Effect::VideoOutput effect;
  set(effect, L"縦横比", 100);
  set(effect, L"透明度", 100);
  Render::ObjectView view = viewOf(effect);
  EXPECT_EQ(view.zoomX, 0.0f);
  EXPECT_EQ(view.zoomY, 1.0f);
  EXPECT_EQ(view.alpha, 0.0f);
  set(effect, L"縦横比", -100);
  view = viewOf(effect);
  EXPECT_EQ(view.zoomX, 2.0f);
  EXPECT_EQ(view.zoomY, 0.0f);
}

TEST_F(OutputViewTest, PlacedPiecesKeepOnlyPositionAlphaAndBlend) {
  Effect::MovieOutput effect;
  set(effect, L"X", 1);
  set(effect, L"Y軸回転", 30);
  set(effect, L"中心Y", 8);
  set(effect, L"拡大率", 300);
  set(effect, L"縦横比", -50);
  set(effect, L"透明度", 50);
  effect.item<Effect::EffectItemSelect>(L"合成モード").setValue(3);
  context_.piecesPlaced = true;
  const Render::ObjectView view = viewOf(effect);
  EXPECT_EQ(view.x, 6.0f);
  EXPECT_EQ(view.rotationY, 0.0f);
  EXPECT_EQ(view.centreY, 0.0f);
  EXPECT_EQ(view.zoomX, 2.0f);
  EXPECT_EQ(view.zoomY, 1.0f);
  EXPECT_FLOAT_EQ(view.alpha, 0.25f);
  EXPECT_EQ(view.blend, 3);
}

TEST_F(OutputViewTest, BlendModeZeroKeepsTheContextsModeAndOthersReplaceIt) {
  Effect::VideoOutput effect;
  auto& blend = effect.item<Effect::EffectItemSelect>(L"合成モード");
  context_.view.blend = 4;
  EXPECT_EQ(viewOf(effect).blend, 4);
  blend.setValue(12);
  EXPECT_EQ(viewOf(effect).blend, 12);
}

TEST_F(OutputViewTest, WholePixelOutputRoundsItsPositionBeforeAddingIt) {
  Effect::SimpleOutput effect;
  set(effect, L"X", 1.5);
  set(effect, L"Y", -1.5);
  set(effect, L"拡大率", 200);
  set(effect, L"透明度", 50);
  context_.view.x = 0.25f;
  Render::ObjectView view = viewOf(effect);
  EXPECT_EQ(view.x, 2.25f);
  EXPECT_EQ(view.y, -2.0f);
  EXPECT_EQ(view.zoomX, 4.0f);
  EXPECT_EQ(view.zoomY, 2.0f);
  EXPECT_FLOAT_EQ(view.alpha, 0.25f);
  context_.piecesPlaced = true;
  view = viewOf(effect);
  EXPECT_EQ(view.zoomX, 2.0f);
  EXPECT_EQ(view.zoomY, 1.0f);
}

}  // namespace
