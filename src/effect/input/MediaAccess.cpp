#include "effect/input/MediaAccess.h"

#include <mutex>

namespace Effect {

namespace {

std::mutex& installMutex() {
  static std::mutex mutex;
  return mutex;
}

std::shared_ptr<MediaAccess>& installed() {
  static std::shared_ptr<MediaAccess> access;
  return access;
}

}  // namespace

std::shared_ptr<MediaAccess> MediaAccess::get() {
  std::lock_guard lock(installMutex());
  return installed();
}

void MediaAccess::install(std::shared_ptr<MediaAccess> access) {
  std::lock_guard lock(installMutex());
  installed() = std::move(access);
}

void MediaAccess::uninstall(const MediaAccess* access) {
  std::lock_guard lock(installMutex());
  if (installed().get() == access) installed().reset();
}

}  // namespace Effect
