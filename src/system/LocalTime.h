// The wall-clock time of the machine's time zone, as log lines and time-stamped file
// names show it. Any thread may call it.
#pragma once

namespace System {

struct LocalTime {
  int year;
  int month;  // 1 to 12
  int day;    // 1 to 31
  int hour;
  int minute;
  int second;
  int millisecond;
};

LocalTime localNow();

}  // namespace System
