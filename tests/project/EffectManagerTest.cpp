// The rules of an object's chain of effects: which effect may stand where, what a
// refused change leaves behind, and how a chain is repaired and copied.
#include <gtest/gtest.h>

#include <memory>
#include <string>
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
using Names = std::vector<std::wstring>;

// None of the built-in filters works on video and audio alike, so the rows of the fit
// rules for such a filter need one of their own.
constexpr Effect::ItemRow kBothItems[] = {Effect::number(L"強さ", 50, 0, 100, 0.1)};

class BothFilter final : public Effect::EffectInstance<BothFilter> {
 public:
  static const Effect::EffectInfo kInfo;
  BothFilter() : EffectInstance(kInfo) {}
};

const Effect::EffectInfo BothFilter::kInfo{L"両用フィルタ", Effect::EffectType::Filter, Effect::EffectMedia::Both,
                                           Effect::EffectMedia::Both, L"", kBothItems};

// An effect that claims a menu-only role; no chain may hold it.
class AliasRoleEffect final : public Effect::EffectInstance<AliasRoleEffect> {
 public:
  static const Effect::EffectInfo kInfo;
  AliasRoleEffect() : EffectInstance(kInfo) {}
};

const Effect::EffectInfo AliasRoleEffect::kInfo{L"別名役の効果", Effect::EffectType::AliasObject,
                                                Effect::EffectMedia::Video, Effect::EffectMedia::Video, L"", {}};

constexpr const char* kSetInput = "Edit::EffectManager::setInputEffect";
constexpr const char* kSetOutput = "Edit::EffectManager::setOutputEffect";
constexpr const char* kSetFilter = "Edit::EffectManager::setFilterEffect";
constexpr const char* kSetControl = "Edit::EffectManager::setControlEffect";
constexpr const char* kObjectType = "Edit::EffectManager::getObjectType";

// Runs `call` and reports whether it threw the system's text with that place.
template <class Call>
::testing::AssertionResult throwsNote(Call&& call, const std::string& text, const std::string& place) {
  try {
    call();
  } catch (const System::NoteException& exception) {
    if (exception.message() != text) return ::testing::AssertionFailure() << "threw \"" << exception.message() << '"';
    if (exception.text().find("[Place]\n" + place + "()") == std::string::npos) {
      return ::testing::AssertionFailure() << "wrong place in: " << exception.text();
    }
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << "nothing thrown";
}

class EffectManagerTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    service = new EffectService();
    service->registerEffect<BothFilter>();
  }
  static void TearDownTestSuite() {
    delete service;
    service = nullptr;
  }

  static EffectManager on(Object& object) { return EffectManager(object, *service); }
  static Effect::EffectDefine& define(const wchar_t* key) { return service->findEffect(key); }

  static Names names(const Object& object) {
    Names found;
    for (const auto& effect : object.effects) found.emplace_back(effect->name());
    return found;
  }
  // Builds a chain through the menu path, one key after another.
  static void add(Object& object, const std::vector<const wchar_t*>& keys) {
    for (const wchar_t* key : keys) on(object).addEffect(key);
  }
  // Puts an effect at the end without asking the rules, as a menu that swapped an
  // effect or an older file may leave a chain before it is pruned.
  static std::shared_ptr<EffectBase> push(Object& object, const wchar_t* key) {
    object.effects.push_back(service->createEffect(key));
    return object.effects.back();
  }

  static EffectService* service;
};

EffectService* EffectManagerTest::service = nullptr;

TEST_F(EffectManagerTest, FitsFollowsTheTableForEveryHolderAndMedia) {
  // Rows: holder 0 to 5. Columns: media 0 to 5.
  const bool expected[6][6] = {
      {true, false, false, false, false, false},  // 0 holds only media 0
      {true, true, false, true, false, false},    // video: video and both
      {true, false, true, true, false, false},    // audio: audio and both
      {true, true, true, true, false, true},      // both: anything but a camera
      {true, false, false, false, true, false},   // camera: camera filters only
      {true, false, false, false, false, true},   // timeline only
  };
  for (int holder = 0; holder < 6; ++holder) {
    for (int media = 0; media < 6; ++media) {
      EXPECT_EQ(EffectManager::fits(holder, media), expected[holder][media]) << "holder " << holder << " media " << media;
    }
  }
}

