#include "effect/item/FigureList.h"

#include "media/figure/FigureResource.h"

namespace Effect::FigureList {

namespace {

std::shared_ptr<const SelectList>& shared() {
  static std::shared_ptr<const SelectList> list;
  return list;
}

// The figure list's own names, so that an index means the same figure here and there.
std::shared_ptr<const SelectList> build() { return SelectList::make(Resource::FigureResource::listNames()); }

}  // namespace

std::shared_ptr<const SelectList> get() {
  if (!shared()) shared() = build();
  return shared();
}

void reset() { shared().reset(); }

}  // namespace Effect::FigureList
