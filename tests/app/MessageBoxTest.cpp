#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "dialog/MessageBox.h"
#include "system/Exception.h"
#include "system/IniFile.h"
#include "system/Log.h"

namespace {

struct Shown {
  std::wstring text, caption;
  Dialog::MessageKind kind;
};

class ScriptedPresenter : public Dialog::MessagePresenter {
 public:
  explicit ScriptedPresenter(std::optional<bool> answer) : answer_(answer) {}
  std::optional<bool> show(const std::wstring& text, const std::wstring& caption, Dialog::MessageKind kind) override {
    shown.push_back({text, caption, kind});
    return answer_;
  }
  std::vector<Shown> shown;

 private:
  std::optional<bool> answer_;
};

class MessageBoxTest : public ::testing::Test {
 protected:
  void SetUp() override {
    System::Log::setHandler([this](const System::Log::Type& type, const char* place, const char* message) {
      logged_.push_back(std::string(type.name) + " | " + place + " | " + message);
    });
  }
  void TearDown() override {
    Dialog::setPresenter(nullptr);
    System::Log::resetHandler();
  }
  std::vector<std::string> logged_;
};

TEST_F(MessageBoxTest, ExceptionBoxAddsTheBackupSentenceAndLogsFirst) {
  auto presenter = std::make_shared<ScriptedPresenter>(true);
  Dialog::setPresenter(presenter);
  const System::NoteException failure("Render::RenderVideoWorker::render", "render failed.");
  logged_.clear();
  Dialog::showException(failure);
  ASSERT_EQ(presenter->shown.size(), 1u);
  EXPECT_EQ(presenter->shown[0].text,
            L"render failed.\n\n[Place]\nRender::RenderVideoWorker::render()"
            L"\n\nプロジェクトをバックアップしてアプリケーションを終了します");
  EXPECT_EQ(presenter->shown[0].caption, Dialog::exceptionCaption());
  EXPECT_EQ(presenter->shown[0].caption.rfind(L"Sorvel Vantor2 [", 0), 0u);
  EXPECT_EQ(presenter->shown[0].caption.substr(presenter->shown[0].caption.size() - 25), L"] : Application Exception");
  ASSERT_EQ(logged_.size(), 1u);
  EXPECT_EQ(logged_[0],
            "ERROR | Dialog::showException | show exception dialog.\n"
            "render failed.\n\n[Place]\nRender::RenderVideoWorker::render()");
}

TEST_F(MessageBoxTest, ErrorBoxIsFormattedAndCutAtTheBuffer) {
  auto presenter = std::make_shared<ScriptedPresenter>(true);
  Dialog::setPresenter(presenter);
  Dialog::showError(L"%ls が見つかりません (%d)", L"clip.avi", 2);
  Dialog::showError("%s", std::string(3000, 'x').c_str());
  ASSERT_EQ(presenter->shown.size(), 2u);
  EXPECT_EQ(presenter->shown[0].text, L"clip.avi が見つかりません (2)");
  EXPECT_EQ(presenter->shown[0].caption, L"Sorvel Vantor2");
  EXPECT_EQ(presenter->shown[1].text.size(), 1023u);
  EXPECT_EQ(logged_.at(0), "ERROR | Dialog::showError | show error dialog.\nclip.avi が見つかりません (2)");
}

TEST_F(MessageBoxTest, QuestionWithoutDisplayTakesTheCallersAnswer) {
  EXPECT_TRUE(Dialog::confirm(L"復元しますか？", true));
  EXPECT_FALSE(Dialog::confirm(L"復元しますか？", false));
  auto headless = std::make_shared<ScriptedPresenter>(std::nullopt);
  Dialog::setPresenter(headless);
  EXPECT_TRUE(Dialog::confirm(L"復元しますか？", true));
  auto cancelling = std::make_shared<ScriptedPresenter>(false);
  Dialog::setPresenter(cancelling);
  EXPECT_FALSE(Dialog::confirm(L"復元しますか？", true));
  EXPECT_EQ(cancelling->shown.at(0).kind, Dialog::MessageKind::Confirmation);
}

TEST_F(MessageBoxTest, AWarningOnceIsShownAgainOnlyForANewValue) {
  auto presenter = std::make_shared<ScriptedPresenter>(true);
  Dialog::setPresenter(presenter);
  System::IniFile memory;
  memory.loadMemory("[Direct3D]\r\nMultiSampleCount=8\r\n");
  Dialog::showWarningOnce(L"no ordered views", &memory, "Direct3D", "ROVWarningRenderer", "llvmpipe");
  Dialog::showWarningOnce(L"no ordered views", &memory, "Direct3D", "ROVWarningRenderer", "llvmpipe");
  ASSERT_EQ(presenter->shown.size(), 1u);
  EXPECT_EQ(memory.section("Direct3D")["ROVWarningRenderer"].text, "llvmpipe");
  Dialog::showWarningOnce(L"no ordered views", &memory, "Direct3D", "ROVWarningRenderer", "other GPU");
  EXPECT_EQ(presenter->shown.size(), 2u);
  Dialog::showWarningOnce(L"no ordered views", nullptr, "Direct3D", "ROVWarningRenderer", "other GPU");
  EXPECT_EQ(presenter->shown.size(), 3u);
}

}  // namespace
