// Alarms, definitions, reasons and redefined severities, against the database read for itself.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

// What the records have no source for, by position.
const std::vector<std::string> kAlarmFields = {
    "auxValue1", "auxValue2", "auxText1",     "auxText2", "devSerialNo", "nodeType",  "devType",
    "eventType", "severity",  "functionType", "faultId",  "reasonId",    "faultTime", "fdn",
    "para",      "faultFlag", "class",        "function", "level"};
const std::vector<std::string> kDefinitionFields = {
    "alarmGroupId", "alarmId",     "eventType", "alarmClass", "alarmFunc",
    "severity",     "oldSeverity", "auxText",   "auxValue1",  "alarmName",
    "description",  "auxValue2",   "class",     "function",   "level"};

constexpr char kStoredAlarms[] =
    "SELECT 0, 0, '', '', a.dev_id, d.main_type * 65536 + d.sub_type, a.group_id, k.event_type, "
    "a.severity, k.function_type, a.alarm_id, a.reason_id, "
    "strftime('%Y-%m-%dT%H:%M:%SZ', a.raised_at, 'unixepoch'), a.fdn, a.para, 1, "
    "CASE k.event_type WHEN 1 THEN 'communicationsAlarm' WHEN 2 THEN 'environmentalAlarm' "
    "WHEN 3 THEN 'equipmentAlarm' WHEN 4 THEN 'qualityofServiceAlarm' "
    "ELSE 'processingErrorAlarm' END, "
    "CASE k.function_type WHEN 1 THEN 'power' WHEN 2 THEN 'environment' WHEN 3 THEN 'signal' "
    "WHEN 4 THEN 'relay' WHEN 5 THEN 'hardware' WHEN 6 THEN 'software' WHEN 7 THEN 'run' "
    "WHEN 8 THEN 'communication' WHEN 9 THEN 'service' ELSE 'processerror' END, a.severity "
    "FROM alarm a JOIN device d USING (dev_id) JOIN alarm_definition k USING (group_id, alarm_id) ";
constexpr char kDefinitions[] =
    "SELECT group_id, alarm_id, event_type, 0, 0, severity, 0, '', 0, name, description, 0, "
    "'unknown', 'unknown', severity FROM alarm_definition ";
constexpr char kReasons[] =
    "SELECT group_id, alarm_id, reason_id, causes, repair_action FROM alarm_reason ";
constexpr char kRedefined[] =
    "SELECT group_id, alarm_id, 0, 0, 0, new_severity, old_severity, '', 0, name, '', 0, "
    "'unknown', 'unknown', new_severity FROM redefined_alarm ";

