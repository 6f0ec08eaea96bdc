// The rules of an object's chain of effects: which effect may stand where, what a
// refused change leaves behind, and how a chain is repaired and copied.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/EffectManager.h"
#include "edit/Object.h"
#include "effect/EffectService.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/ItemRow.h"
#include "effect/movement/BuiltinMovements.h"
#include "effect/movement/MovementBase.h"
#include "system/Exception.h"
#include "system/Text.h"

namespace {

using Edit::EffectManager;
using Edit::Object;
using Effect::EffectBase;
using Effect::EffectItemNumber;
using Effect::EffectService;
using Chain = std::vector<std::shared_ptr<EffectBase>>;
using Keys = std::vector<const wchar_t*>;
using Names = std::vector<std::wstring>;

// Effects of the test's own: a filter for video and audio alike, which none of the
// built-in filters is, and an effect that claims a menu-only role, which no chain may hold.
constexpr Effect::ItemRow kBothItems[] = {Effect::number(L"強さ", 50, 0, 100, 0.1)};
const Effect::EffectInfo kBothFilter{L"両用フィルタ", Effect::EffectType::Filter, Effect::EffectMedia::Both,
                                     Effect::EffectMedia::Both, L"", kBothItems};
const Effect::EffectInfo kAliasRole{L"別名役の効果", Effect::EffectType::AliasObject, Effect::EffectMedia::Video,
                                    Effect::EffectMedia::Video, L"", {}};

template <const Effect::EffectInfo& Info>
class TestEffect final : public Effect::EffectInstance<TestEffect<Info>> {
 public:
  TestEffect() : Effect::EffectInstance<TestEffect>(Info) {}
};

constexpr const char* kType = "different effect type.";

class EffectManagerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    service = new EffectService();
    service->registerEffect<TestEffect<kBothFilter>>();
  }
  static void TearDownTestSuite() { delete std::exchange(service, nullptr); }

  static EffectManager on(Object& object) { return EffectManager(object, *service); }
  static Effect::EffectDefine& define(const wchar_t* key) { return service->findEffect(key); }

  static Names names(const Object& object) {
    Names found;
    for (const auto& effect : object.effects) found.emplace_back(effect->name());
    return found;
  }
  // Builds a chain through the menu path, one key after another.
  static void add(Object& object, const Keys& keys) {
    for (const wchar_t* key : keys) on(object).addEffect(key);
  }
  static bool held(const Chain& chain, const std::shared_ptr<EffectBase>& effect) {
    return std::find(chain.begin(), chain.end(), effect) != chain.end();
  }
  // Puts effects at the end without asking the rules, as a menu that swapped an effect
  // or an older file may leave a chain before it is pruned.
  static void push(Object& object, const Keys& keys) {
    for (const wchar_t* key : keys) object.effects.push_back(service->createEffect(key));
  }

  // A refused change throws the system's text with its place, a function of
  // Edit::EffectManager (nullptr: not checked), and leaves the chain and the control
  // flag as they were.
  template <class Call>
  static void expectRefused(Object& object, Call&& call, const std::string& text, const char* place) {
    const Chain before = object.effects;
    const bool control = object.control;
    try {
      call();
      ADD_FAILURE() << "nothing thrown";
    } catch (const System::NoteException& exception) {
      EXPECT_EQ(exception.message(), text);
      const std::string line = place ? "[Place]\nEdit::EffectManager::" + std::string(place) + "()" : "";
      EXPECT_NE(exception.text().find(line), std::string::npos) << exception.text();
    }
    EXPECT_EQ(object.effects, before);
    EXPECT_EQ(object.control, control);
  }

  inline static EffectService* service = nullptr;
};

TEST_F(EffectManagerTest, FitsFollowsTheTableForEveryHolderAndMedia) {
  // Rows: holder 0 to 5. Columns: media 0 to 5.
  const std::string expected[6] = {
      "100000",  // 0 holds only media 0
      "110100",  // video: video and both
      "101100",  // audio: audio and both
      "111101",  // both: anything but a camera
      "100010",  // camera: camera filters only
      "100001",  // timeline only
  };
  for (int holder = 0; holder < 6; ++holder) {
    for (int media = 0; media < 6; ++media) {
      EXPECT_EQ(EffectManager::fits(holder, media), expected[holder][media] == '1') << holder << ", " << media;
    }
  }
}