TEST_F(EffectManagerTest, AnInputChosenAsObjectBringsItsDefaultOutput) {
  struct Case {
    const wchar_t* input;
    const wchar_t* output;
    std::int32_t type;
  };
  const Case cases[] = {
      {L"テキスト", L"標準描画", 1},   {L"音声ファイル", L"音声再生", 2}, {L"フレームバッファ", L"基本出力", 1},
      {L"シーン", L"映像再生", 3},     {L"画像ファイル", L"標準描画", 1}, {L"動画ファイル", L"映像再生", 3},
      {L"オーディオバッファ", L"音声再生", 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(System::Text::toUtf8(c.input));
    Object object;
    EXPECT_EQ(on(object).setEffectByDefine(define(c.input)), 0u);
    EXPECT_EQ(names(object), (Names{c.input, c.output}));
    EXPECT_EQ(EffectManager::getObjectType(object), c.type);
    EXPECT_FALSE(object.control);
  }
}

TEST_F(EffectManagerTest, AnOutputChosenAsObjectNeedsAPairedInput) {
  Object particles;
  EXPECT_EQ(on(particles).setEffectByDefine(define(L"パーティクル出力")), 1u);
  EXPECT_EQ(names(particles), (Names{L"図形", L"パーティクル出力"}));
  EXPECT_EQ(EffectManager::getObjectType(particles), 1);

  for (const wchar_t* key : {L"標準描画", L"音声再生", L"映像再生"}) {
    SCOPED_TRACE(System::Text::toUtf8(key));
    Object object;
    EXPECT_TRUE(throwsNote([&] { on(object).setOutputEffect(define(key)); }, "not exist input effect.", kSetOutput));
    EXPECT_TRUE(object.effects.empty());
  }
}

TEST_F(EffectManagerTest, SettingTheSameInputAgainKeepsTheEffectAndItsValues) {
  Object object;
  add(object, {L"テキスト", L"ぼかし"});
  const std::shared_ptr<EffectBase> text = object.effects[0];
  text->item<EffectItemNumber>(L"サイズ").setValue(0, 123.45);
  const Chain before = object.effects;

  EXPECT_EQ(on(object).setInputEffect(define(L"テキスト")), 0u);
  EXPECT_EQ(object.effects, before);
  // The menu path must not reset the values to the stored default either.
  EXPECT_EQ(on(object).addEffect(L"テキスト"), text);
  EXPECT_EQ(object.effects, before);
  EXPECT_DOUBLE_EQ(text->item<EffectItemNumber>(L"サイズ").getValue(0), 123.45);
}

TEST_F(EffectManagerTest, ReplacingTheInputKeepsOutputAndFilters) {
  Object object;
  add(object, {L"テキスト", L"ぼかし"});
  const Chain before = object.effects;

  EXPECT_EQ(on(object).setInputEffect(define(L"図形")), 0u);
  EXPECT_EQ(names(object), (Names{L"図形", L"標準描画", L"ぼかし"}));
  EXPECT_EQ(object.effects[1], before[1]);
  EXPECT_EQ(object.effects[2], before[2]);

  // An input for both holds video filters too.
  EXPECT_EQ(on(object).setInputEffect(define(L"動画ファイル")), 0u);
  EXPECT_EQ(names(object), (Names{L"動画ファイル", L"標準描画", L"ぼかし"}));
  EXPECT_EQ(EffectManager::getObjectType(object), 1);
}

TEST_F(EffectManagerTest, AnInputThatTheRestOfTheChainDoesNotFitIsRefused) {
  Object video;
  add(video, {L"テキスト"});
  Chain before = video.effects;
  // The output is part of the test: 標準描画 cannot follow an audio input.
  EXPECT_TRUE(throwsNote([&] { on(video).setInputEffect(define(L"音声ファイル")); }, "different filter effect type.",
                         kSetInput));
  EXPECT_EQ(video.effects, before);

  Object movie;
  add(movie, {L"動画ファイル", L"ぼかし", L"音量調整"});
  before = movie.effects;
  EXPECT_TRUE(throwsNote([&] { on(movie).setInputEffect(define(L"画像ファイル")); }, "different filter effect type.",
                         kSetInput));
  EXPECT_EQ(movie.effects, before);

  Object filters;
  add(filters, {L"ぼかし"});
  before = filters.effects;
  EXPECT_TRUE(throwsNote([&] { on(filters).setInputEffect(define(L"テキスト")); }, "different effect type.", kSetInput));
  EXPECT_EQ(filters.effects, before);
}

TEST_F(EffectManagerTest, OutputIsReplacedOnlyByAnotherDefineThatFitsTheInput) {
  Object object;
  add(object, {L"テキスト", L"ぼかし"});
  const Chain before = object.effects;

  EXPECT_EQ(on(object).setOutputEffect(define(L"標準描画")), 1u);
  EXPECT_EQ(object.effects, before);  // the same define keeps its instance

  EXPECT_TRUE(throwsNote([&] { on(object).setOutputEffect(define(L"音声再生")); }, "different effect type.", kSetOutput));
  EXPECT_EQ(object.effects, before);

  EXPECT_EQ(on(object).setOutputEffect(define(L"パーティクル出力")), 1u);
  EXPECT_EQ(names(object), (Names{L"テキスト", L"パーティクル出力", L"ぼかし"}));
  EXPECT_EQ(object.effects[0], before[0]);
  EXPECT_EQ(object.effects[2], before[2]);

  Object movie;
  add(movie, {L"動画ファイル"});
  EXPECT_EQ(on(movie).setOutputEffect(define(L"音声再生")), 1u);
  EXPECT_EQ(names(movie), (Names{L"動画ファイル", L"音声再生"}));
  EXPECT_EQ(EffectManager::getObjectType(movie), 2);

  Object filters;
  add(filters, {L"ぼかし"});
  EXPECT_TRUE(
      throwsNote([&] { on(filters).setOutputEffect(define(L"標準描画")); }, "different effect type.", kSetOutput));
  EXPECT_EQ(names(filters), (Names{L"ぼかし"}));
}

TEST_F(EffectManagerTest, FiltersMustFitThePlacementOfTheTopEffect) {
  struct Case {
    std::vector<const wchar_t*> chain;
    const wchar_t* filter;
    bool fits;
  };
  const Case cases[] = {
      {{L"テキスト"}, L"ぼかし", true},
      {{L"テキスト"}, L"両用フィルタ", true},
      {{L"テキスト"}, L"音量調整", false},
      {{L"テキスト"}, L"並行光源(カメラ制御)", false},
      {{L"音声ファイル"}, L"音量調整", true},
      {{L"音声ファイル"}, L"両用フィルタ", true},
      {{L"音声ファイル"}, L"ぼかし", false},
      {{L"動画ファイル"}, L"ぼかし", true},
      {{L"動画ファイル"}, L"音量調整", true},
      {{L"動画ファイル"}, L"並行光源(カメラ制御)", false},
      {{L"カメラ制御"}, L"並行光源(カメラ制御)", true},
      {{L"カメラ制御"}, L"ぼかし", false},
      {{L"カメラ制御"}, L"両用フィルタ", false},
      {{L"グループ制御"}, L"ぼかし", true},
      {{L"グループ制御"}, L"音量調整", false},
      {{L"グループ制御(音声)"}, L"音量調整", true},
      {{L"グループ制御(音声)"}, L"ぼかし", false},
      {{L"シーンチェンジ"}, L"ぼかし", false},
      {{L"シーンチェンジ"}, L"両用フィルタ", false},
      {{L"ぼかし"}, L"モザイク", true},
      {{L"ぼかし"}, L"音量調整", false},
      {{L"音量調整"}, L"モノラル化", true},
      {{}, L"音量調整", true},
  };
  for (const Case& c : cases) {
    Object object;
    add(object, c.chain);
    SCOPED_TRACE(testing::Message() << System::Text::toUtf8(c.chain.empty() ? L"(empty)" : c.chain.front()) << " + "
                                    << System::Text::toUtf8(c.filter));
    const Chain before = object.effects;
    if (c.fits) {
      EXPECT_EQ(on(object).setEffectByDefine(define(c.filter)), before.size());
      EXPECT_EQ(object.effects.size(), before.size() + 1);
      EXPECT_EQ(object.effects.back()->name(), std::wstring(c.filter));
    } else {
      EXPECT_TRUE(throwsNote([&] { on(object).setEffectByDefine(define(c.filter)); }, "different effect type.",
                             kSetFilter));
      EXPECT_EQ(object.effects, before);
    }
  }
}

TEST_F(EffectManagerTest, AnEffectOfAMenuOnlyRoleIsRefused) {
  Effect::EffectDefine alias(0, std::make_shared<AliasRoleEffect>());
  Object object;
  EXPECT_TRUE(throwsNote([&] { on(object).setEffectByDefine(alias); }, "invalid effect type.",
                         "Edit::EffectManager::setEffectByDefine"));
  EXPECT_TRUE(object.effects.empty());
}

TEST_F(EffectManagerTest, ANewFilterLandsAtTheEndOrDirectlyBehindBefore) {
  Object object;
  add(object, {L"テキスト", L"ぼかし", L"モザイク"});
  const std::shared_ptr<EffectBase> text = object.effects[0];
  const std::shared_ptr<EffectBase> draw = object.effects[1];
  const std::shared_ptr<EffectBase> blur = object.effects[2];
  const std::shared_ptr<EffectBase> mosaic = object.effects[3];
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"ぼかし", L"モザイク"}));

  const std::shared_ptr<EffectBase> glow = on(object).addEffect(L"グロー", blur.get());
  EXPECT_EQ(object.effects[3], glow);
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"ぼかし", L"グロー", L"モザイク"}));
  on(object).addEffect(L"発光", draw.get());
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"発光", L"ぼかし", L"グロー", L"モザイク"}));
  // Behind the input still means behind the output: it is never passed.
  on(object).addEffect(L"閃光", text.get());
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"閃光", L"発光", L"ぼかし", L"グロー", L"モザイク"}));
  on(object).addEffect(L"拡散光", mosaic.get());
  EXPECT_EQ(object.effects.back()->name(), std::wstring(L"拡散光"));

  Object filters;
  add(filters, {L"ぼかし", L"モザイク"});
  const std::shared_ptr<EffectBase> top = filters.effects[0];
  on(filters).addEffect(L"グロー", top.get());
  EXPECT_EQ(names(filters), (Names{L"ぼかし", L"グロー", L"モザイク"}));
}

