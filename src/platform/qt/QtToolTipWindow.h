// The tool-tip window on Qt: a frameless, top-most label that the tool-tip logic places
// and shows itself (it follows the mouse where a control asks), so Qt's own tool-tip
// timing never applies. Main thread, with the application up.
#pragma once

#include <memory>

#include "control/ToolTips.h"

namespace Platform {

std::unique_ptr<Window::ToolTipWindow> createToolTipWindow();

}  // namespace Platform