// Effects set one after another on a new object. Each set fills only its own slot and
// keeps every other effect that was there, unless the chain was empty or a control
// replaced it.
TEST_F(EffectManagerTest, EffectsChosenOneByOneMakeTheChainAndTypeOfTheObject) {
  struct Case {
    Keys keys;
    Names chain;  // empty: the keys
    std::int32_t type;
    bool control = false;
  };
  const Case cases[] = {
      // An input brings its default output.
      {{L"テキスト"}, {L"テキスト", L"標準描画"}, 1},
      {{L"音声ファイル"}, {L"音声ファイル", L"音声再生"}, 2},
      {{L"フレームバッファ"}, {L"フレームバッファ", L"基本出力"}, 1},
      {{L"シーン"}, {L"シーン", L"映像再生"}, 3},
      {{L"画像ファイル"}, {L"画像ファイル", L"標準描画"}, 1},
      {{L"動画ファイル"}, {L"動画ファイル", L"映像再生"}, 3},
      {{L"オーディオバッファ"}, {L"オーディオバッファ", L"音声再生"}, 2},
      // An output brings its paired input.
      {{L"パーティクル出力"}, {L"図形", L"パーティクル出力"}, 1},
      // Another input or output replaces its own slot only; the output decides the type.
      {{L"テキスト", L"ぼかし", L"図形"}, {L"図形", L"標準描画", L"ぼかし"}, 1},
      {{L"テキスト", L"ぼかし", L"動画ファイル"}, {L"動画ファイル", L"標準描画", L"ぼかし"}, 1},  // holds video filters
      {{L"テキスト", L"ぼかし", L"パーティクル出力"}, {L"テキスト", L"パーティクル出力", L"ぼかし"}, 1},
      {{L"動画ファイル", L"標準描画"}, {}, 1},
      {{L"動画ファイル", L"音声再生"}, {}, 2},
      // Filters that fit the placement of the top effect (the rest: ChangesAgainstTheRulesAreRefused).
      {{L"テキスト", L"標準描画", L"ぼかし", L"両用フィルタ"}, {}, 1},
      {{L"音声ファイル", L"音声再生", L"音量調整", L"両用フィルタ"}, {}, 2},
      {{L"動画ファイル", L"映像再生", L"ぼかし", L"音量調整"}, {}, 3},
      {{L"ぼかし", L"モザイク"}, {}, 4}, {{L"音量調整", L"モノラル化"}, {}, 5},
      {{L"両用フィルタ"}, {}, 6}, {{L"並行光源(カメラ制御)"}, {}, 6},
      // Control effects set the control flag only for layer ranges.
      {{L"グループ制御", L"ぼかし"}, {}, 7, true}, {{L"カメラ制御", L"並行光源(カメラ制御)"}, {}, 7, true},
      {{L"グループ制御(音声)", L"音量調整"}, {}, 7, true}, {{L"時間制御(オブジェクト)"}, {}, 7, true},
      {{L"シーンチェンジ"}, {}, 7}, {{L"部分フィルタ"}, {}, 7},
      // The time control is placed on the timeline too, so it gives way to another control.
      {{L"時間制御(オブジェクト)", L"シーンチェンジ"}, {L"シーンチェンジ"}, 7},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(System::Text::toUtf8(c.keys.back()));
    Object object;
    object.control = c.type == 7 && !c.control;  // a control effect sets the flag either way
    for (const wchar_t* key : c.keys) {
      const Chain before = object.effects;
      const std::size_t index = on(object).setEffectByDefine(define(key));
      ASSERT_LT(index, object.effects.size());
      EXPECT_EQ(object.effects[index]->name(), std::wstring(key));
      for (std::size_t i = 0; i < object.effects.size(); ++i) {
        EXPECT_TRUE(i == index || before.empty() || c.type == 7 || held(before, object.effects[i])) << i;
      }
    }
    EXPECT_EQ(names(object), c.chain.empty() ? Names(c.keys.begin(), c.keys.end()) : c.chain);
    EXPECT_EQ(EffectManager::getObjectType(object), c.type);
    EXPECT_EQ(object.control, c.control);
  }

  Object empty;
  expectRefused(empty, [&] { EffectManager::getObjectType(empty); }, "not exist effect.", "getObjectType");
  Object outputFirst;
  push(outputFirst, {L"標準描画"});
  expectRefused(outputFirst, [&] { EffectManager::getObjectType(outputFirst); }, "illegal top effect.",
                "getObjectType");
}

