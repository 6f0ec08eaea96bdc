#include "effect/input/TextInput.h"

namespace Effect {

namespace {

// The rows of the decoration table that the text drawing reads by index.
std::shared_ptr<const SelectList> decorationList() {
  static const auto list = SelectList::make({L"標準文字", L"影付き文字", L"影付き文字(薄)", L"縁取り文字",
                                             L"縁取り文字(細)", L"縁取り文字(太)", L"縁取り文字(角)"});
  return list;
}

// The rows of the alignment table: nine horizontal placements, then nine vertical ones.
std::shared_ptr<const SelectList> alignList() {
  static const auto list = SelectList::make({
      L"左寄せ[上]",
      L"中央揃え[上]",
      L"右寄せ[上]",
      L"左寄せ[中]",
      L"中央揃え[中]",
      L"右寄せ[中]",
      L"左寄せ[下]",
      L"中央揃え[下]",
      L"右寄せ[下]",
      L"縦書 上寄[右]",
      L"縦書 中央[右]",
      L"縦書 下寄[右]",
      L"縦書 上寄[中]",
      L"縦書 中央[中]",
      L"縦書 下寄[中]",
      L"縦書 上寄[左]",
      L"縦書 中央[左]",
      L"縦書 下寄[左]",
  });
  return list;
}

constexpr ItemRow kItems[] = {
    number(L"サイズ", 40, 1, 1000, 0.01),
    number(L"字間", 0, -500, 500, 0.01),
    number(L"行間", 0, -500, 500, 0.01),
    number(L"表示速度", 0, 0, 100, 0.01),
    fontSelect(L"フォント"),
    color(L"文字色", kWhite),
    color(L"影・縁色", kBlack),
    select(L"文字装飾", decorationList),
    select(L"文字揃え", alignList),
    checkButton(L"B", false, 0.0f, 0.5f),
    checkButton(L"I", false, 0.5f, 1.0f),
    text(L"テキスト").notifying(),
    // Switching to one object per character changes what the object draws, so the
    // effect must hear of it.
    check(L"文字毎に個別オブジェクト", false).notifying(),
    check(L"移動座標上に表示", false),
    check(L"オブジェクトの長さを自動調節", false).notifying(),
};

}  // namespace

const EffectInfo TextInput::kInfo{L"テキスト", EffectType::Input, EffectMedia::Video, EffectMedia::Video, L"", kItems};

}  // namespace Effect
