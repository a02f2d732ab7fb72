#include "faultquery.h"

#include <cstring>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "alarm_records.h"
#include "emfalminterface.h"
#include "message_walk.h"
#include "platform_test.h"
#include "processexception.h"
#include "test_clock.h"

namespace emf::test {
namespace {

using emf::doubles::CommandSettings;
using emf::doubles::LogLine;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Calls = std::vector<std::string>;
using Item = AsnSvrToOtherQryRespResultStrc;

static_assert(
    std::is_same_v<decltype(EMFAlarmI::getAllAlarms), std::int64_t(std::list<FaultRecord>&)>);
static_assert(std::is_same_v<decltype(EMFAlarmI::getAllEvents),
                             std::int64_t(std::list<FaultRecord>&, unsigned int)>);

// Every mapped field has a value of its own, and so has every one that is not read.
void fillItem(Item& item, int base) {
  item.ulSerialNo = base + 1;
  item.ulDevSerialNo = base + 2;
  item.ulNodeType = base + 3;
  item.ulDevID = base + 4;
  item.ucDevType = base + 5;
  item.ulFaultID = base + 6;
  item.ucSeverity = base + 7;
  item.ucFunctionType = base + 8;
  item.ucEventType = base + 9;
  item.strName.ReSet("name");
  item.ulReasonID = base + 10;
  item.strReason.ReSet("reason");
  item.strRepair.ReSet("repair");
  item.strMeaning.ReSet("meaning");
  item.ucFaultFlag.make() = 2;
  item.faultTime->sYear = 2024;
  item.faultTime->cMonth = 1;
  item.faultTime->cDay = 2;
  item.faultTime->cHour = 3;
  item.faultTime->cMinute = 4;
  item.faultTime->cSecond = 5;
  item.ackTime.make().sYear = 1999;
  item.clearTime.make().sYear = 1998;
  item.neZone = 8;
  item.strAckUserName.make().ReSet("user");
  item.strLocation.ReSet("location");
  item.strFdn.make().ReSet(("NE=" + std::to_string(base)).c_str());
  item.strPara.ReSet(("para " + std::to_string(base)).c_str());
  item.strDetail.ReSet("detail");
  item.addiInfoList.make().add().value.ReSet("more");
  item.rootCauseAlarmIndication = 9;
}

FaultRecord recordOf(int base) {
  FaultRecord record;
  record.devSerialNo = base + 2;
  record.nodeType = base + 3;
  record.devType = base + 5;
  record.faultId = base + 6;
  record.severity = base + 7;
  record.functionType = base + 8;
  record.eventType = base + 9;
  record.reasonId = base + 10;
  record.faultTime.tm_year = 124;
  record.faultTime.tm_mon = 0;
  record.faultTime.tm_mday = 2;
  record.faultTime.tm_hour = 3;
  record.faultTime.tm_min = 4;
  record.faultTime.tm_sec = 5;
  record.faultTime.tm_wday = record.faultTime.tm_yday = record.faultTime.tm_isdst = -1;
  record.fdn = "NE=" + std::to_string(base);
  record.para = "para " + std::to_string(base);
  record.faultFlag = 1;
  return record;
}

// Frame `number` of `total`, with an item for each base.
struct Frame {
  Frame(int number, int total, const std::vector<int>& bases = {}, int errorCode = 0) {
    reply.ulErrorCode = errorCode;
    reply.ulFrameTotal = total;
    reply.ulFrameNo = number;
    for (const int base : bases) fillItem(reply.lstItem.add(), base);
  }
  AsnSvrToOtherQryResp reply;
};

struct Thrown {
  int code;
  std::string file;
  std::string function;
  std::string reserved;
  std::string detail;
};

class FaultQuery : public emf::doubles::PlatformTest {
 protected:
  static void frame(const Frame& frame, unsigned long errorCode = 0) {
    platform().channel.frame(frame.reply, errorCode);
  }
  std::int64_t query() { return EMFAlarmI::getAllAlarms(records_); }