TEST_F(EffectManagerTest, ChangesAgainstTheRulesAreRefused) {
  struct Setter {
    std::size_t (EffectManager::*set)(Effect::EffectDefine&);
    const char* place;
  };
  const Setter input{&EffectManager::setInputEffect, "setInputEffect"};
  const Setter output{&EffectManager::setOutputEffect, "setOutputEffect"};
  const Setter control{&EffectManager::setControlEffect, "setControlEffect"};
  const Setter filter{&EffectManager::setEffectByDefine, "setFilterEffect"};
  const std::string kFilterType = "different filter effect type.", kControl = "can not change control effect.";
  struct Case {
    Keys chain;
    Setter setter;
    const wchar_t* key;
    std::string text;
  };
  const Case cases[] = {
      {{}, output, L"標準描画", "not exist input effect."},
      {{}, output, L"音声再生", "not exist input effect."},
      {{}, output, L"映像再生", "not exist input effect."},
      // The output is part of the test: 標準描画 cannot follow an audio input.
      {{L"テキスト"}, input, L"音声ファイル", kFilterType},
      {{L"動画ファイル", L"ぼかし", L"音量調整"}, input, L"画像ファイル", kFilterType},
      {{L"ぼかし"}, input, L"テキスト", kType},
      {{L"テキスト", L"ぼかし"}, output, L"音声再生", kType},
      {{L"ぼかし"}, output, L"標準描画", kType},
      // Only a control of timeline placement is replaced.
      {{L"グループ制御", L"ぼかし"}, control, L"シーンチェンジ", kControl},
      {{L"テキスト"}, control, L"グループ制御", kControl},
      {{L"ぼかし"}, control, L"グループ制御", kControl},
      // A filter that does not fit the placement of the top effect.
      {{L"テキスト"}, filter, L"音量調整", kType}, {{L"テキスト"}, filter, L"並行光源(カメラ制御)", kType},
      {{L"音声ファイル"}, filter, L"ぼかし", kType}, {{L"動画ファイル"}, filter, L"並行光源(カメラ制御)", kType},
      {{L"カメラ制御"}, filter, L"ぼかし", kType}, {{L"カメラ制御"}, filter, L"両用フィルタ", kType},
      {{L"グループ制御"}, filter, L"音量調整", kType}, {{L"グループ制御(音声)"}, filter, L"ぼかし", kType},
      {{L"シーンチェンジ"}, filter, L"ぼかし", kType}, {{L"シーンチェンジ"}, filter, L"両用フィルタ", kType},
      {{L"ぼかし"}, filter, L"音量調整", kType},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(System::Text::toUtf8(c.key));
    Object object;
    add(object, c.chain);
    expectRefused(object, [&] { (on(object).*c.setter.set)(define(c.key)); }, c.text, c.setter.place);
  }

  Object object;
  Effect::EffectDefine alias(0, std::make_shared<TestEffect<kAliasRole>>());
  expectRefused(object, [&] { on(object).setEffectByDefine(alias); }, "invalid effect type.", "setEffectByDefine");
  add(object, {L"テキスト", L"ぼかし"});
  expectRefused(object, [&] { on(object).addEffect(L"存在しない効果"); }, "not found effect.", nullptr);
  expectRefused(object, [&] { on(object).addEffect(L"並行光源(カメラ制御)", object.effects[2].get()); }, kType,
                "setFilterEffect");
}

TEST_F(EffectManagerTest, TheSameInputOrOutputSetAgainKeepsItsInstanceAndValues) {
  Object object;
  add(object, {L"テキスト", L"ぼかし"});
  const Chain before = object.effects;
  before[0]->item<EffectItemNumber>(L"サイズ").setValue(0, 123.45);
  EXPECT_EQ(on(object).setInputEffect(define(L"テキスト")), 0u);
  EXPECT_EQ(on(object).setOutputEffect(define(L"標準描画")), 1u);
  EXPECT_EQ(object.effects, before);
  // The menu path must not reset the values to the stored default either.
  EXPECT_EQ(on(object).addEffect(L"テキスト"), before[0]);
  EXPECT_EQ(object.effects, before);
  EXPECT_DOUBLE_EQ(before[0]->item<EffectItemNumber>(L"サイズ").getValue(0), 123.45);
}

