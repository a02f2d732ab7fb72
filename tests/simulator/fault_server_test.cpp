// The fault server on the wire, its messages read and written by asn1c's generated code.
#include "fault_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "alarms.h"
#include "asn1c_peer.h"
#include "channel_frame.h"
#include "generate.h"
#include "raw_client.h"
#include "support.h"

namespace ormasim::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr bool kExplicit = ORMASIM_TEST_TAGGING == Tagging::Explicit;

std::string timeXml(const char* field, int value) {
  std::string xml = std::string("<") + field + ">";
  for (const char* part : {"sYear", "cMonth", "cDay", "cHour", "cMinute", "cSecond"}) {
    xml += std::string("<") + part + ">" + std::to_string(value) + "</" + part + ">";
  }
  return xml + "</" + field + ">";
}

// A time of a request: years from 1900, months from 0.
std::string sinceXml(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm parts{};
  ::gmtime_r(&time, &parts);
  const std::pair<const char*, int> fields[] = {
      {"sYear", parts.tm_year}, {"cMonth", parts.tm_mon},  {"cDay", parts.tm_mday},
      {"cHour", parts.tm_hour}, {"cMinute", parts.tm_min}, {"cSecond", parts.tm_sec}};
  std::string xml = "<occurBeginTm>";
  for (const auto& [name, value] : fields) {
    xml += std::string("<") + name + ">" + std::to_string(value) + "</" + name + ">";
  }
  return xml + "</occurBeginTm>";
}

// The request for all alarms, with what `more` puts behind the type flag.
std::string requestBody(const std::string& begin = timeXml("occurBeginTm", -1),
                        const std::string& filters = "") {
  const emf::test::Asn1cPeer peer("AsnOtherToSvrQryAlmEventReq");
  return peer.bytesOfXml("<AsnOtherToSvrQryAlmEventReq><ucTypeFlag>1</ucTypeFlag>" + filters +
                         begin + timeXml("occurEndTm", -1) +
                         "<lstTopoOID></lstTopoOID><strPara></strPara>"
                         "</AsnOtherToSvrQryAlmEventReq>");
}

// The text of each element of that name.
std::vector<std::string> textsIn(const std::string& xml, const std::string& name) {
  const std::regex element("<" + name + ">([^<]*)</" + name + ">");
  std::vector<std::string> texts;
  for (std::sregex_iterator found(xml.begin(), xml.end(), element), end; found != end; ++found) {
    texts.push_back((*found)[1]);
  }
  return texts;
}

struct Received {
  ChannelHeader header;
  std::string body;
};

class FaultServerTest : public ::testing::Test {
 protected:
  void serve(std::uint64_t alarms, std::int64_t items, const std::string& rules = "[]") {
    GenerateOptions options;
    options.elements = 12;
    options.seed = 7;
    options.equipped = 0;
    options.alarms = alarms;
    generateFile(database_, options, true);
    FaultServerSettings settings;
    settings.databaseFile = database_;
    settings.frames = {items, ORMASIM_TEST_TAGGING};
    settings.faults = FaultScript::parse(rules, "faults.json", {kFaultServerPath});
    server_ = std::make_unique<FaultServer>(std::move(settings));
    port_ = server_->start(0);
  }

  std::unique_ptr<RawClient> ask(const std::string& body = requestBody(), std::uint16_t flags = 1,
                                 std::uint32_t command = kAllAlarms,
                                 std::uint32_t process = kFaultServerProcess) {
    auto client = std::make_unique<RawClient>(port_);
    ChannelHeader header;
    header.kind = kCommandFrame;
    header.flags = flags;
    header.process = process;
    header.command = command;
    header.id = kId;
    client->send(channelFrame(header, body));
    return client;
  }

  static void askNext(RawClient& client, std::uint32_t number) {
    ChannelHeader header;
    header.kind = kNextFrame;
    header.command = kAllAlarms;
    header.id = kId;
    header.number = number;
    client.send(channelFrame(header, ""));
  }

