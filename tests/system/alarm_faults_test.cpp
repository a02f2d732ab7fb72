// The fault server when it fails: what the agent says of it, and that it always says something.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

constexpr int kAlarmCount = 25;

class AlarmFaults : public World {
 protected:
  AlarmFaults() {
    Inventory(database_).rows("DELETE FROM alarm");
    const Outcome raised = Process({ORMASIM, "raise", "--db", database_.string(), "--count",
                                    std::to_string(kAlarmCount)})
                               .finish();
    EXPECT_EQ(raised.status, 0) << raised.err;
  }

  void serveFrames(const std::string& rule) {
    directory_.write("faults.json",
                     "[{\"path\": \"fault-server\", \"requests\": \"all\", " + rule + "}]");
    serve({"--frame-items", "10", "--faults", file("faults.json").string()});
  }

  // The alarms listed; fails the test when the command does.
  std::size_t listed() {
    const Outcome outcome = agent({"--format", "json", "alarm", "current"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const Rows rows = rowsOf("json", outcome.out);
    return rows.empty() ? 0 : rows.size() - 1;
  }
};

struct Failure {
  const char* name;
  const char* rule;
  const char* code;
};

void PrintTo(const Failure& row, std::ostream* out) { *out << row.name; }

class AlarmFailures : public AlarmFaults, public testing::WithParamInterface<Failure> {};

TEST_P(AlarmFailures, LeaveTheOperationWithTheirCode) {
  serveFrames(GetParam().rule);
  configure([](Json::Value& document) { document["faultServer"]["receiveTimeoutMs"] = 300; });
  const Outcome outcome = agent({"alarm", "current"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr(std::string("ErrCode:") + GetParam().code + ",Detail:"));
}

constexpr Failure kFailures[] = {
    {"Refuse", R"("action": "refuse")", "6105"},
    {"StallAtOnce", R"("action": "stall")", "6104"},
    {"StallLater", R"("action": "stall", "frame": 3)", "6104"},
    {"Cut", R"("action": "cut", "frame": 2)", "6105"},
    {"Garbage", R"("action": "garbage", "frame": 2)", "6106"},
    {"Repeat", R"("action": "repeat", "frame": 2)", "6108"},
    {"WrongOrder", R"("action": "wrongOrder", "frame": 2)", "6108"},
    {"OtherCommand", R"("action": "otherCommand", "frame": 2)", "6109"},
    {"Error", R"("action": "error", "code": 5, "frame": 2)", "5"},
    {"ErrorAtTheEnd", R"("action": "error", "code": 7, "frame": 3)", "7"},
    {"Reject", R"("action": "reject", "code": 1299, "frame": 2)", "1299"},
};

INSTANTIATE_TEST_SUITE_P(Rules, AlarmFailures, testing::ValuesIn(kFailures),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AlarmFaults, FailureIsTracedWithWhatToCheck) {
  serveFrames(R"("action": "cut", "frame": 2)");
  EXPECT_THAT(agent({"alarm", "current"}).err,
              HasSubstr("failed with code 6105: the connection was closed before the end of the "
                        "exchange; check the server's log"));
}

TEST_F(AlarmFaults, ShortStallOnlyTakesItsTime) {
  serveFrames(R"("action": "stall", "seconds": 0.05, "frame": 2)");
  EXPECT_EQ(listed(), kAlarmCount);
}

TEST_F(AlarmFaults, EmptyFrameAddsNothingAndTheExchangeGoesOn) {
  serveFrames(R"("action": "empty", "frame": 2)");
  EXPECT_EQ(listed(), kAlarmCount - 10);
}

TEST_F(AlarmFaults, ItemsWithoutOptionalFieldsAreDelivered) {
  serveFrames(R"("action": "bare", "frame": "all")");
  const Outcome outcome = agent({"--format", "json", "alarm", "current"});
  const Rows rows = rowsOf("json", outcome.out);
  ASSERT_THAT(rows, SizeIs(kAlarmCount + 1)) << outcome.err;
  constexpr std::size_t kFdn = 13;
  ASSERT_EQ(rows[0][kFdn], "fdn");
  for (std::size_t i = 1; i < rows.size(); ++i) EXPECT_EQ(rows[i][kFdn], "") << i;
}

TEST_F(AlarmFaults, ExplicitTagsAreUnderstoodByBothSides) {
  serve({"--frame-items", "10", "--explicit-tags"});
  EXPECT_EQ(listed(), kAlarmCount);
}

TEST_F(AlarmFaults, FrameAboveTheLimitIsTold) {
  serve({"--frame-items", "100"});
  configure([](Json::Value& document) { document["faultServer"]["maxFrameBytes"] = 1024; });
  const Outcome outcome = agent({"alarm", "current"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("ErrCode:6107,Detail:"));
  EXPECT_THAT(outcome.err, HasSubstr("faultServer.maxFrameBytes"));
}

}  // namespace
}  // namespace systemtest