  // What a query throws; whether the command was destroyed once, if one was made.
  template <typename Query>
  static Thrown thrownBy(Query query) {
    try {
      query();
    } catch (ProcessException& failure) {
      EXPECT_GT(failure.line, 0);
      return {failure.errCode, failure.file.str(), failure.function.str(), failure.reserved.str(),
              failure.detail.str()};
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
  }
  void expectThrown(int code) {
    const Thrown thrown = thrownBy([this] { query(); });
    EXPECT_EQ(thrown.code, code);
    EXPECT_EQ(thrown.file, "emfalminterface");
    EXPECT_EQ(thrown.function, "unknown");
    EXPECT_EQ(thrown.reserved, "");
    EXPECT_EQ(thrown.detail, "ErrCode:" + std::to_string(code) + ",Detail:");
    expectDestroyedOnce();
  }
  static void expectDestroyedOnce() {
    const Calls calls = platform().channel.calls();
    ASSERT_THAT(calls, testing::Not(IsEmpty()));
    EXPECT_EQ(calls.back(), "Destroy");
    EXPECT_EQ(platform().channel.callsOf("Destroy"), 1);
    EXPECT_EQ(platform().channel.callsOf("Send"), 1);
    EXPECT_GE(platform().channel.callsOf("Receive"), 1);
  }
  static std::string request() {
    AsnOtherToSvrQryAlmEventReq decoded;
    decode(decoded, platform().channel.commands().at(0).body);
    return xml(decoded);
  }

  std::list<FaultRecord> records_;
};

TEST_F(FaultQuery, NothingAtAllIsASuccess) {
  platform().channel.ends();
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, IsEmpty());
  EXPECT_THAT(platform().channel.calls(), ElementsAre("CAsnPhyCmd", "Send", "Receive", "Destroy"));
}

TEST_F(FaultQuery, CommandHasItsSettings) {
  query();
  const auto commands = platform().channel.commands();
  ASSERT_THAT(commands, SizeIs(1));
  EXPECT_EQ(commands[0].code, 2158U);
  EXPECT_EQ(commands[0].process, 56U);
  EXPECT_EQ(commands[0].instance, 0U);
  EXPECT_EQ(commands[0].timeoutSeconds, 300);
  EXPECT_EQ(commands[0].flowControl, 1);
  EXPECT_EQ(commands[0].priority, 0);
}

std::string noTime() {
  std::string text;
  for (const char* field : {"sYear", "cMonth", "cDay", "cHour", "cMinute", "cSecond"}) {
    text += element(field, "-1");
  }
  return text;
}

std::string requestWith(const std::string& begin) {
  return element("ucTypeFlag", "1") + element("occurBeginTm", begin) +
         element("occurEndTm", noTime()) + element("lstTopoOID", "") + element("strPara", "");
}

TEST_F(FaultQuery, RequestLimitsNothing) {
  query();
  EXPECT_EQ(request(), requestWith(noTime()));
}

TEST_F(FaultQuery, EventsAskForTheSameWhateverTheSeconds) {
  query();
  for (const unsigned seconds : {0U, 1U, 3600U, 0xFFFFFFFFU}) {
    EXPECT_EQ(EMFAlarmI::getAllEvents(records_, seconds), 0);
  }
  const auto commands = platform().channel.commands();
  ASSERT_THAT(commands, SizeIs(5));
  for (const CommandSettings& command : commands) {
    EXPECT_EQ(command.code, 2158U);
    EXPECT_EQ(toHex(command.body), toHex(commands[0].body));
  }
}

std::string timeText(int year, int month, int day, int hour, int minute, int second) {
  return element("sYear", std::to_string(year)) + element("cMonth", std::to_string(month)) +
         element("cDay", std::to_string(day)) + element("cHour", std::to_string(hour)) +
         element("cMinute", std::to_string(minute)) + element("cSecond", std::to_string(second));
}

// The year counts from 1900 and the month from 0, unlike in a reply.
TEST_F(FaultQuery, TimeRangeBeginsSecondsAgo) {
  const TestClock clock(1704164645);  // 2024-01-02 03:04:05 UTC
  const std::pair<unsigned, std::string> kRanges[] = {
      {0, timeText(124, 0, 2, 3, 4, 5)},         {5, timeText(124, 0, 2, 3, 4, 0)},
      {3600, timeText(124, 0, 2, 2, 4, 5)},      {86400 * 2, timeText(123, 11, 31, 3, 4, 5)},
      {1704164645, timeText(70, 0, 1, 0, 0, 0)}, {0xFFFFFFFFU, timeText(-13, 10, 25, 20, 35, 50)},
  };
  for (const auto& [seconds, begin] : kRanges) {
    platform().reset();
    EXPECT_EQ(queryFaultRecords(records_, 2157, seconds), 0);
    EXPECT_EQ(platform().channel.commands().at(0).code, 2157U);
    EXPECT_EQ(request(), requestWith(begin)) << seconds;
  }
}

TEST_F(FaultQuery, TimeRangeDeliversRecordsLikeAnyQuery) {
  frame(Frame(1, 1, {100}));
  EXPECT_EQ(queryFaultRecords(records_, 2157, 60), 0);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
  expectDestroyedOnce();
}

TEST_F(FaultQuery, AnyOtherCommandIsRefusedBeforeThereIsOne) {
  records_ = {recordOf(1)};
  for (const unsigned long command : {0UL, 1UL, 2156UL, 2159UL, ~0UL}) {
    const Thrown thrown = thrownBy([this, command] { queryFaultRecords(records_, command, 0); });
    EXPECT_EQ(thrown.code, -1) << command;
    EXPECT_EQ(thrown.file, "emfalminterface");
    EXPECT_EQ(thrown.function, "unknown");
    EXPECT_EQ(thrown.detail, "ErrCode:-1,Detail:");
  }
  EXPECT_THAT(platform().channel.calls(), IsEmpty());
  EXPECT_THAT(platform().log.lines(), IsEmpty());
  EXPECT_THAT(records_, ElementsAre(recordOf(1)));
}

TEST_F(FaultQuery, EachItemBecomesARecord) {
  frame(Frame(1, 1, {100, 200}));
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, ElementsAre(recordOf(100), recordOf(200)));
  for (const FaultRecord& record : records_) {
    EXPECT_EQ(record.faultTime.tm_gmtoff, 0);
    EXPECT_EQ(record.faultTime.tm_zone, nullptr);
    EXPECT_FALSE(record.isRecover());
    EXPECT_EQ(record.auxValue1, 0);
    EXPECT_EQ(record.auxValue2, 0);
    EXPECT_EQ(record.auxText1, "");
    EXPECT_EQ(record.auxText2, "");
  }
}

TEST_F(FaultQuery, RecordsGoBehindThoseThatAreThere) {
  records_ = {recordOf(1)};
  frame(Frame(1, 1, {100}));
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, ElementsAre(recordOf(1), recordOf(100)));
}

