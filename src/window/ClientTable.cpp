#include "window/ClientTable.h"

#include "system/Text.h"

namespace Window {

namespace {

struct Row {
  const char* group;
  const wchar_t* title;
  std::int32_t kind;
  float left, top, right, bottom;
  Area area;
  bool shown;
};

// The explorers go between the scene list and the colour editor.
constexpr Row kBefore[] = {
    {"Window.preview", L"プレビュー編集", 1, 0.2f, 0.0f, 0.8f, 0.7f, Area::Top, true},
    {"Window.edit", L"レイヤー編集", 1, 0.2f, 0.7f, 0.5f, 1.0f, Area::Bottom, true},
    {"Window.setting", L"オブジェクト設定", 1, 0.8f, 0.3f, 1.0f, 0.7f, Area::Right, true},
    {"Window.object.list", L"オブジェクトリスト", 1, 0.8f, 0.0f, 1.0f, 0.3f, Area::Right, true},
    {"Window.scene.list", L"シーンリスト", 1, 0.0f, 0.7f, 0.2f, 1.0f, Area::Left, true},
};
constexpr Row kAfter[] = {
    {"Window.setting.color", L"色設定", 2, 0.8f, 0.7f, 1.0f, 1.0f, Area::Right, false},
    {"Window.setting.text", L"テキスト編集", 2, 0.5f, 0.7f, 0.8f, 1.0f, Area::Bottom, false},
    {"Window.setting.time", L"時間制御編集", 2, 0.5f, 0.7f, 0.8f, 1.0f, Area::Bottom, false},
    {"Window.log", L"ログ表示", 1, 0.0f, 0.7f, 1.0f, 1.0f, Area::Centre, false},
};

ClientDefinition definition(const Row& row) {
  return {row.group, row.title, row.kind, row.left, row.top, row.right, row.bottom, row.area, row.shown};
}

}  // namespace

std::vector<ClientDefinition> standardClients(std::int32_t explorers) {
  std::vector<ClientDefinition> definitions;
  for (const Row& row : kBefore) definitions.push_back(definition(row));
  for (std::int32_t n = 1; n <= explorers; ++n) {
    definitions.push_back({"Window.explorer:" + std::to_string(n), L"メディアエクスプローラー:" + std::to_wstring(n), 0, 0.0f,
                     0.0f, 0.2f, 0.7f, Area::Left, n == 1});
  }
  for (const Row& row : kAfter) definitions.push_back(definition(row));
  return definitions;
}

ClientDefinition pluginClient(const std::string& name, const std::wstring& title) {
  return {"Window." + name, title, 0, 0.0f, 0.7f, 1.0f, 1.0f, Area::Centre, false};
}

}  // namespace Window