  static Received receive(RawClient& client) {
    const std::string bytes = client.read(kChannelHeaderBytes);
    std::array<unsigned char, kChannelHeaderBytes> header{};
    std::copy(bytes.begin(), bytes.end(), header.begin());
    const auto read = channelHeader(header);
    if (!read) {
      ADD_FAILURE() << bytes.size() << " bytes are no header";
      return {};
    }
    return {*read, client.read(read->length)};
  }

  static std::string xmlOf(const Received& reply) {
    return emf::test::Asn1cPeer("AsnSvrToOtherQryResp").xmlOf(reply.body);
  }

  // Everything that comes without flow control: the XML of the replies, then the end.
  std::vector<std::string> allReplies(RawClient& client, ChannelHeader& end) {
    std::vector<std::string> replies;
    for (;;) {
      const Received frame = receive(client);
      if (frame.header.kind != kReplyFrame) {
        end = frame.header;
        return replies;
      }
      EXPECT_EQ(frame.header.number, replies.size() + 1);
      replies.push_back(xmlOf(frame));
    }
  }

  // The serial numbers of all alarms that an exchange gives.
  std::vector<std::string> serials(RawClient& client) {
    ChannelHeader end;
    std::vector<std::string> all;
    for (const std::string& reply : allReplies(client, end)) {
      const auto some = textsIn(reply, "ulSerialNo");
      all.insert(all.end(), some.begin(), some.end());
    }
    EXPECT_EQ(end.kind, kEndFrame);
    EXPECT_EQ(end.error, 0u);
    return all;
  }

  void expectEnd(RawClient& client, std::uint32_t replies, std::uint32_t error) {
    const Received end = receive(client);
    EXPECT_EQ(end.header.kind, kEndFrame);
    EXPECT_EQ(end.header.id, kId);
    EXPECT_EQ(end.header.number, replies);
    EXPECT_EQ(end.header.error, error);
    EXPECT_EQ(client.readToEnd(), "");
  }

  static constexpr std::uint32_t kId = 77;
  TempDirectory directory_;
  const std::string database_ = directory_.path("net.db");
  std::unique_ptr<FaultServer> server_;
  int port_ = 0;
};

TEST_F(FaultServerTest, WithoutAlarmsTheEndComesAtOnce) {
  serve(0, 10);
  expectEnd(*ask(), 0, 0);
}

TEST_F(FaultServerTest, FramesComeOneByOneAsTheyAreAskedFor) {
  serve(25, 10);
  const auto client = ask();
  for (std::uint32_t number = 1; number <= 3; ++number) {
    if (number > 1) askNext(*client, number);
    const Received reply = receive(*client);
    EXPECT_EQ(reply.header.kind, kReplyFrame);
    EXPECT_EQ(reply.header.process, kFaultServerProcess);
    EXPECT_EQ(reply.header.command, kAllAlarms);
    EXPECT_EQ(reply.header.id, kId);
    EXPECT_EQ(reply.header.number, number);
    const std::string xml = xmlOf(reply);
    EXPECT_THAT(textsIn(xml, "ulErrorCode"), ElementsAre("0"));
    EXPECT_THAT(textsIn(xml, "ulFrameTotal"), ElementsAre("3"));
    EXPECT_THAT(textsIn(xml, "ulFrameNo"), ElementsAre(std::to_string(number)));
    EXPECT_EQ(textsIn(xml, "ulSerialNo").size(), number < 3 ? 10u : 5u);
  }
  expectEnd(*client, 3, 0);
}

TEST_F(FaultServerTest, WithoutFlowControlFramesComeUnasked) {
  serve(25, 10);
  std::vector<std::string> expected;
  for (int serial = 1; serial <= 25; ++serial) expected.push_back(std::to_string(serial));
  EXPECT_EQ(serials(*ask(requestBody(), 0)), expected);
}

