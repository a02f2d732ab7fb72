// The platform misbehaving on the wire: what the agent prints and how it exits.
#include <gmock/gmock.h>
#include <httplib.h>

#include <chrono>
#include <thread>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::HasSubstr;

std::string faults(const std::string& action) {
  return R"([{"path": "/rest/resource/v2/dev-properties", "requests": "all", )" + action + "}]";
}

struct FaultCase {
  const char* name;
  const char* action;  // of the fault script
  int status;
  const char* words;
};

void PrintTo(const FaultCase& fault, std::ostream* out) { *out << fault.name; }

class WireFaults : public World, public testing::WithParamInterface<FaultCase> {};

TEST_P(WireFaults, LeaveAClearLine) {
  serveWithFaults(faults(GetParam().action));
  configure([](Json::Value& document) { document["rest"]["totalTimeoutMs"] = 500; });
  const Outcome outcome = agent({"--format", "json", "topo", "devices"});
  EXPECT_EQ(outcome.status, GetParam().status);
  EXPECT_EQ(outcome.out, outcome.status == 0 ? "{\"result\": 0, \"records\": []}\n" : "");
  EXPECT_THAT(outcome.err, HasSubstr(GetParam().words));
}

constexpr FaultCase kFaults[] = {
    {"Unauthorized", R"("action": "status", "status": 401)", 0, "HTTP status 401"},
    {"Unavailable", R"("action": "status", "status": 503)", 0, "HTTP status 503"},
    {"Refused", R"("action": "refuse")", 0, "Empty reply from server"},
    {"CutShort", R"("action": "cut")", 0, "bytes remaining to read"},
    {"NotJson", R"("action": "garbage")", 0, "is not usable JSON"},
    {"Stalled", R"("action": "stall")", 0, "timed out"},
    {"NoList", R"("action": "wrongType", "key": "objList")", 0, "has no array \"objList\""},
    {"TypeIdNoNumber", R"("action": "wrongType", "key": "typeId")", 3,
     "the operation threw Json::LogicError"},
    {"NameNoText", R"("action": "wrongType", "key": "name")", 3,
     "the operation threw Json::LogicError"},
};

INSTANTIATE_TEST_SUITE_P(Script, WireFaults, testing::ValuesIn(kFaults),
                         [](const auto& row) { return row.param.name; });

class Faults : public World {};

TEST_F(Faults, AStalledPlatformCostsTheTotalTimeout) {
  serveWithFaults(faults(R"("action": "stall")"));
  configure([](Json::Value& document) { document["rest"]["totalTimeoutMs"] = 700; });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(agent({"cache", "device", "12"}).status, 1);
  const auto spent = std::chrono::steady_clock::now() - start;
  EXPECT_GE(spent, std::chrono::milliseconds(700));
  EXPECT_LT(spent, std::chrono::seconds(10));
}

TEST_F(Faults, AFailureOnALaterPageLosesTheWholeList) {
  serveWithFaults(
      R"([{"path": "/rest/resource/v2/dev-properties", "requests": [2], "action": "cut"}])");
  configure([](Json::Value& document) { document["rest"]["devicePageSize"] = 10; });
  const Outcome outcome = agent({"--format", "json", "topo", "devices"});
  EXPECT_EQ(outcome.out, "{\"result\": 0, \"records\": []}\n");
  EXPECT_THAT(outcome.err, HasSubstr("bytes remaining to read"));
}

