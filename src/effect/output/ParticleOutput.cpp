#include "effect/output/ParticleOutput.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "edit/Object.h"
#include "edit/Scene.h"
#include "effect/item/BlendModes.h"
#include "effect/item/EffectItemCheck.h"
#include "effect/item/EffectItemNumber.h"
#include "effect/item/EffectItemSelect.h"
#include "media/ResourceBuffer.h"
#include "render/ObjectContext.h"
#include "render/ObjectGeometry.h"
#include "render/ViewMatrix.h"

namespace Effect {

namespace {

constexpr ItemRow kItems[] = {
    number(L"X", 0, -100000, 100000, 0.01),
    number(L"Y", 0, -100000, 100000, 0.01),
    number(L"Z", 0, -100000, 100000, 0.01),
    group(L"Group", 3),
    number(L"出力頻度", 20, 0, 500, 0.1),
    number(L"出力速度", 400, 0, 20000, 0.1),
    number(L"加速度", 0, -20000, 20000, 0.1),
    number(L"出力方向", 0, -3600, 3600, 0.01),
    number(L"拡散角度", 30, 0, 360, 0.01),
    number(L"透過率", 0, 0, 100, 0.01),
    number(L"透過速度", 0, -200, 200, 0.01),
    number(L"拡大率", 100, 0, 10000, 0.001),
    number(L"拡大速度", 0, -1000, 1000, 0.001),
    number(L"回転角", 0, -3600, 3600, 0.01),
    number(L"回転速度", 0, -10, 10, 0.01),
    number(L"重力", 0, -2000, 2000, 0.01),
    number(L"生存時間", 0, 0, 600, 0.1),
    check(L"移動範囲の座標からランダムに出力", false),
    check(L"出力方向の基準を移動方向にする", false),
    check(L"回転角の基準を移動方向にする", false),
    check(L"3Dランダム回転", false),
    select(L"合成モード", BlendModes::list),
};

constexpr std::uint64_t kC1 = 0x137bd137bd137bd1;
constexpr std::uint64_t kC2 = 0x37bd137bd137bd13;
constexpr std::uint64_t kC3 = 0x7bd137bd137bd137;
constexpr std::uint64_t kC4 = 0xbd137bd137bd137b;
constexpr double kDegrees = std::numbers::pi / 180.0;

}  // namespace

// A swarm of figures: the output is offered as an object of its own, made with 図形.
const EffectInfo ParticleOutput::kInfo{L"パーティクル出力", EffectType::Output, EffectMedia::Video,
                                       EffectMedia::Video, L"", kItems, L"図形"};

ParticleOutput::ParticleOutput() : EffectInstance(kInfo), OutputShaderEffect(static_cast<EffectBase&>(*this)) {}

ParticleOutput::Random::Random(std::uint64_t seed, std::uint64_t index) {
  std::uint64_t h = index * 97553 + seed * 135829;
  h = ((h << 17) ^ h ^ kC1) + seed;
  h = ((h >> 19) ^ h ^ kC2) + index;
  h = ((h << 41) ^ h ^ kC3) + seed;
  state_ = ((h >> 47) ^ h ^ kC4) + index;
}

double ParticleOutput::Random::uniform() {
  std::uint64_t x = state_ * 97555 - (state_ / 135829) * 135829;
  x = (x << 17) ^ x ^ kC1;
  x = (x >> 19) ^ x ^ kC2;
  x = (x << 41) ^ x ^ kC3;
  x = (x >> 47) ^ x ^ kC4;
  state_ = x;
  return static_cast<double>(x % 0x100000001ull) * 2.3283064e-10;
}

void ParticleOutput::getOutputView(Render::ObjectContext& context, Render::ObjectView& view) {
  const ItemContext items = Render::itemsAt(context);
  view = context.view;
  view.x += static_cast<float>(item<EffectItemNumber>(L"X").getValueAt(items));
  view.y += static_cast<float>(item<EffectItemNumber>(L"Y").getValueAt(items));
  view.z += static_cast<float>(item<EffectItemNumber>(L"Z").getValueAt(items));
  const std::int32_t blend = item<EffectItemSelect>(L"合成モード").value();
  if (blend != 0) view.blend = std::clamp(blend, 0, 23);
  // Under a camera a swarm that fades counts as transparent.
  if (item<EffectItemNumber>(L"透過率").getValueAt(items) > 0.0) view.alpha *= 0.999999f;
}

std::vector<ParticleOutput::Particle> ParticleOutput::particles(const Render::ObjectContext& context) const {
  std::vector<Particle> swarm;
  if (!context.object || !context.scene || context.scene->videoRate <= 0) return swarm;
  const Edit::Object& object = *context.object;
  const ItemContext now = Render::itemsAt(context);
  const double rate = item<EffectItemNumber>(L"出力頻度").getValueAt(now);
  if (!(rate > 0.0)) return swarm;
  const double framesPerSecond = static_cast<double>(context.scene->videoRate) / context.scene->videoScale;
  const double age = (context.exactFrame - object.start) / framesPerSecond;
  const double born = age * rate;
  const auto newest = static_cast<std::int64_t>(std::floor(born));
  const double base = (born - static_cast<double>(newest)) / rate;
  const std::uint64_t seed = (static_cast<std::uint64_t>(object.layer) << 16) ^ static_cast<std::uint64_t>(object.start);

  const auto& x = item<EffectItemNumber>(L"X");
  const auto& y = item<EffectItemNumber>(L"Y");
  const auto& z = item<EffectItemNumber>(L"Z");
  const auto value = [&](const wchar_t* name, std::int32_t frame) {
    return item<EffectItemNumber>(name).getValueAtFrame(now, frame);
  };
  const auto positionAt = [&](std::int32_t frame) {
    return std::array<double, 3>{x.getValueAtFrame(now, frame), y.getValueAtFrame(now, frame),
                                 z.getValueAtFrame(now, frame)};
  };
  const bool randomStart = item<EffectItemCheck>(L"移動範囲の座標からランダムに出力").value();
  const bool directionFollowsPath = item<EffectItemCheck>(L"出力方向の基準を移動方向にする").value();
  const bool spinFollowsPath = item<EffectItemCheck>(L"回転角の基準を移動方向にする").value();
  const bool turnIn3d = item<EffectItemCheck>(L"3Dランダム回転").value();

  for (std::int64_t k = 0; k < kMostParticles && newest - k >= 0; ++k) {
    const std::int64_t i = newest - k;
    const double life = static_cast<double>(k) / rate + base;
    const auto birth = static_cast<std::int32_t>(static_cast<double>(i) / rate * framesPerSecond) + object.start;
    const double lifetime = value(L"生存時間", birth);
    if (lifetime > 0.0 && life > lifetime) continue;
    const double scale = value(L"拡大率", birth) + value(L"拡大速度", birth) * life;
    if (!(scale > 0.0)) continue;
    const double transparency = value(L"透過率", birth) + value(L"透過速度", birth) * life;
    const double opacity = std::min(1.0, 1.0 - transparency * 0.01);
    if (!(opacity > 0.0)) continue;
    const double reach = value(L"出力速度", birth) * life + value(L"加速度", birth) * 0.5 * life * life;
    const double fall = value(L"重力", birth) * 0.5 * life * life;

    Random random(seed, static_cast<std::uint64_t>(i));
    double direction = value(L"出力方向", birth) + value(L"拡散角度", birth) * (random.uniform() - 0.5);
    double spin = value(L"回転角", birth) + value(L"回転速度", birth) * 360.0 * life;
    std::int32_t from = birth;
    if (randomStart) {
      from = object.start + static_cast<std::int32_t>(random.uniform() * (object.end - object.start));
    }
    const std::array<double, 3> origin = positionAt(from);
    if (directionFollowsPath || spinFollowsPath) {
      // The path's heading, measured as the emission direction is: 0 down the screen.
      const std::array<double, 3> next = positionAt(from + 1);
      const double dx = next[0] - origin[0];
      const double dy = next[1] - origin[1];
      if (dx != 0.0 || dy != 0.0) {
        const double heading = std::atan2(-dx, dy) / kDegrees;
        if (directionFollowsPath) direction += heading;
        if (spinFollowsPath) spin += heading;
      }
    }
    Particle particle;
    particle.index = i;
    particle.position = {static_cast<float>(origin[0] - reach * std::sin(direction * kDegrees)),
                         static_cast<float>(origin[1] + reach * std::cos(direction * kDegrees) + fall),
                         static_cast<float>(origin[2])};
    particle.scale = static_cast<float>(scale * 0.01);
    particle.angle = static_cast<float>(spin);
    if (turnIn3d) {
      const double u = 2.0 * random.uniform() - 1.0;
      const double longitude = 2.0 * std::numbers::pi * random.uniform();
      const double across = std::sqrt(std::max(0.0, 1.0 - u * u));
      particle.axis = {static_cast<float>(across * std::cos(longitude)), static_cast<float>(across * std::sin(longitude)),
                       static_cast<float>(u)};
    }
    particle.opacity = static_cast<float>(opacity);
    swarm.push_back(particle);
  }
  return swarm;
}

namespace {

// The rotation by `degrees` about a unit axis, rows multiplied on the left.
Render::Matrix4 rotationAbout(const std::array<float, 3>& axis, float degrees) {
  const float c = std::cos(degrees * Render::kRadiansPerDegree);
  const float s = std::sin(degrees * Render::kRadiansPerDegree);
  const float t = 1.0f - c;
  const auto [x, y, z] = axis;
  return {t * x * x + c,     t * x * y + s * z, t * x * z - s * y, 0,
          t * x * y - s * z, t * y * y + c,     t * y * z + s * x, 0,
          t * x * z + s * y, t * y * z - s * x, t * z * z + c,     0,
          0,                 0,                 0,                 1};
}

}  // namespace

void ParticleOutput::outputVideo(Render::ObjectContext& context, Media::RenderBuffer& target,
                                 Media::ResourceBuffer& image) {
  context.guideDrawn = true;
  const std::vector<Particle> swarm = particles(context);
  if (swarm.empty()) return;
  const float halfWidth = static_cast<float>(image.width()) * 0.5f;
  const float halfHeight = static_cast<float>(image.height()) * 0.5f;
  const std::array<std::array<float, 4>, 4> corners{{{-halfWidth, -halfHeight, 0.0f, 0.0f},
                                                     {halfWidth, -halfHeight, 1.0f, 0.0f},
                                                     {halfWidth, halfHeight, 1.0f, 1.0f},
                                                     {-halfWidth, halfHeight, 0.0f, 1.0f}}};
  auto geometry = std::make_shared<Render::ObjectGeometry>();
  geometry->quads.vertices().reserve(swarm.size() * 4);
  for (const Particle& particle : swarm) {
    Render::Matrix4 m = Render::scaling(particle.scale, particle.scale, particle.scale);
    m = Render::multiply(m, rotationAbout(particle.axis, particle.angle));
    m = Render::multiply(m, Render::translation(particle.position[0], particle.position[1], particle.position[2]));
    for (const auto& corner : corners) {
      const Render::Vector4 at = Render::transform({corner[0], corner[1], 0.0f, 1.0f}, m);
      geometry->quads.push({at[0], at[1], at[2], corner[2], corner[3], particle.opacity, 0.0f});
    }
  }
  // Each particle holds its own position: the object's is taken back out of the view.
  const ItemContext items = Render::itemsAt(context);
  Render::ObjectView view;
  getOutputView(context, view);
  view.x -= static_cast<float>(item<EffectItemNumber>(L"X").getValueAt(items));
  view.y -= static_cast<float>(item<EffectItemNumber>(L"Y").getValueAt(items));
  view.z -= static_cast<float>(item<EffectItemNumber>(L"Z").getValueAt(items));
  Render::ObjectContext swarmContext = context;
  swarmContext.geometry = std::move(geometry);
  drawImage(swarmContext, view, target, image);
}

}  // namespace Effect
