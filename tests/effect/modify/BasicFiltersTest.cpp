// The four basic filters change where and how the object lands, not its pixels: what
// they leave in the context's view is what the output then adds to.
#include <gtest/gtest.h>

#include <memory>

#include "edit/Object.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/modify/BasicAlpha.h"
#include "effect/modify/BasicAngle.h"
#include "effect/modify/BasicMove.h"
#include "effect/modify/BasicScale.h"
#include "effect/output/VideoOutput.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"

namespace {

using Effect::EffectItemNumber;

template <class E>
void set(E& effect, const wchar_t* name, double value) {
  effect.template item<EffectItemNumber>(name).setValue(0, value);
}

TEST(BasicFilters, ChangeTheViewThatTheOutputAddsTo) {
  Render::ObjectContext context;
  context.object = std::make_shared<Edit::Object>();
  Effect::BasicMove move;
  set(move, L"X", 10);
  set(move, L"Z", -5);
  Effect::BasicScale scale;
  set(scale, L"拡大率", 200);
  set(scale, L"Y", 50);
  Effect::BasicAlpha alpha;
  set(alpha, L"透明度", 25);
  Effect::BasicAngle angle;
  set(angle, L"Z", 30);
  for (Effect::EffectBase* filter : std::initializer_list<Effect::EffectBase*>{&move, &scale, &alpha, &angle}) {
    EXPECT_FALSE(filter->filterVideo(context, nullptr));  // the image passes as it came
  }
  Effect::VideoOutput output;
  set(output, L"X", 5);
  set(output, L"Z軸回転", 15);
  Render::ObjectView view;
  output.getOutputView(context, view);
  EXPECT_FLOAT_EQ(view.x, 15.0f);
  EXPECT_FLOAT_EQ(view.z, -5.0f);
  EXPECT_FLOAT_EQ(view.zoomX, 2.0f);
  EXPECT_FLOAT_EQ(view.zoomY, 1.0f);
  EXPECT_FLOAT_EQ(view.alpha, 0.75f);
  EXPECT_FLOAT_EQ(view.rotationZ, 45.0f);
}

}  // namespace
