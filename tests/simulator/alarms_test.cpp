// The catalogue and the alarms that generate, import and raise put into an inventory.
#include "alarms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generate.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class AlarmsTest : public ::testing::Test {
 protected:
  void generate(std::uint64_t elements, std::optional<std::uint64_t> alarms = std::nullopt,
                std::uint64_t definitions = 0, std::uint64_t equipped = 0) {
    GenerateOptions options;
    options.elements = elements;
    options.seed = 7;
    options.equipped = equipped;
    options.alarms = alarms;
    options.definitions = definitions;
    generateFile(file_, options, true);
  }

  std::vector<std::string> rows(const std::string& sql) const { return query(file_, sql); }
  std::string value(const std::string& sql) const { return rows(sql).at(0); }

  TempDirectory directory_;
  const std::string file_ = directory_.path("net.db");
};

TEST_F(AlarmsTest, NetworkHasAsManyAlarmsAsIsUsualOrAskedFor) {
  generate(80);
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), "20");
  generate(80, 7);
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), "7");
  generate(0);
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), "0");
  generate(0, 7);
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), "0") << "there is nothing to raise them on";
}

TEST_F(AlarmsTest, AlarmsAreOfTheCatalogueAndOnDevices) {
  generate(200, 500);
  EXPECT_EQ(value("SELECT count(*) FROM alarm JOIN device USING (dev_id) JOIN alarm_definition d "
                  "USING (group_id, alarm_id) JOIN alarm_reason USING (group_id, alarm_id, "
                  "reason_id) WHERE alarm.severity = d.severity"),
            "500");
  EXPECT_THAT(rows("SELECT serial_no FROM alarm JOIN device USING (dev_id) "
                   "WHERE group_id <> main_type"),
              IsEmpty());
}

TEST_F(AlarmsTest, SerialNumbersAndTimesOnlyGrow) {
  generate(50, 300);
  EXPECT_THAT(rows("SELECT a.serial_no FROM alarm a JOIN alarm b ON b.serial_no = a.serial_no + 1 "
                   "WHERE b.raised_at < a.raised_at"),
              IsEmpty());
  EXPECT_EQ(value("SELECT min(serial_no) || ' ' || max(serial_no) FROM alarm"), "1 300");
  EXPECT_THAT(rows("SELECT raised_at FROM alarm WHERE date(raised_at, 'unixepoch') NOT LIKE "
                   "'2025-%'"),
              IsEmpty());
}

TEST_F(AlarmsTest, CatalogueNumbersItsRowsWithoutGaps) {
  generate(1);
  for (const char* table : {"alarm_definition", "alarm_reason", "redefined_alarm"}) {
    EXPECT_EQ(value(std::string("SELECT min(seq) = 0 AND max(seq) = count(*) - 1 FROM ") + table),
              "1")
        << table;
  }
  EXPECT_THAT(rows("SELECT seq FROM alarm_definition WHERE event_type NOT BETWEEN 1 AND 5 OR "
                   "function_type NOT BETWEEN 1 AND 10 OR severity NOT BETWEEN 1 AND 4"),
              IsEmpty());
  EXPECT_THAT(rows("SELECT r.seq FROM redefined_alarm r JOIN alarm_definition d USING (group_id, "
                   "alarm_id) WHERE old_severity <> severity OR new_severity = severity OR "
                   "r.name <> d.name"),
              IsEmpty());
}

TEST_F(AlarmsTest, CatalogueIsAsLargeAsIsAskedFor) {
  generate(1, 0, 5001);
  EXPECT_EQ(value("SELECT count(*) FROM alarm_definition"), "5001");
  EXPECT_THAT(rows("SELECT d.seq FROM alarm_definition d LEFT JOIN alarm_reason r USING "
                   "(group_id, alarm_id) WHERE r.seq IS NULL"),
              IsEmpty());
}

TEST_F(AlarmsTest, SeveritiesAndResourcesAreMixed) {
  generate(100, 1000);
  EXPECT_THAT(rows("SELECT DISTINCT severity FROM alarm ORDER BY 1"),
              ElementsAre("1", "2", "3", "4"));
  EXPECT_EQ(value("SELECT count(*) BETWEEN 20 AND 100 FROM alarm WHERE fdn = ''"), "1");
  EXPECT_THAT(rows("SELECT fdn FROM alarm WHERE fdn NOT IN ('', 'NE=' || dev_id)"), IsEmpty());
}