TEST_F(FaultQuery, NextFrameIsAskedForWhileFramesRemain) {
  frame(Frame(1, 3, {100, 200}));
  frame(Frame(2, 3));
  frame(Frame(3, 3, {300}));
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, ElementsAre(recordOf(100), recordOf(200), recordOf(300)));
  EXPECT_THAT(platform().channel.calls(),
              ElementsAre("CAsnPhyCmd", "Send", "Receive", "NeedNextRsp", "Receive", "NeedNextRsp",
                          "Receive", "Receive", "Destroy"));
}

TEST_F(FaultQuery, NumbersDecideOnlyWhatIsAskedFor) {
  // The last frame is not known by its number: it is Receive that ends the exchange.
  frame(Frame(3, 3, {100}));
  frame(Frame(7, 3, {200}));
  frame(Frame(-1, 0, {300}));
  frame(Frame(0, -1, {400}));
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, SizeIs(4));
  EXPECT_THAT(platform().channel.calls(),
              ElementsAre("CAsnPhyCmd", "Send", "Receive", "Receive", "Receive", "NeedNextRsp",
                          "Receive", "Receive", "Destroy"));
}

TEST_F(FaultQuery, CodeStartsAtZeroAndIsThatOfTheFrame) {
  frame(Frame(1, 2));
  frame(Frame(2, 2));
  query();
  EXPECT_THAT(platform().channel.codesBefore(), ElementsAre(0U, 0U, 0U));
}

TEST_F(FaultQuery, FailedFirstReceiveIsThrown) {
  platform().channel.fails(6105);
  expectThrown(6105);
  EXPECT_THAT(records_, IsEmpty());
}

TEST_F(FaultQuery, FailedLaterReceiveKeepsTheRecordsBefore) {
  frame(Frame(1, 3, {100}));
  platform().channel.fails(6104);
  expectThrown(6104);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
}

