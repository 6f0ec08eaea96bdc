#include "effect/movement/BuiltinMovements.h"

#include "effect/movement/InterpolationMove.h"
#include "effect/movement/InterpolationSpeed.h"
#include "effect/movement/LinearMove.h"
#include "effect/movement/LinearSpeed.h"
#include "effect/movement/RandomMove.h"
#include "effect/movement/SimpleMovements.h"
#include "system/Exception.h"
#include "system/Text.h"

namespace Effect {

namespace {

// name, fixed count, acceleration, deceleration, two-point, section anchors, in the
// menu, time control, parameter defaults.
const MovementTraits kNoMove{L"移動無し", 1, -1, -1, 0, true, true, false};
const MovementTraits kMovieRange{L"再生範囲", 2, -1, -1, 0, true, false, false};
const MovementTraits kLinearMove{L"直線移動", -1, 0, 0, 0, true, true, false};
const MovementTraits kLinearSpeed{L"直線移動(時間制御)", -1, 0, 0, 0, false, true, true};
const MovementTraits kInterpolationMove{L"補間移動", -1, 1, 1, -1, true, true, false};
const MovementTraits kInterpolationSpeed{L"補間移動(時間制御)", -1, -1, -1, -1, false, true, true};
const MovementTraits kRandomMove{L"ランダム移動", -1, -1, -1, 2, true, true, false, {15.0}};
const MovementTraits kTeleportationMove{L"瞬間移動", -1, -1, -1, -1, true, true, false};
const MovementTraits kSpeedMove{L"移動量指定", -1, -1, -1, 2, true, true, false};

std::vector<std::shared_ptr<const MovementBase>> makeAll() {
  return {
      std::make_shared<NoMove>(kNoMove),
      std::make_shared<MovieRange>(kMovieRange),
      std::make_shared<LinearMove>(kLinearMove),
      std::make_shared<LinearSpeed>(kLinearSpeed),
      std::make_shared<InterpolationMove>(kInterpolationMove),
      std::make_shared<InterpolationSpeed>(kInterpolationSpeed),
      std::make_shared<RandomMove>(kRandomMove),
      std::make_shared<TeleportationMove>(kTeleportationMove),
      std::make_shared<SpeedMove>(kSpeedMove),
  };
}

MovementResolver& resolver() {
  static MovementResolver installed;
  return installed;
}

}  // namespace

namespace BuiltinMovements {

const std::vector<std::shared_ptr<const MovementBase>>& all() {
  static const std::vector<std::shared_ptr<const MovementBase>> movements = makeAll();
  return movements;
}

const std::shared_ptr<const MovementBase>& noMove() { return all()[0]; }
const std::shared_ptr<const MovementBase>& movieRange() { return all()[1]; }
const std::shared_ptr<const MovementBase>& linearSpeed() { return all()[3]; }

}  // namespace BuiltinMovements

std::shared_ptr<const MovementBase> findMovement(std::wstring_view key) {
  if (resolver()) return resolver()(key);
  for (const auto& movement : BuiltinMovements::all()) {
    if (movement->name() == key) return movement;
  }
  throw System::NoteException("Effect::EffectService::findMovement", "not found movement.",
                              System::Text::toUtf8(key));
}

void setMovementResolver(MovementResolver resolver) { Effect::resolver() = std::move(resolver); }

}  // namespace Effect
