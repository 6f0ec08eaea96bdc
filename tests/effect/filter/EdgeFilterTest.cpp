#include <gtest/gtest.h>

#include "effect/filter/EdgeFilter.h"
#include "effect/item/EffectItemCheck.h"

namespace {

constexpr const wchar_t* kLuma = L"輝度エッジを抽出";
constexpr const wchar_t* kAlpha = L"透明度エッジを抽出";

class EdgeFilterTest : public ::testing::Test {
 protected:
  Effect::EffectItemCheck& luma() { return filter.item<Effect::EffectItemCheck>(kLuma); }
  Effect::EffectItemCheck& alpha() { return filter.item<Effect::EffectItemCheck>(kAlpha); }

  // What the settings window does when the user clicks a check: set it, then tell the effect.
  Effect::ItemEvent change(Effect::EffectItemCheck& check, bool on, bool& handled) {
    check.setValue(on);
    Effect::ItemEvent event;
    event.type = Effect::ItemEvent::ItemChanged;
    event.item = &check;
    handled = filter.itemEvent(event);
    return event;
  }

  Effect::EdgeFilter filter;
};

TEST_F(EdgeFilterTest, SwitchingOneOnSwitchesTheOtherOff) {
  bool handled = false;
  luma().setValue(true);
  Effect::ItemEvent event = change(alpha(), true, handled);
  EXPECT_TRUE(handled);
  EXPECT_TRUE(event.redraw);
  EXPECT_TRUE(alpha().value());
  EXPECT_FALSE(luma().value());

  event = change(luma(), true, handled);
  EXPECT_TRUE(handled);
  EXPECT_TRUE(event.redraw);
  EXPECT_TRUE(luma().value());
  EXPECT_FALSE(alpha().value());
}

TEST_F(EdgeFilterTest, NoConflictLeavesBothAlone) {
  bool handled = true;
  Effect::ItemEvent event = change(luma(), true, handled);
  EXPECT_FALSE(handled);
  EXPECT_FALSE(event.redraw);
  EXPECT_TRUE(luma().value());
  EXPECT_FALSE(alpha().value());

  // Both on (as a loaded file may hold them) and one switched off: nothing to resolve.
  alpha().setValue(true);
  luma().setValue(true);
  event = change(alpha(), false, handled);
  EXPECT_FALSE(handled);
  EXPECT_FALSE(event.redraw);
  EXPECT_TRUE(luma().value());
}

TEST_F(EdgeFilterTest, IgnoresOtherItemsAndOtherEvents) {
  luma().setValue(true);
  alpha().setValue(true);

  Effect::ItemEvent other;
  other.type = Effect::ItemEvent::ItemChanged;
  other.item = filter.findItem(L"強さ");
  EXPECT_FALSE(filter.itemEvent(other));

  Effect::ItemEvent split;
  split.type = Effect::ItemEvent::Split;
  split.item = &luma();
  EXPECT_FALSE(filter.itemEvent(split));

  EXPECT_FALSE(other.redraw);
  EXPECT_FALSE(split.redraw);
  EXPECT_TRUE(luma().value());
  EXPECT_TRUE(alpha().value());
}

}  // namespace