TEST_F(EffectManagerTest, AddedEffectTakesTheStoredDefaultWithAValuePerSectionPoint) {
  Effect::EffectDefine& blur = define(L"ぼかし");
  const std::unique_ptr<Effect::EffectDefine, void (*)(Effect::EffectDefine*)> reset(
      &blur, [](Effect::EffectDefine* define) { define->resetDefault(); });
  const std::shared_ptr<EffectBase> stored = blur.createInstance();
  auto& storedRange = stored->item<EffectItemNumber>(L"範囲");
  storedRange.setMovement(Effect::findMovement(L"直線移動"), 2);
  storedRange.setValue(0, 7);
  storedRange.setValue(1, 9);
  stored->item<EffectItemNumber>(L"縦横比").setValue(0, -0.5);
  blur.saveDefault(*stored);

  Object object;
  object.end = 99;
  object.sections = {30, 60};
  add(object, {L"テキスト"});
  const std::shared_ptr<EffectBase> added = on(object).addEffect(L"ぼかし");

  const auto& range = added->item<EffectItemNumber>(L"範囲");
  EXPECT_EQ(range.movement().name(), L"直線移動");
  // Two section points: four points in all; the added ones repeat the last value.
  EXPECT_EQ(range.values(), (std::vector<std::int32_t>{7, 9, 9, 9}));
  // A number that does not move keeps its one value.
  EXPECT_EQ(added->item<EffectItemNumber>(L"縦横比").values(), std::vector<std::int32_t>{-50});
  // Only the effect's own defaults change: a plain instance is as constructed.
  EXPECT_EQ(blur.createInstance()->item<EffectItemNumber>(L"範囲").values(), std::vector<std::int32_t>{5});
}

