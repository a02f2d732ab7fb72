#include "alarm_records.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <limits>
#include <string>

#include "plain_record.h"

namespace emf::test {
namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

struct CodeText {
  int code;
  const char* text;
};

constexpr CodeText kClasses[] = {
    {kMin, "unknown"},
    {-1, "unknown"},
    {0, "unknown"},
    {1, "communicationsAlarm"},
    {2, "environmentalAlarm"},
    {3, "equipmentAlarm"},
    {4, "qualityofServiceAlarm"},
    {5, "processingErrorAlarm"},
    {6, "unknown"},
    {257, "unknown"},
    {kMax, "unknown"},
};

constexpr CodeText kFunctions[] = {
    {kMin, "unknown"},    {-1, "unknown"}, {0, "unknown"},       {1, "power"},
    {2, "environment"},   {3, "signal"},   {4, "relay"},         {5, "hardware"},
    {6, "software"},      {7, "run"},      {8, "communication"}, {9, "service"},
    {10, "processerror"}, {11, "unknown"}, {kMax, "unknown"},
};

constexpr std::pair<int, int> kLevels[] = {{kMin, 0}, {-1, 0}, {0, 0}, {1, 1}, {2, 2},   {3, 3},
                                           {4, 4},    {5, 0},  {6, 0}, {7, 0}, {257, 0}, {kMax, 0}};

TEST(FaultRecordWords, ClassIsThatOfTheEventType) {
  for (const CodeText& row : kClasses) {
    FaultRecord record;
    record.eventType = row.code;
    EXPECT_STREQ(record.alarmClass2Str(), row.text) << row.code;
  }
}

TEST(FaultRecordWords, FunctionIsThatOfTheFunctionType) {
  for (const CodeText& row : kFunctions) {
    FaultRecord record;
    record.functionType = row.code;
    EXPECT_STREQ(record.alarmFunc2Str(), row.text) << row.code;
  }
}

TEST(FaultRecordWords, LevelsOneToFourStay) {
  for (const auto& [severity, level] : kLevels) {
    FaultRecord record;
    record.severity = severity;
    EXPECT_EQ(record.alarmLevel2TMF(), level) << severity;
  }
}

TEST(FaultRecordWords, FlagTwoIsRecovered) {
  for (const int flag : {kMin, -2, -1, 0, 1, 2, 3, 258, kMax}) {
    FaultRecord record;
    record.faultFlag = flag;
    EXPECT_EQ(record.isRecover(), flag == 2) << flag;
  }
}

TEST(AlarmCfgWords, ClassIsThatOfTheAlarmClassNotOfTheEventType) {
  for (const CodeText& row : kClasses) {
    AlarmCfg record;
    record.alarmClass = row.code;
    EXPECT_STREQ(record.alarmClass2Str(), row.text) << row.code;
  }
  AlarmCfg record;
  record.eventType = 1;
  EXPECT_STREQ(record.alarmClass2Str(), "unknown");
}

TEST(AlarmCfgWords, FunctionIsThatOfTheAlarmFunction) {
  for (const CodeText& row : kFunctions) {
    AlarmCfg record;
    record.alarmFunc = row.code;
    EXPECT_STREQ(record.alarmFunc2Str(), row.text) << row.code;
  }
}

TEST(AlarmCfgWords, LevelsOneToFourStay) {
  for (const auto& [severity, level] : kLevels) {
    AlarmCfg record;
    record.severity = severity;
    EXPECT_EQ(record.alarmLevel2TMF(), level) << severity;
  }
}

TEST(AlarmCfgWords, FreshRecordIsUnknown) {
  const AlarmCfg fresh;
  EXPECT_STREQ(fresh.alarmClass2Str(), "unknown");
  EXPECT_STREQ(fresh.alarmFunc2Str(), "unknown");
  EXPECT_EQ(fresh.alarmLevel2TMF(), 0);
}

TEST(AlarmWords, AreConstantsInEveryLanguage) {
  AlarmCfg definition;
  definition.alarmFunc = 10;
  FaultRecord alarm;
  alarm.functionType = 10;
  const char* before = alarm.alarmFunc2Str();
  std::setlocale(LC_ALL, "zh_CN.UTF-8");
  EXPECT_EQ(definition.alarmFunc2Str(), before);
  EXPECT_STREQ(before, "processerror");
  std::setlocale(LC_ALL, "C");
}

TEST(AlarmRecord, FaultRecord) {
  FaultRecord some;
  some.auxValue1 = some.auxValue2 = some.devSerialNo = some.nodeType = -1;
  some.auxText1 = some.auxText2 = some.fdn = some.para = "x";
  some.devType = some.eventType = some.severity = some.functionType = 2;
  some.faultId = some.reasonId = some.faultFlag = 3;
  some.faultTime.tm_year = 124;
  some.faultTime.tm_isdst = -1;
  expectPlainRecord(some);
}

TEST(AlarmRecord, AlarmCfg) {
  AlarmCfg some;
  some.alarmGroupId = some.alarmId = some.eventType = some.alarmClass = some.alarmFunc = 1;
  some.severity = some.oldSeverity = some.auxValue1 = some.auxValue2 = -2;
  some.auxText = some.alarmName = some.description = "x";
  expectPlainRecord(some);
}

TEST(AlarmRecord, AlarmReason) {
  AlarmReason some;
  some.alarmGroupId = some.alarmId = some.reasonId = 7;
  some.causes = some.repairAction = "x";
  expectPlainRecord(some);
}

TEST(AlarmRecord, ZoneOfTheFaultTimeIsLeftToWhoeverFillsIt) {
  const MadeOver<FaultRecord> record(0xA5);
  std::tm left;
  std::memset(&left, 0xA5, sizeof left);
  std::tm found;
  std::memcpy(&found, &record->faultTime, sizeof found);
  EXPECT_EQ(found.tm_gmtoff, left.tm_gmtoff);
  EXPECT_EQ(found.tm_zone, left.tm_zone);
}

}  // namespace
}  // namespace emf::test