TEST_F(FaultServerTest, FieldsAreThoseOfTheInventory) {
  serve(40, 100);
  ChannelHeader end;
  const auto client = ask(requestBody(), 0);
  const std::vector<std::string> replies = allReplies(*client, end);
  ASSERT_EQ(replies.size(), 1u);
  const std::pair<const char*, const char*> kColumns[] = {
      {"ulSerialNo", "a.serial_no"},   {"ulDevSerialNo", "a.dev_id"},
      {"ulDevID", "a.dev_id"},         {"ulNodeType", "d.main_type * 65536 + d.sub_type"},
      {"ucDevType", "a.group_id"},     {"ulFaultID", "a.alarm_id"},
      {"ucSeverity", "a.severity"},    {"ucFunctionType", "k.function_type"},
      {"ucEventType", "k.event_type"}, {"ulReasonID", "a.reason_id"}};
  for (const auto& [field, column] : kColumns) {
    EXPECT_EQ(textsIn(replies[0], field),
              query(database_, std::string("SELECT ") + column +
                                   " FROM alarm a JOIN device d USING (dev_id) JOIN "
                                   "alarm_definition k USING (group_id, alarm_id) "
                                   "ORDER BY serial_no"))
        << field;
  }
  EXPECT_EQ(textsIn(replies[0], "sYear").front(),
            query(database_,
                  "SELECT cast(strftime('%Y', raised_at, 'unixepoch') AS INTEGER) "
                  "FROM alarm WHERE serial_no = 1")
                .front());
}

TEST_F(FaultServerTest, OptionalFieldsAreThereWhereTheAlarmHasThem) {
  serve(300, 1000);
  ChannelHeader end;
  const auto client = ask(requestBody(), 0);
  const std::string xml = allReplies(*client, end).front();
  const auto count = [this](const std::string& condition) {
    return static_cast<std::size_t>(
        std::stoul(query(database_, "SELECT count(*) FROM alarm WHERE " + condition).front()));
  };
  EXPECT_EQ(textsIn(xml, "strFdn").size(), count("fdn <> ''"));
  EXPECT_EQ(textsIn(xml, "strAckUserName").size(), count("acked_at <> 0"));
  EXPECT_LT(count("fdn <> ''"), 300u);
  EXPECT_GT(count("acked_at <> 0"), 0u);
  EXPECT_EQ(textsIn(xml, "ucFaultFlag").size(), 300u);
}

TEST_F(FaultServerTest, OtherCommandAsksForAlarmsSinceATime) {
  serve(40, 100);
  const std::string since = query(database_, "SELECT raised_at FROM alarm WHERE serial_no = 31")[0];
  const auto client = ask(requestBody(sinceXml(std::stoll(since))), 0, kAlarmsSince);
  EXPECT_EQ(serials(*client), query(database_, "SELECT serial_no FROM alarm WHERE raised_at >= " +
                                                   since + " ORDER BY serial_no"));
}

TEST_F(FaultServerTest, RequestMayHoldEveryFilter) {
  serve(3, 10);
  const std::string filters =
      "<lstSeverity><AsnInt>1</AsnInt></lstSeverity>"
      "<lstFaultID><AsnAlmKeyStrc><cDevType>1</cDevType>"
      "<sAlmID>-70000</sAlmID></AsnAlmKeyStrc></lstFaultID>";
  EXPECT_EQ(serials(*ask(requestBody(timeXml("occurBeginTm", -1), filters), 0)).size(), 3u);
}

TEST_F(FaultServerTest, WhatIsNotUnderstoodIsRefusedWithACode) {
  serve(3, 10);
  const std::string body = requestBody();
  expectEnd(*ask(body, 1, 2156), 0, 1201);
  expectEnd(*ask(body, 1, kAllAlarms, 57), 0, 1201);
  expectEnd(*ask(""), 0, 1202);
  expectEnd(*ask(body + "x"), 0, 1202);
  for (std::size_t size = 1; size < body.size(); size += 7) {
    expectEnd(*ask(body.substr(0, size)), 0, 1202);
  }
}