// Only filters move, and only past filters; the top effect goes only when a filter
// takes its place; a new filter (グロー) lands at the end or directly behind the one
// given. Each row: one change on a fresh chain.
TEST_F(EffectManagerTest, OnlyFiltersMoveAndTheTopStaysUnlessAFilterTakesItsPlace) {
  enum Change { Up, Down, Remove, AddBehind };
  struct Case {
    Keys chain;
    Change change;
    std::size_t index;  // beyond the chain: an effect of no chain
    Names after = {};   // empty: as it was
  };
  const Keys media{L"テキスト", L"ぼかし", L"モザイク"}, group{L"グループ制御", L"ぼかし"};
  const Keys filters{L"ぼかし", L"モザイク"};
  const Case cases[] = {
      {media, Up, 0}, {media, Down, 0}, {media, Up, 1}, {media, Down, 1}, {media, Down, 3},
      {media, Up, 2},  // behind it stands the output
      {media, Up, 3, {L"テキスト", L"標準描画", L"モザイク", L"ぼかし"}},
      {media, Down, 2, {L"テキスト", L"標準描画", L"モザイク", L"ぼかし"}},
      {media, Remove, 0}, {media, Remove, 9}, {media, Remove, 2, {L"テキスト", L"標準描画", L"モザイク"}},
      {media, Remove, 1, {L"テキスト", L"ぼかし", L"モザイク"}},  // pruning brings the output back
      {group, Up, 1}, {group, Down, 0}, {group, Remove, 0}, {group, Remove, 1, {L"グループ制御"}},
      // The top of a filter object changes by a swap with the filter behind it.
      {filters, Up, 1, {L"モザイク", L"ぼかし"}}, {filters, Down, 0, {L"モザイク", L"ぼかし"}},
      {filters, Remove, 0, {L"モザイク"}}, {{L"ぼかし"}, Remove, 0},  // the last filter stays
      {media, AddBehind, 2, {L"テキスト", L"標準描画", L"ぼかし", L"グロー", L"モザイク"}},
      {media, AddBehind, 1, {L"テキスト", L"標準描画", L"グロー", L"ぼかし", L"モザイク"}},
      // Behind the input still means behind the output: it is never passed.
      {media, AddBehind, 0, {L"テキスト", L"標準描画", L"グロー", L"ぼかし", L"モザイク"}},
      {media, AddBehind, 3, {L"テキスト", L"標準描画", L"ぼかし", L"モザイク", L"グロー"}},
      {filters, AddBehind, 0, {L"ぼかし", L"グロー", L"モザイク"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << System::Text::toUtf8(c.chain.front()) << " change " << c.change << " at "
                                    << c.index);
    Object object;
    add(object, c.chain);
    const Chain before = object.effects;
    const Names expected = c.after.empty() ? names(object) : c.after;
    const std::shared_ptr<EffectBase> effect =
        c.index < before.size() ? before[c.index] : service->createEffect(L"ぼかし");
    if (c.change == Up) on(object).moveEffectUp(*effect);
    if (c.change == Down) on(object).moveEffectDown(*effect);
    if (c.change == Remove) on(object).removeEffect(*effect);
    const auto added = c.change == AddBehind ? on(object).addEffect(L"グロー", effect.get()) : nullptr;
    EXPECT_EQ(names(object), expected);
    for (const auto& kept : object.effects) EXPECT_TRUE(kept == added || held(before, kept));
  }
}

TEST_F(EffectManagerTest, AControlOfTimelinePlacementIsReplacedWithAllBehindIt) {
  Object change;
  add(change, {L"シーンチェンジ"});
  push(change, {L"両用フィルタ"});
  EXPECT_EQ(on(change).setControlEffect(define(L"カメラ制御")), 0u);
  EXPECT_EQ(names(change), (Names{L"カメラ制御"}));
  EXPECT_TRUE(change.control);
}

TEST_F(EffectManagerTest, PruningDropsWhatNoLongerFitsAndRestoresTheDefaultOutput) {
  struct Case {
    Keys chain;
    Names pruned;
  };
  const Case cases[] = {
      // A movie object made into its audio copy: video filters go, the rest stays in order.
      {{L"動画ファイル", L"音声再生", L"ぼかし", L"音量調整", L"両用フィルタ"},
       {L"動画ファイル", L"音声再生", L"音量調整", L"両用フィルタ"}},
      // Another input: the default output goes back to index 1, before the filters kept.
      {{L"音声ファイル", L"標準描画", L"ぼかし", L"両用フィルタ"}, {L"音声ファイル", L"音声再生", L"両用フィルタ"}},
      {{L"画像ファイル", L"ぼかし"}, {L"画像ファイル", L"標準描画", L"ぼかし"}},
      // A filter for both stays on a scene change once it stands there; others go.
      {{L"シーンチェンジ", L"両用フィルタ", L"ぼかし"}, {L"シーンチェンジ", L"両用フィルタ"}},
      {{L"カメラ制御", L"並行光源(カメラ制御)", L"両用フィルタ"}, {L"カメラ制御", L"並行光源(カメラ制御)"}},
      {{L"ぼかし", L"音量調整", L"両用フィルタ"}, {L"ぼかし", L"両用フィルタ"}},
      {{}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.chain.empty() ? "(empty)" : System::Text::toUtf8(c.chain.front()));
    Object object;
    push(object, c.chain);
    const Chain before = object.effects;
    on(object).pruneEffects();
    EXPECT_EQ(names(object), c.pruned);
    for (std::size_t i = 0; i < object.effects.size(); ++i) {
      EXPECT_TRUE(i == 1 || held(before, object.effects[i])) << "only an output is made anew, not " << i;
    }
  }
}

TEST_F(EffectManagerTest, CopyingAChainCopiesValuesAndSwitchesButNotLocks) {
  Object source, target, group, copy;
  add(source, {L"テキスト", L"ぼかし"});
  source.effects[0]->item<EffectItemNumber>(L"サイズ").setValue(0, 77.5);
  EffectBase& blur = *source.effects[2];
  blur.item<EffectItemNumber>(L"範囲").setValue(0, 12);
  blur.disable = blur.hide = blur.lock = true;
  add(target, {L"グループ制御"});
  ASSERT_TRUE(target.control);
  on(target).copyChainFrom(source);
  EXPECT_EQ(names(target), names(source));
  EXPECT_FALSE(target.control);
  EXPECT_TRUE(target.effects[2]->disable);
  EXPECT_TRUE(target.effects[2]->hide);
  EXPECT_FALSE(target.effects[2]->lock);
  blur.lock = false;  // with the lock set aside, each copy reads as its source
  for (std::size_t i = 0; i < target.effects.size(); ++i) {
    EXPECT_NE(target.effects[i], source.effects[i]) << "index " << i;
    EXPECT_EQ(target.effects[i]->saveIniSectionParameter(), source.effects[i]->saveIniSectionParameter()) << i;
  }
  EXPECT_DOUBLE_EQ(target.effects[0]->item<EffectItemNumber>(L"サイズ").getValue(0), 77.5);
  EXPECT_DOUBLE_EQ(target.effects[2]->item<EffectItemNumber>(L"範囲").getValue(0), 12);

  add(group, {L"グループ制御"});
  on(copy).copyChainFrom(group);
  EXPECT_EQ(names(copy), (Names{L"グループ制御"}));
  EXPECT_TRUE(copy.control);
}

}  // namespace
