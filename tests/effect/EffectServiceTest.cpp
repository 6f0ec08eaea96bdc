// The registry: what is registered in which order, look-ups, menu lists, stored
// defaults, and the effect section text of every built-in effect.
#include <gtest/gtest.h>

#include <set>

#include "edit/Object.h"
#include "effect/EffectService.h"
#include "effect/filter/BokashiFilter.h"
#include "effect/filter/ColorFilter.h"
#include "effect/item/EffectItemInteger.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/movement/MovementBase.h"
#include "system/File.h"
#include "system/IniFile.h"
#include "system/ReplacingFile.h"

namespace {

using Effect::EffectService;

class EffectServiceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { service = new EffectService(); }
  static void TearDownTestSuite() {
    delete service;
    service = nullptr;
  }
  static EffectService* service;
};

EffectService* EffectServiceTest::service = nullptr;

struct Registered {
  const wchar_t* key;
  int type;
  int media;
  int placement;
  const wchar_t* category;
};

// The registration order is the order of the effect menus.
const Registered kRegistered[] = {
    {L"動画ファイル", 1, 3, 3, L""}, {L"画像ファイル", 1, 1, 1, L""}, {L"音声ファイル", 1, 2, 2, L""},
    {L"モデルファイル", 1, 1, 1, L""}, {L"テキスト", 1, 1, 1, L""}, {L"図形", 1, 1, 1, L""},
    {L"シーン", 1, 3, 3, L""}, {L"フレームバッファ", 1, 1, 1, L""}, {L"オーディオバッファ", 1, 2, 2, L""},
    {L"直前オブジェクト", 1, 1, 1, L""}, {L"標準描画", 2, 1, 1, L""}, {L"音声再生", 2, 2, 2, L""},
    {L"映像再生", 2, 3, 3, L""}, {L"基本出力", 2, 1, 1, L""}, {L"パーティクル出力", 2, 1, 1, L""},
    {L"部分フィルタ", 4, 1, 1, L""}, {L"グループ制御", 4, 1, 1, L"オブジェクト制御"},
    {L"グループ制御(音声)", 4, 2, 2, L"オブジェクト制御"}, {L"カメラ制御", 4, 1, 4, L"オブジェクト制御"},
    {L"時間制御(オブジェクト)", 4, 3, 5, L"オブジェクト制御"}, {L"音声波形表示", 1, 1, 1, L"カスタムオブジェクト"},
    {L"色調補正", 3, 1, 1, L"色調整"}, {L"グラデーション", 3, 1, 1, L"色調整"}, {L"単色化", 3, 1, 1, L"色調整"},
    {L"特定色域変換", 3, 1, 1, L"色調整"}, {L"拡張色設定", 3, 1, 1, L"色調整"},
    {L"クリッピング", 3, 1, 1, L"クリッピング"}, {L"斜めクリッピング", 3, 1, 1, L"クリッピング"},
    {L"扇クリッピング", 3, 1, 1, L"クリッピング"}, {L"マスク", 3, 1, 1, L"クリッピング"},
    {L"ぼかし", 3, 1, 1, L"ぼかし"}, {L"レンズブラー", 3, 1, 1, L"ぼかし"}, {L"放射ブラー", 3, 1, 1, L"ぼかし"},
    {L"方向ブラー", 3, 1, 1, L"ぼかし"}, {L"境界ぼかし", 3, 1, 1, L"ぼかし"}, {L"グロー", 3, 1, 1, L"光効果"},
    {L"発光", 3, 1, 1, L"光効果"}, {L"閃光", 3, 1, 1, L"光効果"}, {L"拡散光", 3, 1, 1, L"光効果"},
    {L"ライト", 3, 1, 1, L"光効果"}, {L"色ずれ", 3, 1, 1, L"光効果"}, {L"縁取り", 3, 1, 1, L"装飾"},
    {L"枠線", 3, 1, 1, L"装飾"}, {L"ドロップシャドウ", 3, 1, 1, L"装飾"}, {L"凸エッジ", 3, 1, 1, L"装飾"},
    {L"クロマキー", 3, 1, 1, L"抽出"}, {L"ルミナンスキー", 3, 1, 1, L"抽出"}, {L"カラーキー", 3, 1, 1, L"抽出"},
    {L"エッジ抽出", 3, 1, 1, L"抽出"}, {L"波紋", 3, 1, 1, L"変形"}, {L"ラスター", 3, 1, 1, L"変形"},
    {L"極座標変換", 3, 1, 1, L"変形"}, {L"ディスプレイスメントマップ", 3, 1, 1, L"変形"},
    {L"リサイズ", 3, 1, 1, L"変形"}, {L"シャープ", 3, 1, 1, L"加工"}, {L"ノイズ除去", 3, 1, 1, L"加工"},
    {L"インターレース解除", 3, 1, 1, L"加工"}, {L"ノイズ", 3, 1, 1, L"加工"}, {L"モザイク", 3, 1, 1, L"加工"},
    {L"オフスクリーン描画", 3, 1, 1, L""}, {L"画像ループ", 3, 1, 1, L"配置"}, {L"オブジェクト分割", 3, 1, 1, L"配置"},
    {L"フェード", 3, 1, 1, L"切り替え効果"}, {L"ワイプ", 3, 1, 1, L"切り替え効果"},
    {L"シーンチェンジ", 4, 1, 5, L"シーンチェンジ"}, {L"振動", 3, 1, 1, L"アニメーション効果"},
    {L"スクリプト制御", 3, 1, 1, L"アニメーション効果"}, {L"並行光源(カメラ制御)", 3, 4, 4, L"カメラ制御"},
    {L"環境光(カメラ制御)", 3, 4, 4, L"カメラ制御"}, {L"ライトブルーム(カメラ制御)", 3, 4, 4, L"カメラ制御"},
    {L"材質設定(カメラ制御)", 3, 1, 1, L"カメラ制御"}, {L"カメラ制御オプション", 3, 1, 1, L"カメラ制御"},
    {L"座標", 3, 1, 1, L"基本効果"}, {L"拡大率", 3, 1, 1, L"基本効果"}, {L"透明度", 3, 1, 1, L"基本効果"},
    {L"回転", 3, 1, 1, L"基本効果"}, {L"領域拡張", 3, 1, 1, L"基本効果"}, {L"反転", 3, 1, 1, L"基本効果"},
    {L"音量フェード", 3, 2, 2, L"音声効果"}, {L"モノラル化", 3, 2, 2, L"音声効果"}, {L"音量調整", 3, 2, 2, L"音声効果"},
};