TEST_F(FaultQuery, FrameThatComesWithAnErrorIsThrownWithoutItsRecords) {
  frame(Frame(1, 3, {100}));
  frame(Frame(2, 3, {200}), 17);
  expectThrown(17);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
}

TEST_F(FaultQuery, ErrorCodeOfAFrameIsThrownWithoutItsRecords) {
  frame(Frame(1, 3, {100}));
  frame(Frame(2, 3, {200}, 5));
  expectThrown(5);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
  EXPECT_THAT(platform().channel.calls(),
              ElementsAre("CAsnPhyCmd", "Send", "Receive", "NeedNextRsp", "Receive", "Destroy"));
}

TEST_F(FaultQuery, CodesAreCutToThirtyTwoBits) {
  const std::pair<unsigned long, int> kCodes[] = {
      {~0UL, -1}, {0x80000000UL, -2147483647 - 1}, {0x100000007UL, 7}, {0xFFFFFFFF00000000UL, 0}};
  for (const auto& [code, cut] : kCodes) {
    platform().reset();
    platform().channel.fails(code);
    expectThrown(cut);
  }
  platform().reset();
  frame(Frame(1, 1, {}, -7));
  expectThrown(-7);
}

TEST_F(FaultQuery, ErrorOfTheChannelComesBeforeTheFramesOwn) {
  frame(Frame(1, 1, {}, 5), 9);
  expectThrown(9);
}

TEST_F(FaultQuery, FailedSendIsLeftToReceive) {
  platform().channel.sendGives(false);
  platform().channel.fails(6102);
  expectThrown(6102);
  platform().reset();
  platform().channel.sendGives(false);
  EXPECT_EQ(query(), 0);
}

TEST_F(FaultQuery, WhatTheDecoderThrowsPassesAfterDestroy) {
  frame(Frame(1, 3, {100}));
  platform().channel.bytes(fromHex("30 0B 02 01 00 02 01 02 02 01 02 31 00"));
  const auto failure = failureOf([this] { query(); });
  ASSERT_NE(failure, nullptr);
  EXPECT_EQ(failure->code(), -54);
  EXPECT_EQ(failure->line(), 250);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
  expectDestroyedOnce();
}

TEST_F(FaultQuery, WhatSendAndReceiveThrowPassesAfterDestroy) {
  platform().channel.duringSend([] { throw std::runtime_error("send"); });
  EXPECT_THROW(query(), std::runtime_error);
  EXPECT_THAT(platform().channel.calls(), ElementsAre("CAsnPhyCmd", "Send", "Destroy"));

  platform().reset();
  frame(Frame(1, 2, {100}));
  platform().channel.receiveThrows([] { throw std::bad_alloc(); });
  EXPECT_THROW(query(), std::bad_alloc);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
  expectDestroyedOnce();
}

// The names are asked for by virtual operations, which an object that is gone does not have.
TEST_F(FaultQuery, RequestAndReplyOutliveTheCommand) {
  for (const bool fails : {false, true}) {
    platform().reset();
    const AsnType* held = nullptr;
    platform().channel.frameBy([&held](AsnType& reply) { held = &reply; });
    if (fails) platform().channel.fails(7);
    std::vector<std::string> names;
    platform().channel.duringDestroy([&](const AsnType& request) {
      for (const AsnType* message : {&request, held}) names.emplace_back(message->typeName());
    });
    if (fails) {
      expectThrown(7);
    } else {
      EXPECT_EQ(query(), 0);
    }
    EXPECT_THAT(names, ElementsAre("AsnOtherToSvrQryAlmEventReq", "AsnSvrToOtherQryResp"));
  }
}

TEST_F(FaultQuery, ItemWithoutANameOfItsResourceHasAnEmptyOne) {
  Frame some(1, 1, {100, 200});
  Item bare;
  platform().channel.frameBy([&](AsnType& reply) {
    auto& target = dynamic_cast<AsnSvrToOtherQryResp&>(reply);
    target.Assign(some.reply);
    target.lstItem.add();
  });
  EXPECT_EQ(query(), 0);
  ASSERT_THAT(records_, SizeIs(3));
  const FaultRecord& record = records_.back();
  EXPECT_EQ(record.fdn, "");
  EXPECT_EQ(record.para, "");
  EXPECT_EQ(record.faultTime.tm_year, -1900);
  EXPECT_EQ(record.faultTime.tm_mon, -1);
  EXPECT_EQ(record.faultFlag, 1);
}