TEST_F(FaultServerTest, WhatIsNoCommandIsClosed) {
  serve(3, 10);
  ChannelHeader next;
  next.kind = kNextFrame;
  std::string large = channelFrame(next, "");
  large[5] = static_cast<char>(kCommandFrame);
  large[32] = 0x7F;
  for (const std::string& bytes : {std::string("GET / HTTP/1.1\r\nHost: localhost\r\nX: y\r\n\r\n"),
                                   channelFrame(next, ""), large}) {
    RawClient client(port_);
    client.send(bytes);
    EXPECT_TRUE(client.closedSilently());
  }
}

TEST_F(FaultServerTest, FrameThatIsNotTheNextOneIsNotGiven) {
  serve(25, 10);
  const auto client = ask();
  receive(*client);
  askNext(*client, 3);
  EXPECT_TRUE(client->closedSilently());
}

TEST_F(FaultServerTest, AlarmsRaisedMeanwhileComeWithTheNextCommand) {
  serve(20, 10);
  const auto client = ask();
  receive(*client);
  RaiseOptions more;
  more.count = 5;
  more.device = 3;
  raiseAlarms(database_, more);
  askNext(*client, 2);
  EXPECT_EQ(textsIn(xmlOf(receive(*client)), "ulSerialNo").size(), 10u);
  expectEnd(*client, 2, 0);
  EXPECT_EQ(serials(*ask(requestBody(), 0)).size(), 25u);
}

TEST_F(FaultServerTest, AlarmsRemovedMeanwhileAreMissingAndNoneComesTwice) {
  serve(45, 10);
  const auto client = ask();
  std::vector<std::string> all = textsIn(xmlOf(receive(*client)), "ulSerialNo");
  RaiseOptions more;
  more.keep = 4;  // 43 to 46
  raiseAlarms(database_, more);
  for (std::uint32_t number = 2; number <= 5; ++number) {
    askNext(*client, number);
    const auto some = textsIn(xmlOf(receive(*client)), "ulSerialNo");
    all.insert(all.end(), some.begin(), some.end());
  }
  expectEnd(*client, 5, 0);
  // The second frame may have been made before the alarms were removed.
  std::vector<std::string> expected;
  for (int serial = 1; serial <= (all.size() > 20 ? 20 : 10); ++serial) {
    expected.push_back(std::to_string(serial));
  }
  expected.insert(expected.end(), {"43", "44", "45"});
  EXPECT_EQ(all, expected);
}

TEST_F(FaultServerTest, ErrorCodeStandsInTheChosenFrame) {
  serve(25, 10,
        R"([{"path": "fault-server", "requests": [1], "action": "error", "code": 5, "frame": 2}])");
  ChannelHeader end;
  const auto client = ask(requestBody(), 0);
  const auto replies = allReplies(*client, end);
  ASSERT_EQ(replies.size(), 3u);
  EXPECT_THAT(textsIn(replies[0], "ulErrorCode"), ElementsAre("0"));
  EXPECT_THAT(textsIn(replies[1], "ulErrorCode"), ElementsAre("5"));
  EXPECT_THAT(textsIn(replies[2], "ulErrorCode"), ElementsAre("0"));
  EXPECT_EQ(serials(*ask(requestBody(), 0)).size(), 25u) << "the second command";
}

TEST_F(FaultServerTest, EmptyFrameLosesItsItems) {
  serve(25, 10, R"([{"path": "fault-server", "requests": "all", "action": "empty", "frame": 2}])");
  EXPECT_EQ(serials(*ask(requestBody(), 0)).size(), 15u);
}

TEST_F(FaultServerTest, BareItemsHaveNoOptionalField) {
  serve(25, 10,
        R"([{"path": "fault-server", "requests": "all", "action": "bare", "frame": "all"}])");
  ChannelHeader end;
  const auto client = ask(requestBody(), 0);
  for (const std::string& reply : allReplies(*client, end)) {
    for (const char* field :
         {"ucFaultFlag", "strFdn", "strAckUserName", "ackTime", "addiInfoList"}) {
      EXPECT_THAT(reply, Not(HasSubstr(field)));
    }
    EXPECT_THAT(textsIn(reply, "strPara"), Not(IsEmpty()));
  }
}

