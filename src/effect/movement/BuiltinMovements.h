// The nine movements that every installation has, made once for the whole process.
// Items start with no movement before any registry exists, so these cannot wait for
// the effect registry; the registry registers these same instances.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace Effect {

class MovementBase;

namespace BuiltinMovements {

// In registration order, which is the order of the movement menu.
const std::vector<std::shared_ptr<const MovementBase>>& all();
const std::shared_ptr<const MovementBase>& noMove();       // "移動無し"
const std::shared_ptr<const MovementBase>& movieRange();   // "再生範囲"
const std::shared_ptr<const MovementBase>& linearSpeed();  // "直線移動(時間制御)"

}  // namespace BuiltinMovements

// Finds a movement by key for the item texts: through the registry when one is
// installed (it knows the script movements too), else among the built-ins. Throws
// "not found movement." for an unknown key.
std::shared_ptr<const MovementBase> findMovement(std::wstring_view key);
using MovementResolver = std::function<std::shared_ptr<const MovementBase>(std::wstring_view key)>;
// The registry installs itself here for its lifetime; an empty function uninstalls.
void setMovementResolver(MovementResolver resolver);

}  // namespace Effect