TEST_F(FaultQuery, TextsEndAtTheirFirstZeroAndAreNotConverted) {
  platform().text.characterSetSwitch(1);
  Frame one(1, 1, {100});
  one.reply.lstItem.toFirst();
  Item& item = *one.reply.lstItem.current();
  item.strPara.ReSet("pa\0ra", 5UL);
  item.strFdn.make().ReSet("\xE4\xB8\xAD\0x", 5UL);
  frame(one);
  EXPECT_EQ(query(), 0);
  EXPECT_EQ(records_.front().para, "pa");
  EXPECT_EQ(records_.front().fdn, "\xE4\xB8\xAD");
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

TEST_F(FaultQuery, LongTextsAreTakenWhole) {
  Frame one(1, 1, {100});
  one.reply.lstItem.toFirst();
  const std::string longText(70000, 'x');
  one.reply.lstItem.current()->strPara.ReSet(longText.c_str());
  frame(one);
  EXPECT_EQ(query(), 0);
  EXPECT_EQ(records_.front().para, longText);
}

TEST_F(FaultQuery, NumbersAreSignedAndWidened) {
  Frame one(1, 1, {-2147483647 - 1});
  frame(one);
  EXPECT_EQ(query(), 0);
  EXPECT_EQ(records_.front(), recordOf(-2147483647 - 1));
  EXPECT_EQ(records_.front().devSerialNo, -2147483646LL);
}

TEST_F(FaultQuery, WalkEndsAtANodeWithoutAnItem) {
  platform().channel.frameBy([](AsnType& reply) {
    auto& target = dynamic_cast<AsnSvrToOtherQryResp&>(reply);
    fillItem(target.lstItem.add(), 100);
    target.lstItem.append(nullptr);
    fillItem(target.lstItem.add(), 300);
  });
  EXPECT_EQ(query(), 0);
  EXPECT_THAT(records_, ElementsAre(recordOf(100)));
}

TEST_F(FaultQuery, NoMoreThanOneFrameIsHeld) {
  frame(Frame(1, 2, {100, 200}));
  std::uint64_t held = 99;
  platform().channel.frameBy([&held](AsnType& reply) {
    auto& target = dynamic_cast<AsnSvrToOtherQryResp&>(reply);
    held = target.lstItem.count();
    target.ulFrameNo = 2;
  });
  EXPECT_EQ(query(), 0);
  EXPECT_EQ(held, 0U);
}

TEST_F(FaultQuery, RequestAndRepliesAreTraced) {
  frame(Frame(1, 2, {100}));
  frame(Frame(2, 2, {}, 5));
  const Thrown thrown = thrownBy([this] { query(); });
  EXPECT_EQ(thrown.code, 5);
  const std::vector<LogLine> lines = platform().log.lines();
  ASSERT_THAT(lines, SizeIs(3));
  for (const LogLine& line : lines) {
    EXPECT_THAT(line, FieldsAre("onbi/asn/debug", "LogAsn", "emfalminterface", "unknown", Gt(0), 0,
                                testing::_));
  }
  EXPECT_THAT(lines[0].text, testing::HasSubstr("ucTypeFlag: 1"));
  EXPECT_THAT(lines[1].text, testing::HasSubstr("ulFrameNo: 1"));
  EXPECT_THAT(lines[1].text, testing::HasSubstr("- ulSerialNo: 101"));
  EXPECT_THAT(lines[2].text, testing::HasSubstr("ulErrorCode: 5"));
  const auto events = platform().journal.events();
  EXPECT_EQ(events[0], "log: " + lines[0].text);
  EXPECT_EQ(events[1], "channel: CAsnPhyCmd");
}

TEST_F(FaultQuery, FrameWithAnErrorIsTracedToo) {
  frame(Frame(1, 1), 17);
  expectThrown(17);
  EXPECT_THAT(platform().log.lines(), SizeIs(2));
}

}  // namespace
}  // namespace emf::test
