#include "utc_time.h"

#include <cstdint>
#include <cstdio>

namespace ormaagent {

namespace {

bool isLeap(std::int64_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysOf(int month, std::int64_t year) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays[month] + (month == 1 && isLeap(year) ? 1 : 0);
}

bool lies(std::int64_t value, std::int64_t first, std::int64_t last) {
  return value >= first && value <= last;
}

// A minute may have a leap second.
bool isTime(const std::tm& time, std::int64_t year) {
  return lies(year, 0, 9999) && lies(time.tm_mon, 0, 11) &&
         lies(time.tm_mday, 1, daysOf(time.tm_mon, year)) && lies(time.tm_hour, 0, 23) &&
         lies(time.tm_min, 0, 59) && lies(time.tm_sec, 0, 60);
}

}  // namespace

Value utcTime(const std::tm& time) {
  const std::int64_t year = std::int64_t{time.tm_year} + 1900;
  if (!isTime(time, year)) return std::monostate();
  char text[96];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(year),
                time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
  return UtcTime{text};
}

}  // namespace ormaagent
