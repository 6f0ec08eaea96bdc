#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "effect/ItemEvent.h"
#include "effect/item/EffectItemSelect.h"
#include "effect/modify/SceneChange.h"
#include "effect/modify/TransitionList.h"
#include "system/FileName.h"
#include "system/Text.h"

namespace {

using Effect::SceneChange;

// The items that depend on the transition, in table order.
const std::vector<std::wstring> kDependents{L"角度", L"分割数", L"ぼかし", L"縦方向", L"反転", L"縦横比固定"};

class SceneChangeTest : public ::testing::Test {
 protected:
  void SetUp() override { Effect::TransitionList::reset(); }
  void TearDown() override { Effect::TransitionList::reset(); }

  // The names of the dependent items that are shown.
  static std::vector<std::wstring> shown(const SceneChange& effect) {
    std::vector<std::wstring> names;
    for (const std::wstring& name : kDependents) {
      if (effect.findItem(name)->visible()) names.push_back(name);
    }
    return names;
  }

  static void choose(SceneChange& effect, std::int32_t index) {
    effect.item<Effect::EffectItemSelect>(L"種類").setValue(index);
  }
};

TEST_F(SceneChangeTest, UpdateItemsShowsWhatTheTransitionUses) {
  SceneChange effect;
  using Names = std::vector<std::wstring>;

  choose(effect, 3);  // スライス
  effect.updateItems();
  EXPECT_EQ(shown(effect), (Names{L"分割数", L"縦方向", L"反転"}));

  choose(effect, 5);  // スライド
  effect.updateItems();
  EXPECT_EQ(shown(effect), (Names{L"角度", L"反転"}));

  choose(effect, 8);  // 縮小回転
  effect.updateItems();
  EXPECT_EQ(shown(effect), (Names{L"反転"}));

  // The first wipe, right behind the transitions.
  choose(effect, 13);
  effect.updateItems();
  EXPECT_EQ(shown(effect), (Names{L"反転", L"縦横比固定"}));

  // Back to one that uses nothing hides what the wipe showed.
  choose(effect, 12);  // ぼかし
  effect.updateItems();
  EXPECT_TRUE(shown(effect).empty());
}

TEST_F(SceneChangeTest, InitializeHidesWhatTheDefaultTransitionDoesNotUse) {
  SceneChange effect;
  // Built from the table, every item starts shown.
  EXPECT_EQ(shown(effect), kDependents);
  effect.initialize();
  // クロスフェード uses none of them.
  EXPECT_TRUE(shown(effect).empty());
}

TEST_F(SceneChangeTest, ItemEventOnlyAnswersAChangeOfTheTransition) {
  SceneChange effect;
  effect.initialize();
  choose(effect, 4);  // ランダムライン

  Effect::ItemEvent other;
  other.type = Effect::ItemEvent::ItemChanged;
  other.item = effect.findItem(L"角度");
  EXPECT_FALSE(effect.itemEvent(other));
  EXPECT_FALSE(other.redraw);
  EXPECT_TRUE(shown(effect).empty());

  Effect::ItemEvent dropped;
  dropped.type = Effect::ItemEvent::FileHanded;
  dropped.item = effect.findItem(L"種類");
  EXPECT_FALSE(effect.itemEvent(dropped));
  EXPECT_TRUE(shown(effect).empty());

  // The same item of another instance is not this effect's item.
  SceneChange another;
  Effect::ItemEvent foreign;
  foreign.item = another.findItem(L"種類");
  EXPECT_FALSE(effect.itemEvent(foreign));

  Effect::ItemEvent changed;
  changed.type = Effect::ItemEvent::ItemChanged;
  changed.item = effect.findItem(L"種類");
  EXPECT_TRUE(effect.itemEvent(changed));
  EXPECT_TRUE(changed.redraw);
  EXPECT_EQ(shown(effect), (std::vector<std::wstring>{L"分割数", L"縦方向"}));
}

// Pictures of the transition folder, removed again so that later tests see the folder
// as it was.
class TransitionFolderTest : public SceneChangeTest {
 protected:
  void SetUp() override {
    SceneChangeTest::SetUp();
    folder_ = System::Text::toUtf8(System::FileName::expand(L"%Transition%"));
    std::filesystem::create_directories(folder_);
    for (const char* name : {"spiral.png", "blinds.png", "notes.txt"}) {
      const std::filesystem::path path = folder_ / name;
      std::ofstream(path) << "x";
      written_.push_back(path);
    }
  }
  void TearDown() override {
    for (const auto& path : written_) std::filesystem::remove(path);
    SceneChangeTest::TearDown();
  }

 private:
  std::filesystem::path folder_;
  std::vector<std::filesystem::path> written_;
};

TEST_F(TransitionFolderTest, PicturesFollowTheBuiltInWipesInBothLists) {
  const auto sceneChange = Effect::TransitionList::sceneChangeList();
  ASSERT_EQ(sceneChange->size(), 22u);
  EXPECT_EQ(sceneChange->label(12), L"ぼかし");
  EXPECT_EQ(sceneChange->label(13), L"ワイプ(円)");
  EXPECT_EQ(sceneChange->label(19), L"ワイプ(ハート)");
  EXPECT_EQ(sceneChange->label(20), L"blinds");
  EXPECT_EQ(sceneChange->label(21), L"spiral");

  const auto wipe = Effect::TransitionList::wipeList();
  ASSERT_EQ(wipe->size(), 9u);
  EXPECT_EQ(wipe->label(0), L"ワイプ(円)");
  EXPECT_EQ(wipe->label(7), L"blinds");
  EXPECT_EQ(wipe->label(8), L"spiral");

  // A picture is a wipe to シーンチェンジ too.
  SceneChange effect;
  choose(effect, 21);
  effect.updateItems();
  EXPECT_EQ(shown(effect), (std::vector<std::wstring>{L"反転", L"縦横比固定"}));
}

}  // namespace
