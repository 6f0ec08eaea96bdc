#include "control/WindowControlRenderTarget.h"

#include "control/WindowMouseService.h"

namespace Window {

void WindowControlRenderTarget::paint() {
  if (!shown() || service() == nullptr || rect.w <= 0 || rect.h <= 0) return;
  Media::RenderTarget& target = service()->target();
  {
    Media::DrawScope scope(target, {static_cast<float>(rect.x), static_cast<float>(rect.y),
                                    static_cast<float>(rect.x + rect.w), static_cast<float>(rect.y + rect.h)});
    draw(target, service()->style());
  }
  WindowControl::paint();
}

}  // namespace Window