TEST_F(EffectManagerTest, ARefusedAddLeavesTheChainAsItWas) {
  Object object;
  add(object, {L"テキスト", L"ぼかし"});
  const Chain before = object.effects;
  try {
    on(object).addEffect(L"存在しない効果");
    ADD_FAILURE() << "nothing thrown";
  } catch (const System::NoteException& exception) {
    EXPECT_EQ(exception.message(), "not found effect.");
  }
  EXPECT_EQ(object.effects, before);
  EXPECT_TRUE(throwsNote([&] { on(object).addEffect(L"並行光源(カメラ制御)", before[2].get()); },
                         "different effect type.", kSetFilter));
  EXPECT_EQ(object.effects, before);
}

TEST_F(EffectManagerTest, AddedEffectTakesTheStoredDefaultWithAValuePerSectionPoint) {
  Effect::EffectDefine& blur = define(L"ぼかし");
  struct Reset {
    Effect::EffectDefine& define;
    ~Reset() { define.resetDefault(); }
  } reset{blur};
  {
    const std::shared_ptr<EffectBase> stored = blur.createInstance();
    auto& range = stored->item<EffectItemNumber>(L"範囲");
    range.setMovement(Effect::findMovement(L"直線移動"), 2);
    range.setValue(0, 7);
    range.setValue(1, 9);
    stored->item<EffectItemNumber>(L"縦横比").setValue(0, -0.5);
    blur.saveDefault(*stored);
  }

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

TEST_F(EffectManagerTest, OnlyFiltersMoveAndOnlyPastFilters) {
  Object object;
  add(object, {L"テキスト", L"ぼかし", L"モザイク"});
  const Chain start = object.effects;
  EffectManager manager = on(object);

  manager.moveEffectUp(*start[2]);  // behind it stands the output
  manager.moveEffectDown(*start[3]);
  manager.moveEffectUp(*start[1]);
  manager.moveEffectDown(*start[1]);
  manager.moveEffectUp(*start[0]);
  manager.moveEffectDown(*start[0]);
  EXPECT_EQ(object.effects, start);

  manager.moveEffectUp(*start[3]);
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"モザイク", L"ぼかし"}));
  manager.moveEffectDown(*start[3]);
  EXPECT_EQ(names(object), (Names{L"テキスト", L"標準描画", L"ぼかし", L"モザイク"}));

  Object group;
  add(group, {L"グループ制御", L"ぼかし"});
  const Chain grouped = group.effects;
  on(group).moveEffectUp(*grouped[1]);
  on(group).moveEffectDown(*grouped[0]);
  EXPECT_EQ(group.effects, grouped);

  // The top of a filter object changes by a swap with the filter behind it.
  Object filters;
  add(filters, {L"ぼかし", L"モザイク"});
  on(filters).moveEffectUp(*filters.effects[1]);
  EXPECT_EQ(names(filters), (Names{L"モザイク", L"ぼかし"}));
  on(filters).moveEffectDown(*filters.effects[0]);
  EXPECT_EQ(names(filters), (Names{L"ぼかし", L"モザイク"}));
}

