// A window holding one of each control, for looking at them and for screenshots under
// Xvfb: `sorvel_control_gallery [--quit-after <ms>]`.
#include <cstdlib>
#include <cstring>
#include <memory>

#include "app/Platform.h"
#include "control/ButtonControl.h"
#include "control/EditControl.h"
#include "control/ScrollBarControl.h"
#include "control/SliderInputControl.h"
#include "control/TrackBarControl.h"
#include "control/WindowMouseService.h"
#include "platform/qt/QtPlatform.h"

namespace {

// The window's events reach the mouse service once it exists.
class Forwarder : public Window::WindowEventsBase {
 public:
  Window::WindowMouseService* service = nullptr;
  App::Platform* platform = nullptr;
  void resized(std::int32_t width, std::int32_t height) override {
    if (!service) return;
    service->setBounds({0, 0, width, height});
    paintRequested();
  }
  void paintRequested() override {
    if (!service) return;
    Media::RenderTarget& target = service->target();
    target.beginDraw();
    target.clear(service->style().background);
    service->paint();
    target.endDraw();
  }
  void closeRequested() override { platform->quit(); }
  void mouseMoved(std::int32_t x, std::int32_t y, std::uint32_t m) override { service->mouseMoved(x, y, m); }
  void mousePressed(Window::MouseButton b, std::int32_t x, std::int32_t y, std::uint32_t m) override {
    service->mousePressed(b, x, y, m);
  }
  void mouseReleased(Window::MouseButton b, std::int32_t x, std::int32_t y, std::uint32_t m) override {
    service->mouseReleased(b, x, y, m);
  }
  void mouseLeft() override { service->mouseLeft(); }
  void wheelTurned(std::int32_t x, std::int32_t y, std::int32_t d, std::uint32_t m) override {
    service->wheelTurned(x, y, d, m);
  }
  void keyPressed(std::int32_t k, std::uint32_t m, bool r) override { service->keyPressed(k, m, r); }
  void keyReleased(std::int32_t k, std::uint32_t m) override { service->keyReleased(k, m); }
  void textEntered(const std::wstring& text) override { service->textEntered(text); }
  void focusLost() override { service->focusLost(); }
};

}  // namespace

int main(int argc, char** argv) {
  int quitAfter = 0;
  for (int i = 1; i + 1 < argc; ++i) {
    if (std::strcmp(argv[i], "--quit-after") == 0) quitAfter = std::atoi(argv[i + 1]);
  }
  std::unique_ptr<App::Platform> platform = Platform::createQtPlatform(argc, argv);
  Window::PlatformServices& services = platform->windowServices();
  Forwarder forwarder;
  forwarder.platform = platform.get();
  Window::WindowOptions options;
  options.title = L"Controls";
  options.geometry = {40, 40, 560, 400};
  std::unique_ptr<Window::PlatformWindow> window = services.createWindow(options, forwarder);
  Window::ControlStyle style;
  style.font.family = L"Noto Sans CJK JP";
  Window::WindowMouseService service(services, *window, style);

  Window::WindowControl& root = service.root();
  Control::TextButtonControl button(&root);
  button.setLayout(10, 10, 100, 24);
  button.text = L"ボタン";
  Control::CheckButtonControl check(&root);
  check.setLayout(120, 10, 100, 24);
  check.text = L"オン";
  check.textOff = L"オフ";
  Control::RepeatClickButtonControl repeat(&root);
  repeat.setLayout(230, 10, 24, 24);
  repeat.text = L"+";
  Control::TextButtonWheelControl wheelButton(&root);
  wheelButton.setLayout(264, 10, 80, 24);
  int wheelValue = 3;
  wheelButton.text = L"3";
  wheelButton.onStep = [&](std::int32_t step) {
    wheelValue += step;
    wheelButton.text = std::to_wstring(wheelValue);
    wheelButton.paint();
  };
  Control::TextClearButtonControl clearButton(&root);
  clearButton.setLayout(354, 10, 140, 24);
  clearButton.text = L"filter";
  Control::TextControl label(&root);
  label.setLayout(10, 44, 200, 24);
  label.text = L"テキスト: 静的な文字";
  Control::RectControl swatch(&root);
  swatch.setLayout(220, 44, 60, 24);
  swatch.color = {0.85f, 0.35f, 0.2f, 1.0f};
  Control::SliderInputControl slider(&root);
  slider.setLayout(10, 80, 400, 22);
  slider.firstSection = true;
  Control::TrackBarControl track(&root);
  track.setLayout(10, 112, 400, 22);
  track.setMarks(0.2f, 0.8f);
  Control::EditControl line(&root);
  line.setLayout(10, 144, 300, 24);
  Control::EditControl lines(&root, true);
  lines.setLayout(10, 178, 300, 120);
  Control::ScrollBarControl vertical(&root, true);
  vertical.setLayout(314, 178, 14, 120);
  Control::ScrollBarControl horizontal(&root, false);
  horizontal.setLayout(10, 306, 300, 14);
  auto focus = std::make_shared<std::vector<Control::EditControl*>>(std::vector<Control::EditControl*>{&line, &lines});
  line.focusList = lines.focusList = focus;

  forwarder.service = &service;
  window->show(false);
  service.setBounds({0, 0, window->clientWidth(), window->clientHeight()});
  slider.setRange(0.0, 100.0, 37.5, 0.1);
  track.setRange(0, 100);
  track.setValue(40);
  line.setText(L"一行の入力 text");
  lines.setText(L"複数行の入力\nsecond line\nthird line");
  vertical.setRange(0, 99);
  vertical.setPosition(20, 39);
  horizontal.setRange(0, 99);
  horizontal.setPosition(50, 89);
  service.setFocus(&line);
  line.setSelection(0, 5);
  line.restartCaret();
  forwarder.paintRequested();
  if (quitAfter > 0) services.startTimer(quitAfter, [&] { platform->quit(); });
  platform->run();
  return 0;
}