TEST_F(FaultServerTest, RefusedCommandIsClosedWithoutAByte) {
  serve(25, 10, R"([{"path": "fault-server", "requests": "all", "action": "refuse"}])");
  EXPECT_TRUE(ask()->closedSilently());
}

TEST_F(FaultServerTest, CutFrameEndsHalfWay) {
  serve(25, 10, R"([{"path": "fault-server", "requests": [2], "action": "cut", "frame": 1}])");
  const auto first = ask();
  const Received whole = receive(*first);
  EXPECT_EQ(ask()->readToEnd().size(), (kChannelHeaderBytes + whole.body.size()) / 2);
}

TEST_F(FaultServerTest, GarbageIsNoFrame) {
  serve(25, 10, R"([{"path": "fault-server", "requests": "all", "action": "garbage"}])");
  EXPECT_THAT(ask()->read(8), "HTTP/1.1");
}

TEST_F(FaultServerTest, RejectedCommandEndsWithACode) {
  serve(25, 10,
        R"([{"path": "fault-server", "requests": "all", "action": "reject", "code": 9,
             "frame": 2}])");
  const auto client = ask();
  receive(*client);
  askNext(*client, 2);
  expectEnd(*client, 1, 9);
}

TEST_F(FaultServerTest, WrongOrderRepeatedAndForeignFramesAreMarkedSo) {
  serve(25, 10, R"([
    {"path": "fault-server", "requests": [1], "action": "wrongOrder", "frame": 2},
    {"path": "fault-server", "requests": [2], "action": "repeat", "frame": 2},
    {"path": "fault-server", "requests": [3], "action": "otherCommand", "frame": 2}])");
  std::vector<ChannelHeader> seconds;
  for (int i = 0; i < 3; ++i) {
    const auto client = ask(requestBody(), 0);
    receive(*client);
    seconds.push_back(receive(*client).header);
  }
  EXPECT_EQ(seconds[0].number, 3u);
  EXPECT_EQ(seconds[1].number, 1u);
  EXPECT_EQ(seconds[2].number, 2u);
  EXPECT_EQ(seconds[2].id, kId + 1);
}

TEST_F(FaultServerTest, StallHoldsAFrame) {
  serve(25, 10, R"([
    {"path": "fault-server", "requests": [1], "action": "stall", "seconds": 0.05},
    {"path": "fault-server", "requests": [2], "action": "stall", "frame": 2}])");
  EXPECT_EQ(serials(*ask(requestBody(), 0)).size(), 25u);
  const auto held = ask(requestBody(), 0);
  receive(*held);
  // The third command is answered while the second one is held, and stopping ends that.
  EXPECT_EQ(serials(*ask(requestBody(), 0)).size(), 25u);
  server_->stop();
  EXPECT_TRUE(held->closedSilently());
}

TEST_F(FaultServerTest, DatabaseThatFailsIsToldByACode) {
  serve(25, 10);
  directory_.write("net.db", "no database any more");
  expectEnd(*ask(), 0, 1203);
}

TEST(FaultServerStart, MissingDatabaseIsTold) {
  EXPECT_THAT(errorOf([] {
                FaultServer server({"/nowhere/net.db", {}, {}});
              }),
              HasSubstr("/nowhere/net.db"));
}

TEST(FaultServerStart, TagsAreThoseOfTheMode) {
  const std::string body =
      requestBody(timeXml("occurBeginTm", -1), "<lstSeverity><AsnInt>1</AsnInt></lstSeverity>");
  // [0] behind the type flag: the list's own content, or the whole list in a wrapping.
  const std::string expected =
      kExplicit ? std::string("\xA0\x05\x30\x03\x02\x01\x01") : std::string("\xA0\x03\x02\x01\x01");
  EXPECT_EQ(body.substr(5, expected.size()), expected);
}

}  // namespace
}  // namespace ormasim::testing