TEST_F(Faults, TheTokenOpensTheServiceAndIsNeverShown) {
  serve({"--token", "Sesame-42"});
  const Outcome outcome = agent({"--log-level", "9", "cache", "device", "12"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, testing::Not(HasSubstr("Sesame-42")));
  configure([](Json::Value& document) { document["rest"].removeMember("token"); });
  const Outcome refused = agent({"cache", "device", "12"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("HTTP status 401"));
}

// A platform that answers every request with one body. The port takes connections from the bind
// on; who makes one of these asks it at least once, so that it runs when it is stopped.
class FixedAnswer {
 public:
  explicit FixedAnswer(std::string body) {
    server_.Get("/.*",
                [body = std::move(body)](const httplib::Request&, httplib::Response& answer) {
                  answer.set_content(body, "application/json");
                });
    port_ = server_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
  }
  FixedAnswer(const FixedAnswer&) = delete;
  FixedAnswer& operator=(const FixedAnswer&) = delete;
  ~FixedAnswer() {
    server_.stop();
    thread_.join();
  }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
};

class Answers : public World {
 protected:
  // `topo devices` in JSON against a platform that answers `body`.
  Outcome devicesFrom(const std::string& body) {
    serve();
    const FixedAnswer platform(body);
    configure([&](Json::Value& document) { document["rest"]["baseUrl"] = platform.url(); });
    return agent({"--format", "json", "topo", "devices"});
  }

  static std::string page(const std::string& device) {
    return R"({"objList": [)" + device + R"(], "isTruncated": false, "marker": ""})";
  }
};

TEST_F(Answers, AnEmptyListIsEmpty) {
  const Outcome outcome = devicesFrom(page(""));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "{\"result\": 0, \"records\": []}\n");
}

TEST_F(Answers, NestingOfAHundredThousandIsRefused) {
  const Outcome outcome = devicesFrom(std::string(100000, '['));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "{\"result\": 0, \"records\": []}\n");
  EXPECT_THAT(outcome.err, HasSubstr("is not usable JSON"));
}

TEST_F(Answers, InvalidUtf8IsShownEscaped) {
  const Outcome outcome = devicesFrom(page(
      "{\"nativeId\": \"NE=2\", \"typeId\": 65537, \"ipAddress\": \"\", \"name\": \"a\xff\"}"));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(jsonOf(outcome.out)["records"][0]["name"].asString(), "a\\xFF");
}

TEST_F(Answers, ANativeIdWithoutAnEqualsSignThrows) {
  const Outcome outcome =
      devicesFrom(page(R"({"nativeId": "12", "typeId": 65537, "ipAddress": "", "name": "x"})"));
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("the operation threw std::invalid_argument"));
}

// Whatever is asked for, the submap 5 is below it: below the root, and below itself.
TEST_F(Answers, ATreeThatBitesItsTailEnds) {
  serve();
  const FixedAnswer platform(
      R"({"dataList": [{"objId": "102", "parentId": "102", "topoId": 101, "label": "Root"},)"
      R"( {"objId": "5", "parentId": "102", "topoId": 5, "label": "five"}], "isTruncated": false})");
  configure([&](Json::Value& document) { document["rest"]["baseUrl"] = platform.url(); });
  const Outcome outcome = agent({"--format", "csv", "topo", "tree"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(rowsOf("csv", outcome.out), (Rows{{"label", "subMapId", "parentSubMapId", "subMaps"},
                                              {"Root", "ORMAP_PHY_SUBMAP", "ORMAP_PHY_SUBMAP", "1"},
                                              {"five", "S5", "ORMAP_PHY_SUBMAP", "1"}}));
  EXPECT_THAT(outcome.err, HasSubstr("1 submaps were met again and left out: a cycle"));
}

TEST_F(Answers, ControlsInANameDoNotReachTheTerminal) {
  const std::string answer =
      page(R"({"nativeId": "NE=2", "typeId": 65537, "ipAddress": "", "name": "a\u001b[2Jb\n"})");
  EXPECT_EQ(jsonOf(devicesFrom(answer).out)["records"][0]["name"].asString(), "a\x1b[2Jb\n");
  const FixedAnswer platform(answer);
  configure([&](Json::Value& document) { document["rest"]["baseUrl"] = platform.url(); });
  EXPECT_THAT(agent({"topo", "devices"}).out, HasSubstr("a\\x1B[2Jb\\x0A\n"));
}

}  // namespace
}  // namespace systemtest
