#include "system/LocalTime.h"

#include <sys/time.h>
#include <time.h>

namespace System {

LocalTime localNow() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm parts{};
  localtime_r(&now.tv_sec, &parts);
  return LocalTime{parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour,
                   parts.tm_min,         parts.tm_sec,     static_cast<int>(now.tv_nsec / 1000000)};
}

}  // namespace System
