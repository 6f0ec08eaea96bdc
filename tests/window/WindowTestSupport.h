// A window service over the fake platform with the standard clients, as the window
// tests share it: separator 4, footer 20, the main window 1000 x 600.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "fakes/FakePlatform.h"
#include "system/IniFile.h"
#include "window/ClientTable.h"
#include "window/WindowService.h"

namespace TestSupport {

struct PixelBox {
  std::int32_t x, y, width, height;
  friend bool operator==(const PixelBox&, const PixelBox&) = default;
};

inline PixelBox pixels(const Window::WindowClient& client) {
  return {client.x(), client.y(), client.width(), client.height()};
}

class WindowFixture {
 public:
  explicit WindowFixture(const std::string& ini = std::string(), std::int32_t explorers = 2) {
    ini_.loadMemory(ini);
    style_.separatorSize = 4;
    style_.footerHeight = 20;
    style_.groupTabHeight = 20;
    service_ = std::make_unique<Window::WindowService>(platform_, style_, &ini_);
    for (const Window::ClientDefinition& definition : Window::standardClients(explorers)) {
      clients_.push_back(std::make_unique<Window::WindowClient>(*service_, definition));
    }
    service_->show();
    main().resizeTo(1000, 600);
  }
  ~WindowFixture() {
    clients_.clear();
    service_.reset();
  }

  FakeWindow& main() { return *platform_.windows().front(); }
  Window::WindowService& service() { return *service_; }
  FakePlatformServices& platform() { return platform_; }
  Window::WindowClient& client(const std::wstring& title) { return *service_->findClient(title); }
  // Destroys clients and service, so that every group is stored into the ini.
  System::IniFile& closeAll() {
    clients_.clear();
    service_.reset();
    return ini_;
  }
  std::string value(const std::string& section, const std::string& key) {
    return ini_.section(section)[key].text;
  }

 private:
  FakePlatformServices platform_;
  System::IniFile ini_;
  Window::WindowStyle style_;
  std::unique_ptr<Window::WindowService> service_;
  std::vector<std::unique_ptr<Window::WindowClient>> clients_;
};

inline const wchar_t* const kPreview = L"プレビュー編集";
inline const wchar_t* const kTimeline = L"レイヤー編集";
inline const wchar_t* const kSettings = L"オブジェクト設定";
inline const wchar_t* const kObjects = L"オブジェクトリスト";
inline const wchar_t* const kScenes = L"シーンリスト";
inline const wchar_t* const kExplorer = L"メディアエクスプローラー:1";
inline const wchar_t* const kExplorer2 = L"メディアエクスプローラー:2";
inline const wchar_t* const kText = L"テキスト編集";
inline const wchar_t* const kColor = L"色設定";
inline const wchar_t* const kLog = L"ログ表示";

}  // namespace TestSupport