TEST_F(EffectManagerTest, RemovingKeepsTheTopEffectUnlessAFilterTakesItsPlace) {
  Object media;
  add(media, {L"テキスト", L"ぼかし"});
  Chain before = media.effects;
  on(media).removeEffect(*before[0]);
  EXPECT_EQ(media.effects, before);
  on(media).removeEffect(*before[2]);
  EXPECT_EQ(names(media), (Names{L"テキスト", L"標準描画"}));
  const std::shared_ptr<EffectBase> stranger = service->createEffect(L"ぼかし");
  on(media).removeEffect(*stranger);
  EXPECT_EQ(names(media), (Names{L"テキスト", L"標準描画"}));

  Object filters;
  add(filters, {L"ぼかし", L"モザイク", L"グロー"});
  before = filters.effects;
  on(filters).removeEffect(*before[0]);
  EXPECT_EQ(filters.effects, (Chain{before[1], before[2]}));
  on(filters).removeEffect(*before[1]);
  EXPECT_EQ(filters.effects, (Chain{before[2]}));
  on(filters).removeEffect(*before[2]);  // the last filter stays
  EXPECT_EQ(filters.effects, (Chain{before[2]}));

  Object group;
  add(group, {L"グループ制御", L"ぼかし"});
  before = group.effects;
  on(group).removeEffect(*before[0]);
  EXPECT_EQ(group.effects, before);
  on(group).removeEffect(*before[1]);
  EXPECT_EQ(names(group), (Names{L"グループ制御"}));
}