TEST_F(EffectServiceTest, RegistersMovementsThenEffectsInMenuOrder) {
  std::vector<std::wstring> movements;
  for (const auto& entry : service->movements()) movements.push_back(entry.key);
  EXPECT_EQ(movements, (std::vector<std::wstring>{L"移動無し", L"再生範囲", L"直線移動", L"直線移動(時間制御)", L"補間移動",
                                                  L"補間移動(時間制御)", L"ランダム移動", L"瞬間移動", L"移動量指定"}));
  ASSERT_EQ(service->effects().size(), std::size(kRegistered));
  std::size_t index = 0;
  for (const auto& entry : service->effects()) {
    const Registered& expected = kRegistered[index++];
    const Effect::EffectDefine& define = *entry.value;
    SCOPED_TRACE(testing::Message() << "effect " << index);
    EXPECT_EQ(define.key(), expected.key);
    EXPECT_EQ(static_cast<int>(define.type()), expected.type);
    EXPECT_EQ(static_cast<int>(define.media()), expected.media);
    EXPECT_EQ(static_cast<int>(define.placement()), expected.placement);
    EXPECT_EQ(define.category(), expected.category);
    EXPECT_EQ(define.number(), static_cast<std::int32_t>(index + 8));  // after the nine movements
  }
}

