// The message boxes on Qt: QMessageBox with a display, and without one a stand-in that
// writes the box to standard error and never blocks.
#pragma once

#include <memory>

#include "dialog/MessageBox.h"

namespace Platform {

std::shared_ptr<Dialog::MessagePresenter> createMessagePresenter(bool hasDisplay);

}  // namespace Platform
