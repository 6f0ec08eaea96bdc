// The message boxes on Qt: QMessageBox with a display, and without one a stand-in that
// writes the box to standard error and never blocks.
#pragma once

#include <atomic>
#include <memory>

#include "dialog/MessageBox.h"

namespace Platform {

// Once `closing` is set no box is shown any more: the program is on its way down.
std::shared_ptr<Dialog::MessagePresenter> createMessagePresenter(bool hasDisplay,
                                                                 std::shared_ptr<std::atomic<bool>> closing);

}  // namespace Platform
