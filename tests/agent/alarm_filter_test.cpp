#include "alarm_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ormaagent {
namespace {

using testing::ElementsAre;

FaultRecord alarm(std::int32_t id, std::int32_t severity, const std::string& fdn,
                  std::int64_t serialNo = 0) {
  FaultRecord record;
  record.faultId = id;
  record.severity = severity;
  record.fdn = fdn;
  record.devSerialNo = serialNo;
  return record;
}

const std::list<FaultRecord> kAlarms = {
    alarm(1, 1, "NE=12,FR=1,S=2"), alarm(2, 2, "NE=12"), alarm(3, 1, "NE=120"),
    alarm(4, 3, "", 12),           alarm(5, 1, "", 7),
};

std::vector<std::int32_t> shown(const std::vector<std::string>& severities,
                                const std::vector<std::string>& devices,
                                const std::string& limit = "0") {
  const AlarmFilter filter(
      Arguments({}, {{"--limit", limit}}, {{"--severity", severities}, {"--device", devices}}));
  std::vector<std::int32_t> ids;
  for (const FaultRecord& record : filter.shownOf(kAlarms)) ids.push_back(record.faultId);
  return ids;
}

TEST(AlarmFilter, WithoutOptionsShowsAll) {
  EXPECT_THAT(shown({}, {}), ElementsAre(1, 2, 3, 4, 5));
}

TEST(AlarmFilter, EachOptionLeavesOutWhatItDoesNotName) {
  EXPECT_THAT(shown({"1"}, {}), ElementsAre(1, 3, 5));
  EXPECT_THAT(shown({"2", "3"}, {}), ElementsAre(2, 4));
  EXPECT_THAT(shown({"9"}, {}), ElementsAre());
  EXPECT_THAT(shown({}, {"12"}), ElementsAre(1, 2, 4));
  EXPECT_THAT(shown({}, {"120", "7"}), ElementsAre(3, 5));
  EXPECT_THAT(shown({"1"}, {"12"}), ElementsAre(1));
}

TEST(AlarmFilter, LimitCountsWhatPasses) {
  EXPECT_THAT(shown({}, {}, "2"), ElementsAre(1, 2));
  EXPECT_THAT(shown({"1"}, {}, "2"), ElementsAre(1, 3));
  EXPECT_THAT(shown({"1"}, {}, "99"), ElementsAre(1, 3, 5));
}

TEST(AlarmFilter, DeviceIsThatOfTheFirstSegmentOrTheSerialNumber) {
  const std::pair<const char*, std::int64_t> kDevices[] = {
      {"NE=12", 12},     {"NE=12,FR=3", 12}, {"ONE=4063232,S=1", 4063232},
      {"OS=1", 1},       {"", 77},           {"no segment", 77},
      {"NE=,FR=12", 77}, {"NE=x", 77},       {"NE=12x", 77},
      {",NE=12", 77},    {"NE=-5", -5},      {"NE=99999999999999999999", 77}};
  for (const auto& [fdn, device] : kDevices) {
    EXPECT_EQ(deviceOf(alarm(1, 1, fdn, 77)), device) << fdn;
  }
}

TEST(AlarmFilter, DefinitionsAreFilteredBySeverityAndReasonsByNothing) {
  std::vector<AlarmCfg> definitions(3);
  definitions[1].severity = 2;
  const AlarmFilter bySeverity(Arguments({}, {{"--limit", "0"}}, {{"--severity", {"2"}}}));
  EXPECT_EQ(bySeverity.shownOf(definitions).size(), 1U);
  const AlarmFilter byLimit(Arguments({}, {{"--limit", "2"}}));
  EXPECT_EQ(byLimit.shownOf(std::vector<AlarmReason>(3)).size(), 2U);
}

}  // namespace
}  // namespace ormaagent