TEST_F(EffectServiceTest, UnknownKeysFailWithTheSystemsTexts) {
  try {
    service->findEffect(L"無い効果");
    ADD_FAILURE();
  } catch (const System::NoteException& exception) {
    EXPECT_NE(exception.text().find("not found effect."), std::string::npos);
    EXPECT_NE(exception.text().find("無い効果"), std::string::npos);
  }
  EXPECT_THROW(service->findMovement(L"無い移動"), System::NoteException);
  EXPECT_EQ(service->createEffect(L"無い効果"), nullptr);
  EXPECT_THROW(service->findEffectOrOldName(L"無い効果"), System::NoteException);
  EXPECT_EQ(service->createEffect(L"ぼかし")->name(), service->findEffect(L"ぼかし").prototype().name());
}

TEST_F(EffectServiceTest, ADuplicateKeyKeepsTheFirst) {
  const auto before = service->effects().size();
  Effect::EffectBase* first = &service->findEffect(L"色調補正").prototype();
  EXPECT_EQ(service->registerEffect<Effect::ColorFilter>(), nullptr);
  EXPECT_EQ(service->effects().size(), before);
  EXPECT_EQ(&service->findEffect(L"色調補正").prototype(), first);
  EXPECT_EQ(&service->getDefaultEffect<Effect::BokashiFilter>(), &service->findEffect(L"ぼかし").prototype());
}

TEST_F(EffectServiceTest, MenuListsFilterByRoleAndMedia) {
  const auto keys = [](const std::vector<Effect::EffectMenuDefine*>& defines) {
    std::set<std::wstring> found;
    for (const auto* define : defines) found.insert(define->key());
    return found;
  };
  const std::set<std::wstring> both = keys(service->listEffects(1, 3, 0));
  EXPECT_TRUE(both.count(L"画像ファイル") && both.count(L"音声ファイル") && both.count(L"動画ファイル"));
  const std::set<std::wstring> camera = keys(service->listEffects(0, 4, 0));
  EXPECT_EQ(camera, (std::set<std::wstring>{L"並行光源(カメラ制御)", L"環境光(カメラ制御)", L"ライトブルーム(カメラ制御)"}));
  const std::set<std::wstring> audioFilters = keys(service->listEffects(201, 2, 2));
  EXPECT_EQ(audioFilters, (std::set<std::wstring>{L"音量フェード", L"モノラル化", L"音量調整"}));
  const std::set<std::wstring> objects = keys(service->listEffects(200, 0, 0));
  EXPECT_TRUE(objects.count(L"グループ制御") && objects.count(L"テキスト"));
  EXPECT_TRUE(objects.count(L"パーティクル出力"));
  EXPECT_FALSE(objects.count(L"ぼかし") || objects.count(L"標準描画"));
  EXPECT_EQ(service->getPairedInputEffect(service->findEffect(L"パーティクル出力").prototype())->key(), L"図形");
  // Placement 5 is offered only where it is asked for.
  EXPECT_FALSE(keys(service->listEffects(4, 0, 1)).count(L"シーンチェンジ"));
  EXPECT_TRUE(keys(service->listEffects(4, 0, 5)).count(L"シーンチェンジ"));
}

TEST_F(EffectServiceTest, OutputEffectCompletesTheChain) {
  const auto outputOf = [](const wchar_t* input) {
    return service->getOutputEffect(service->findEffect(input).prototype()).key();
  };
  EXPECT_EQ(outputOf(L"シーン"), L"映像再生");
  EXPECT_EQ(outputOf(L"フレームバッファ"), L"基本出力");
  EXPECT_EQ(outputOf(L"画像ファイル"), L"標準描画");
  EXPECT_EQ(outputOf(L"音声ファイル"), L"音声再生");
  EXPECT_THROW(outputOf(L"並行光源(カメラ制御)"), System::NoteException);
}