TEST_F(AlarmsTest, OfEquippedDevicesManyAlarmsNameAPort) {
  generate(20, 1000, 0, 10);
  EXPECT_THAT(rows("SELECT fdn FROM alarm a WHERE fdn NOT IN ('', 'NE=' || dev_id) AND fdn NOT IN "
                   "(SELECT native_id FROM resource r WHERE r.dev_id = a.dev_id AND main_type = 6)"),
              IsEmpty());
  EXPECT_EQ(value("SELECT count(DISTINCT fdn) BETWEEN 100 AND 300 FROM alarm JOIN resource ON "
                  "fdn = native_id"),
            "1");
}

TEST_F(AlarmsTest, RaisedAlarmsStandBehindTheOthers) {
  generate(20, 10);
  RaiseOptions options;
  options.count = 4;
  raiseAlarms(file_, options);
  EXPECT_EQ(value("SELECT count(*) || ' ' || max(serial_no) FROM alarm"), "14 14");
  EXPECT_EQ(value("SELECT max(raised_at) < 1767225600 FROM alarm WHERE serial_no <= 10"), "1");
  EXPECT_EQ(value("SELECT min(raised_at) > 1767225600 FROM alarm WHERE serial_no > 10"), "1");
}

TEST_F(AlarmsTest, OneDeviceCanBeChosen) {
  generate(20, 0);
  RaiseOptions options;
  options.count = 30;
  options.device = 5;
  raiseAlarms(file_, options);
  EXPECT_THAT(rows("SELECT DISTINCT dev_id FROM alarm"), ElementsAre("5"));
}

TEST_F(AlarmsTest, OnlyTheNewestStayWhenSoManyAreToBeKept) {
  generate(20, 10);
  RaiseOptions options;
  options.count = 4;
  options.keep = 6;
  EXPECT_EQ(raiseAlarms(file_, options), 4u);
  EXPECT_EQ(value("SELECT count(*) || ' ' || min(serial_no) || ' ' || max(serial_no) FROM alarm"),
            "6 9 14");
  raiseAlarms(file_, options);
  EXPECT_EQ(value("SELECT max(serial_no) FROM alarm"), "18") << "numbers are not used again";
}

TEST_F(AlarmsTest, AlarmsAtARateComeStepByStepUntilThereAreEnough) {
  generate(20, 0);
  RaiseOptions options;
  options.count = 250;
  options.rate = 1000;
  options.keep = 100;
  int steps = 0;
  const auto rest = [&steps](std::chrono::milliseconds) {
    ++steps;
    return false;
  };
  EXPECT_EQ(raiseSteadily(file_, options, rest), 250u);
  EXPECT_GE(steps, 2) << "a fifth of a second's alarms at most come together";
  EXPECT_EQ(value("SELECT count(*) || ' ' || max(serial_no) FROM alarm"), "100 250");
}

TEST_F(AlarmsTest, AlarmsAtARateEndWhenTheyAreToldTo) {
  generate(20, 0);
  RaiseOptions options;
  options.rate = 100;
  int stepsLeft = 3;
  const auto rest = [&stepsLeft](std::chrono::milliseconds) { return stepsLeft-- == 0; };
  const std::uint64_t raised = raiseSteadily(file_, options, rest);
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), std::to_string(raised));
  EXPECT_EQ(stepsLeft, -1);
}

TEST_F(AlarmsTest, UnknownDeviceRaisesNothing) {
  generate(20, 0);
  RaiseOptions options;
  options.device = 99;
  EXPECT_EQ(errorOf([&] { raiseAlarms(file_, options); }),
            "there is no device 99 in " + file_ + "; its ids stand in table device");
  EXPECT_EQ(value("SELECT count(*) FROM alarm"), "0");
}

TEST_F(AlarmsTest, EmptyNetworkHasNothingToRaiseAlarmsOn) {
  generate(0);
  EXPECT_EQ(errorOf([this] { raiseAlarms(file_, {}); }), "there are no devices in " + file_);
}

TEST_F(AlarmsTest, WhatIsNoInventoryIsLeftAlone) {
  const std::string text = directory_.write("notes.db", "");
  EXPECT_THAT(errorOf([&] { raiseAlarms(text, {}); }), HasSubstr(text));
  EXPECT_EQ(contentOf(text), "");
}

}  // namespace
}  // namespace ormasim::testing