class Alarms : public World {
 protected:
  Rows stored(const std::string& statement) { return Inventory(database_).rows(statement); }
  void raise(int count) {
    const Outcome raised =
        Process({ORMASIM, "raise", "--db", database_.string(), "--count", std::to_string(count)})
            .finish();
    EXPECT_EQ(raised.status, 0) << raised.err;
  }
  // The records of a command, without the field names, which are checked.
  Rows answered(const std::string& format, std::vector<std::string> words,
                const std::vector<std::string>& fields) {
    words.insert(words.begin(), {"--format", format});
    const Outcome outcome = agent(words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    Rows rows = rowsOf(format, outcome.out);
    EXPECT_THAT(rows, Not(IsEmpty())) << outcome.err;
    if (rows.empty()) return rows;
    EXPECT_EQ(rows.front(), fields);
    rows.erase(rows.begin());
    return rows;
  }
};

TEST_F(Alarms, CurrentListsEveryAlarmFrameByFrame) {
  serve({"--frame-items", "5"});
  raise(30);
  const Rows expected = stored(kStoredAlarms + std::string("ORDER BY serial_no"));
  ASSERT_THAT(expected, SizeIs(testing::Ge(30)));
  for (const char* format : {"json", "csv"}) {
    EXPECT_EQ(answered(format, {"alarm", "current"}, kAlarmFields), expected) << format;
    EXPECT_EQ(answered(format, {"alarm", "events", "3600"}, kAlarmFields), expected) << format;
  }
}

TEST_F(Alarms, TableShowsTimesAsPeopleReadThem) {
  serve();
  raise(3);
  const Rows times =
      stored("SELECT strftime('%Y-%m-%d %H:%M:%S', raised_at, 'unixepoch') FROM alarm");
  const Outcome outcome = agent({"alarm", "current"});
  for (const auto& row : times) EXPECT_THAT(outcome.out, HasSubstr("  " + row[0] + "  "));
  EXPECT_THAT(outcome.err, HasSubstr(" records, result 0: success\n"));
  EXPECT_THAT(outcome.err, Not(HasSubstr("\r")));  // no waiting line: this is no terminal
}

TEST_F(Alarms, OptionsLeaveOutWhatTheyDoNotName) {
  serve();
  raise(40);
  const std::string order = "ORDER BY serial_no";
  EXPECT_EQ(
      answered("csv", {"alarm", "current", "--severity", "1", "--severity", "3"}, kAlarmFields),
      stored(kStoredAlarms + std::string("WHERE a.severity IN (1, 3) ") + order));
  const std::string device = stored("SELECT dev_id FROM alarm LIMIT 1")[0][0];
  EXPECT_EQ(answered("csv", {"alarm", "current", "--device", device}, kAlarmFields),
            stored(kStoredAlarms + std::string("WHERE a.dev_id = ") + device + " " + order));
  EXPECT_EQ(answered("csv", {"alarm", "current", "--limit", "7"}, kAlarmFields),
            stored(kStoredAlarms + order + " LIMIT 7"));
  const Outcome table = agent({"alarm", "current", "--limit", "7"});
  EXPECT_THAT(table.err, HasSubstr("7 records ("));
  EXPECT_THAT(table.err, HasSubstr(" more left out), result 0: success\n"));
}

TEST_F(Alarms, DefinitionsEndWithTheClosingRecord) {
  serve();
  Rows expected = stored(kDefinitions + std::string("ORDER BY seq"));
  ASSERT_THAT(expected, Not(IsEmpty()));
  Rows closed = expected;
  closed.push_back(
      {"-999", "-999", "0", "0", "0", "0", "0", "", "0", "", "", "0", "unknown", "unknown", "0"});
  EXPECT_EQ(answered("json", {"alarm", "definitions"}, kDefinitionFields), closed);
  EXPECT_EQ(answered("csv", {"alarm", "definitions"}, kDefinitionFields), closed);
  const Outcome table = agent({"alarm", "definitions"});
  EXPECT_THAT(table.out, Not(HasSubstr("-999")));
  EXPECT_THAT(table.err, HasSubstr(std::to_string(expected.size()) +
                                   " records, result 0: success; the list's closing record is "
                                   "not shown\n"));
}

TEST_F(Alarms, ReasonsEndWithTheClosingRecord) {
  serve();
  Rows expected = stored(kReasons + std::string("ORDER BY seq"));
  expected.push_back({"-999", "-999", "-999", "", ""});
  const std::vector<std::string> fields = {"alarmGroupId", "alarmId", "reasonId", "causes",
                                           "repairAction"};
  EXPECT_EQ(answered("json", {"alarm", "reasons"}, fields), expected);
  EXPECT_EQ(answered("json", {"alarm", "reasons", "--limit", "2"}, fields),
            (Rows{expected[0], expected[1], expected.back()}));
}

TEST_F(Alarms, RedefinedListsBothSeverities) {
  serve();
  const Rows expected = stored(kRedefined + std::string("ORDER BY seq"));
  ASSERT_THAT(expected, Not(IsEmpty()));
  EXPECT_EQ(answered("json", {"alarm", "redefined"}, kDefinitionFields), expected);
  EXPECT_EQ(answered("csv", {"alarm", "redefined", "--severity", "2"}, kDefinitionFields),
            stored(kRedefined + std::string("WHERE new_severity = 2 ORDER BY seq")));
}

TEST_F(Alarms, NothingRedefinedIsAFailureByContract) {
  stored("DELETE FROM redefined_alarm");
  serve();
  const Outcome outcome = agent({"--format", "json", "alarm", "redefined"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "{\"result\": 1, \"records\": []}\n");
  EXPECT_THAT(outcome.err, HasSubstr("no redefined severities"));
}

TEST_F(Alarms, NoAlarmsAreASuccessWithAHint) {
  stored("DELETE FROM alarm");
  serve();
  const Outcome outcome = agent({"--format", "json", "alarm", "current"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "{\"result\": 0, \"records\": []}\n");
  EXPECT_THAT(outcome.err, HasSubstr("no alarms"));
}

TEST_F(Alarms, FaultServerThatIsAwayIsAnException) {
  serve();
  killSimulator();
  const Outcome current = agent({"alarm", "current"});
  EXPECT_EQ(current.status, 3);
  EXPECT_EQ(current.out, "");
  EXPECT_THAT(current.err, HasSubstr("ErrCode:6102,Detail:"));
  const Outcome definitions = agent({"--format", "json", "alarm", "definitions"});
  EXPECT_EQ(definitions.status, 1);
  EXPECT_EQ(definitions.out, "{\"result\": 1, \"records\": []}\n");
  EXPECT_THAT(definitions.err, HasSubstr("the catalogue could not be read"));
}

// The two modes cannot be mistaken for each other: what was read wrongly would show.
TEST_F(Alarms, OtherTaggingIsTold) {
  serve();
  raise(3);
  configure([](Json::Value& document) { document["faultServer"]["tagging"] = "explicit"; });
  const Outcome outcome = agent({"alarm", "current"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("faultServer.tagging"));
}

}  // namespace
}  // namespace systemtest
