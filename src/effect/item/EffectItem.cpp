#include "effect/item/EffectItem.h"

#include "system/Exception.h"

namespace Effect {

void EffectItem::setFilePath(const std::wstring& /*path*/) {
  throw System::NoteException("Effect::EffectItem::setFilePath", "not implement.");
}

}  // namespace Effect
