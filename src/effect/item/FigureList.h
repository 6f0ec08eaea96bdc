// The figures that 図形, the masks and the lens blur choose from: the built-in shapes in
// menu order, then the SVG files of %Figure%. Built on first use on the main thread.
#pragma once

#include <memory>

#include "effect/item/SelectList.h"

namespace Effect::FigureList {

std::shared_ptr<const SelectList> get();
// Reads the folder again (after a reload, and in tests).
void reset();

}  // namespace Effect::FigureList