TEST_F(EffectManagerTest, ControlEffectsSetTheControlFlagOnlyForLayerRanges) {
  struct Case {
    const wchar_t* key;
    bool control;
  };
  const Case cases[] = {
      {L"グループ制御", true},           {L"カメラ制御", true},     {L"グループ制御(音声)", true},
      {L"時間制御(オブジェクト)", true}, {L"シーンチェンジ", false}, {L"部分フィルタ", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(System::Text::toUtf8(c.key));
    Object object;
    object.control = !c.control;
    EXPECT_EQ(on(object).setEffectByDefine(define(c.key)), 0u);
    EXPECT_EQ(names(object), (Names{c.key}));
    EXPECT_EQ(object.control, c.control);
    EXPECT_EQ(EffectManager::getObjectType(object), 7);
  }
}

TEST_F(EffectManagerTest, OnlyAControlOfTimelinePlacementIsReplaced) {
  Object group;
  add(group, {L"グループ制御", L"ぼかし"});
  const Chain before = group.effects;
  EXPECT_TRUE(throwsNote([&] { on(group).setControlEffect(define(L"シーンチェンジ")); },
                         "can not change control effect.", kSetControl));
  EXPECT_EQ(group.effects, before);
  EXPECT_TRUE(group.control);

  for (const wchar_t* top : {L"テキスト", L"ぼかし"}) {
    Object object;
    add(object, {top});
    const Chain held = object.effects;
    EXPECT_TRUE(throwsNote([&] { on(object).setControlEffect(define(L"グループ制御")); },
                           "can not change control effect.", kSetControl));
    EXPECT_EQ(object.effects, held);
    EXPECT_FALSE(object.control);
  }

  // A scene change is replaced together with whatever stands behind it.
  Object change;
  add(change, {L"シーンチェンジ"});
  push(change, L"両用フィルタ");
  EXPECT_EQ(on(change).setControlEffect(define(L"カメラ制御")), 0u);
  EXPECT_EQ(names(change), (Names{L"カメラ制御"}));
  EXPECT_TRUE(change.control);

  // The time control is placed on the timeline too, so it gives way as well.
  Object time;
  add(time, {L"時間制御(オブジェクト)"});
  EXPECT_EQ(on(time).setControlEffect(define(L"シーンチェンジ")), 0u);
  EXPECT_EQ(names(time), (Names{L"シーンチェンジ"}));
  EXPECT_FALSE(time.control);
}

TEST_F(EffectManagerTest, ObjectTypeComesFromTheTopEffectAndTheOutput) {
  struct Case {
    std::vector<const wchar_t*> chain;
    std::int32_t type;
  };
  const Case cases[] = {
      {{L"画像ファイル"}, 1},
      {{L"音声ファイル"}, 2},
      {{L"シーン"}, 3},
      {{L"動画ファイル", L"標準描画"}, 1},  // decided by the output, not the input
      {{L"ぼかし"}, 4},
      {{L"音量調整"}, 5},
      {{L"両用フィルタ"}, 6},
      {{L"並行光源(カメラ制御)"}, 6},
      {{L"シーンチェンジ"}, 7},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(System::Text::toUtf8(c.chain.front()));
    Object object;
    add(object, c.chain);
    EXPECT_EQ(EffectManager::getObjectType(object), c.type);
  }

  Object empty;
  EXPECT_TRUE(throwsNote([&] { EffectManager::getObjectType(empty); }, "not exist effect.", kObjectType));
  Object outputFirst;
  push(outputFirst, L"標準描画");
  EXPECT_TRUE(throwsNote([&] { EffectManager::getObjectType(outputFirst); }, "illegal top effect.", kObjectType));
}

TEST_F(EffectManagerTest, PruningAfterAnotherOutputDropsWhatNoLongerFits) {
  // A movie object made into its audio copy: video filters go, the rest stays in order.
  Object movie;
  add(movie, {L"動画ファイル", L"ぼかし", L"音量調整", L"両用フィルタ"});
  const Chain before = movie.effects;
  on(movie).setOutputEffect(define(L"音声再生"));
  on(movie).pruneEffects();
  EXPECT_EQ(names(movie), (Names{L"動画ファイル", L"音声再生", L"音量調整", L"両用フィルタ"}));
  EXPECT_EQ(movie.effects[2], before[3]);
  EXPECT_EQ(movie.effects[3], before[4]);
}

TEST_F(EffectManagerTest, PruningAfterAnotherInputRestoresTheDefaultOutputAtIndexOne) {
  Object object;
  add(object, {L"テキスト", L"ぼかし", L"両用フィルタ"});
  const std::shared_ptr<EffectBase> both = object.effects[3];
  object.effects[0] = service->createEffect(L"音声ファイル");
  on(object).pruneEffects();
  EXPECT_EQ(names(object), (Names{L"音声ファイル", L"音声再生", L"両用フィルタ"}));
  EXPECT_EQ(object.effects[2], both);
  EXPECT_EQ(EffectManager::getObjectType(object), 2);

  // An output removed by hand comes back in front of the filters.
  Object lost;
  add(lost, {L"画像ファイル", L"ぼかし"});
  on(lost).removeEffect(*lost.effects[1]);
  EXPECT_EQ(names(lost), (Names{L"画像ファイル", L"ぼかし"}));
  on(lost).pruneEffects();
  EXPECT_EQ(names(lost), (Names{L"画像ファイル", L"標準描画", L"ぼかし"}));
}

TEST_F(EffectManagerTest, PruningControlAndFilterObjects) {
  // A filter for both stays on a scene change once it stands there; others go.
  Object change;
  add(change, {L"シーンチェンジ"});
  push(change, L"両用フィルタ");
  push(change, L"ぼかし");
  on(change).pruneEffects();
  EXPECT_EQ(names(change), (Names{L"シーンチェンジ", L"両用フィルタ"}));

  Object camera;
  add(camera, {L"カメラ制御", L"並行光源(カメラ制御)"});
  push(camera, L"両用フィルタ");
  on(camera).pruneEffects();
  EXPECT_EQ(names(camera), (Names{L"カメラ制御", L"並行光源(カメラ制御)"}));

  Object filters;
  add(filters, {L"ぼかし"});
  push(filters, L"音量調整");
  push(filters, L"両用フィルタ");
  on(filters).pruneEffects();
  EXPECT_EQ(names(filters), (Names{L"ぼかし", L"両用フィルタ"}));

  Object empty;
  on(empty).pruneEffects();
  EXPECT_TRUE(empty.effects.empty());
}

TEST_F(EffectManagerTest, CopyingAChainCopiesValuesAndSwitchesButNotLocks) {
  Object source;
  add(source, {L"テキスト", L"ぼかし"});
  source.effects[0]->item<EffectItemNumber>(L"サイズ").setValue(0, 77.5);
  source.effects[2]->item<EffectItemNumber>(L"範囲").setValue(0, 12);
  source.effects[2]->disable = true;
  source.effects[2]->hide = true;
  source.effects[2]->lock = true;

  Object target;
  add(target, {L"グループ制御"});
  ASSERT_TRUE(target.control);
  on(target).copyChainFrom(source);
  EXPECT_EQ(names(target), names(source));
  EXPECT_FALSE(target.control);
  EXPECT_TRUE(target.effects[2]->disable);
  EXPECT_TRUE(target.effects[2]->hide);
  EXPECT_FALSE(target.effects[2]->lock);
  source.effects[2]->lock = false;  // with the lock set aside, each copy reads as its source
  for (std::size_t i = 0; i < target.effects.size(); ++i) {
    EXPECT_NE(target.effects[i], source.effects[i]) << "index " << i;
    EXPECT_EQ(target.effects[i]->saveIniSectionParameter(), source.effects[i]->saveIniSectionParameter())
        << "index " << i;
  }
  EXPECT_DOUBLE_EQ(target.effects[0]->item<EffectItemNumber>(L"サイズ").getValue(0), 77.5);
  EXPECT_DOUBLE_EQ(target.effects[2]->item<EffectItemNumber>(L"範囲").getValue(0), 12);

  Object group;
  add(group, {L"グループ制御"});
  Object copy;
  on(copy).copyChainFrom(group);
  EXPECT_EQ(names(copy), (Names{L"グループ制御"}));
  EXPECT_TRUE(copy.control);
}

}  // namespace
