#include "utc_time.h"

#include <gtest/gtest.h>

namespace ormaagent {
namespace {

std::tm timeOf(int year, int month, int day, int hour, int minute, int second) {
  std::tm time{};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  return time;
}

TEST(UtcTime, IsIso8601) {
  EXPECT_EQ(utcTime(timeOf(2026, 11, 21, 8, 30, 5)), Value(UtcTime{"2026-11-21T08:30:05Z"}));
  EXPECT_EQ(utcTime(timeOf(0, 1, 1, 0, 0, 0)), Value(UtcTime{"0000-01-01T00:00:00Z"}));
  EXPECT_EQ(utcTime(timeOf(9999, 12, 31, 23, 59, 60)), Value(UtcTime{"9999-12-31T23:59:60Z"}));
  EXPECT_EQ(utcTime(timeOf(2024, 2, 29, 0, 0, 0)), Value(UtcTime{"2024-02-29T00:00:00Z"}));
}

TEST(UtcTime, WhatIsNoDateIsNoValue) {
  for (const std::tm& time :
       {timeOf(2026, 0, 1, 0, 0, 0), timeOf(2026, 13, 1, 0, 0, 0), timeOf(2026, 1, 0, 0, 0, 0),
        timeOf(2026, 4, 31, 0, 0, 0), timeOf(2023, 2, 29, 0, 0, 0), timeOf(1900, 2, 29, 0, 0, 0),
        timeOf(2026, 1, 1, 24, 0, 0), timeOf(2026, 1, 1, 0, 60, 0), timeOf(2026, 1, 1, 0, 0, 61),
        timeOf(2026, 1, 1, 0, 0, -1), timeOf(10000, 1, 1, 0, 0, 0), timeOf(-1, 1, 1, 0, 0, 0)}) {
    EXPECT_EQ(utcTime(time), Value(std::monostate()));
  }
  std::tm far{};
  far.tm_year = 2147483647;
  EXPECT_EQ(utcTime(far), Value(std::monostate()));
}

}  // namespace
}  // namespace ormaagent