TEST_F(EffectServiceTest, EveryEffectsSectionTextRoundTrips) {
  for (const auto& entry : service->effects()) {
    SCOPED_TRACE(System::Text::toUtf8(entry.key));
    const std::shared_ptr<Effect::EffectBase> effect = entry.value->createInstance();
    std::set<std::wstring> names;
    for (const auto& item : effect->items()) {
      EXPECT_TRUE(names.insert(item->name()).second) << "duplicate item";
      if (auto* number = dynamic_cast<Effect::EffectItemNumber*>(item.get())) {
        EXPECT_LE(number->minValue(), number->defaultValue());
        EXPECT_LE(number->defaultValue(), number->maxValue());
      }
    }
    effect->disable = true;
    effect->lock = true;
    const std::string text = effect->saveIniSectionParameter();
    System::IniFile file;
    file.loadMemory("[Effect.0]\r\n" + text);
    const std::shared_ptr<Effect::EffectBase> loaded = entry.value->createInstance();
    loaded->loadIniSectionParameter(file.section("Effect", 0));
    EXPECT_EQ(loaded->saveIniSectionParameter(), text);
    EXPECT_TRUE(loaded->disable && loaded->lock && !loaded->hide);
  }
}

TEST_F(EffectServiceTest, SectionTextAndABadValue) {
  const std::shared_ptr<Effect::EffectBase> effect = service->createEffect(L"単色化");
  EXPECT_EQ(effect->saveIniSectionParameter(),
            "effect.name=単色化\r\n強さ=100.0\r\n色=ffffff\r\n輝度を保持する=1\r\n");
  System::IniFile file;
  file.loadMemory("[Effect.0]\r\neffect.name=単色化\r\n強さ=0.00,50.00,直線移動,0\r\n色=nonsense\r\n輝度を保持する=0\r\n");
  effect->loadIniSectionParameter(file.section("Effect", 0));
  EXPECT_EQ(effect->saveIniSectionParameter(),
            "effect.name=単色化\r\n強さ=0.0,50.0,直線移動,0\r\n色=ffffff\r\n輝度を保持する=0\r\n");
  EXPECT_THROW(effect->setItemData(*service->createEffect(L"ぼかし")), System::NoteException);
}

TEST_F(EffectServiceTest, StoredDefaultAppliesOnceAndResets) {
  Effect::EffectDefine& define = service->findEffect(L"モザイク");
  {
    System::ReplacingFile file(define.defaultFilePath());
    file.write("[Effect.0]\r\neffect.name=モザイク\r\nサイズ=40\r\n無い項目=1\r\n");
    file.commit();
  }
  const std::string constructed = define.createInstance()->saveIniSectionParameter();
  // The first use of the prototype reads the file; a key the effect lacks is ignored.
  EXPECT_NE(define.newInstance()->saveIniSectionParameter().find("サイズ=40\r\n"), std::string::npos);
  EXPECT_EQ(define.createInstance()->saveIniSectionParameter(), constructed);

  const std::shared_ptr<Effect::EffectBase> edited = define.newInstance();
  edited->item<Effect::EffectItemNumber>(L"サイズ").setValue(0, 77);
  define.saveDefault(*edited);
  EXPECT_NE(System::File::readAll(define.defaultFilePath()).find("[Effect.0]\r\neffect.name=モザイク\r\nサイズ=77\r\n"),
            std::string::npos);
  EXPECT_NE(define.newInstance()->saveIniSectionParameter().find("サイズ=77\r\n"), std::string::npos);

  define.resetDefault();
  EXPECT_FALSE(System::File::exists(define.defaultFilePath()));
  EXPECT_EQ(define.newInstance()->saveIniSectionParameter(), constructed);
}

TEST_F(EffectServiceTest, ControlObjectsGovernTheirLayerRange) {
  Edit::Object object;
  object.effects.push_back(service->createEffect(L"グループ制御"));
  object.effects.front()->item<Effect::EffectItemLayerRange>(L"対象レイヤー数").setValue(3);
  EXPECT_EQ(object.controlRange(), 3);
  Edit::Object plain;  // not a control chain: all layers, and no exception
  plain.effects.push_back(service->createEffect(L"図形"));
  EXPECT_EQ(plain.controlRange(), 0);
}

}  // namespace
