#include <stdexcept>
#include <type_traits>

#include "alarm_records.h"
#include "catalogue_service.h"
#include "emfalminterface.h"
#include "platform_test.h"

namespace emf::test {
namespace {

using emf::doubles::AlarmQuery;
using emf::doubles::json;
using emf::doubles::LogLine;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

static_assert(
    std::is_same_v<decltype(EMFAlarmI::getAllAlarmCfg), std::int64_t(std::vector<AlarmCfg>&)>);
static_assert(std::is_same_v<decltype(EMFAlarmI::getAllAlarmReason),
                             std::int64_t(std::vector<AlarmReason>&)>);

struct Definitions {
  using Record = AlarmCfg;
  static constexpr char kQuery[] = "QueryAlarmDefinitionInfo";
  static constexpr char kFailed[] =
      "[NBIHTTPProxy::QueryAlarmDefinitionInfo]:call rest interface failed!";
  static constexpr char kTotal[] =
      "[EMFAlarmI::getAllAlarmCfg]:get totalCount by rest interface is: ";
  static constexpr char kDone[] = "[EMFAlarmI::getAllAlarmCfg]:Static Data amount: ";
  static constexpr char kDoneEnd[] = " ";

  static std::int64_t read(std::vector<AlarmCfg>& out) { return EMFAlarmI::getAllAlarmCfg(out); }
  static AlarmCfg element(int index) {
    AlarmCfg record;
    record.alarmId = record.alarmGroupId = record.eventType = record.severity = index;
    record.alarmName = "name " + std::to_string(index);
    record.description = "about " + std::to_string(index);
    return record;
  }
  static AlarmCfg closing() {
    AlarmCfg record;
    record.alarmGroupId = record.alarmId = -999;
    return record;
  }
};

struct Reasons {
  using Record = AlarmReason;
  static constexpr char kQuery[] = "QueryAlarmReasonInfo";
  static constexpr char kFailed[] = "[NBIHTTPProxy::getAllAlarmReason]:call rest interface failed!";
  static constexpr char kTotal[] =
      "[EMFAlarmI::getAllAlarmReason]:get totalCount by rest interface is: ";
  static constexpr char kDone[] = "[EMFAlarmI::getAllAlarmReason]:Static Data amount: ";
  static constexpr char kDoneEnd[] = "";

  static std::int64_t read(std::vector<AlarmReason>& out) {
    return EMFAlarmI::getAllAlarmReason(out);
  }
  static AlarmReason element(int index) {
    AlarmReason record;
    record.alarmId = record.alarmGroupId = record.reasonId = index;
    record.causes = "name " + std::to_string(index);
    record.repairAction = "about " + std::to_string(index);
    return record;
  }
  static AlarmReason closing() {
    AlarmReason record;
    record.alarmGroupId = record.alarmId = record.reasonId = -999;
    return record;
  }
};

template <typename Kind>
class Catalogue : public emf::doubles::PlatformTest {
 protected:
  using Record = typename Kind::Record;

  std::int64_t read() { return Kind::read(records_); }

  static void answers(const std::string& answer) {
    platform().alarms.answersBy([answer](const AlarmQuery&, Json::Value& out) {
      out = json(answer);
      return true;
    });
  }
  // One page with these elements.
  static void elements(const std::string& elements) {
    answers(R"({"totalCount":1,"definitions":)" + elements + "}");
  }
  static std::string total(const std::string& number) { return Kind::kTotal + number; }
  static std::string done(std::size_t records) {
    return Kind::kDone + std::to_string(records) + Kind::kDoneEnd;
  }
  static void expectLog(const std::vector<std::string>& texts) {
    EXPECT_EQ(platform().log.texts(), texts);
    for (const LogLine& line : platform().log.lines()) {
      EXPECT_THAT(line, FieldsAre("ii_domain_bundle/ii_domain_model/debug", "LogFormat",
                                  "emfalminterface", "unknown", Gt(0), 1, Not(IsEmpty())));
    }
    EXPECT_THAT(platform().trace.lines(), IsEmpty());
  }
  static std::vector<Record> firstElements(int count) {
    std::vector<Record> records;
    for (int index = 0; index < count; ++index) records.push_back(Kind::element(index));
    return records;
  }

  std::vector<Record> records_;
};

using Kinds = ::testing::Types<Definitions, Reasons>;
TYPED_TEST_SUITE(Catalogue, Kinds, );

TYPED_TEST(Catalogue, IsReadInPagesOfFiveThousandAndClosed) {
  const std::pair<int, std::vector<std::int64_t>> kCatalogues[] = {
      {0, {0}},          {1, {0}},          {4999, {0}},        {5000, {0}},
      {5001, {0, 5000}}, {9999, {0, 5000}}, {10000, {0, 5000}}, {10001, {0, 5000, 10000}},
  };
  for (const auto& [size, offsets] : kCatalogues) {
    platform().reset();
    this->records_.clear();
    CatalogueService service(size);
    service.start();
    EXPECT_EQ(this->read(), 0) << size;
    auto expected = this->firstElements(size);
    expected.push_back(TypeParam::closing());
    EXPECT_TRUE(this->records_ == expected) << size << ", " << this->records_.size();
    EXPECT_EQ(service.offsets(), offsets) << size;
    this->expectLog({this->total(std::to_string(size)), this->done(expected.size())});
  }
}

TYPED_TEST(Catalogue, FailedPageKeepsThePagesBeforeAndClosesNothing) {
  for (const int size : {0, 1, 5000, 5001, 10000, 10001}) {
    for (int offset = 0; offset == 0 || offset < size; offset += 5000) {
      platform().reset();
      this->records_.clear();
      CatalogueService service(size);
      service.failsAt(offset);
      service.start();
      EXPECT_EQ(this->read(), 1) << size << '/' << offset;
      EXPECT_TRUE(this->records_ == this->firstElements(offset)) << size << '/' << offset;
      EXPECT_EQ(service.offsets().back(), offset);
      if (offset == 0) {
        this->expectLog({TypeParam::kFailed});
      } else {
        this->expectLog({this->total(std::to_string(size)), TypeParam::kFailed});
      }
    }
  }
}

TYPED_TEST(Catalogue, QueriesCarryOffsetAndLimitInStyledText) {
  CatalogueService service(5001);
  service.start();
  this->read();
  EXPECT_THAT(
      platform().alarms.queries(),
      ElementsAre(FieldsAre(TypeParam::kQuery, "{\n\t\"limit\" : 5000,\n\t\"offset\" : 0\n}\n",
                            Json::Value()),
                  FieldsAre(TypeParam::kQuery, "{\n\t\"limit\" : 5000,\n\t\"offset\" : 5000\n}\n",
                            Json::Value())));
}

TYPED_TEST(Catalogue, RecordsGoBehindThoseThatAreThere) {
  this->records_ = {TypeParam::element(77)};
  CatalogueService service(1);
  service.start();
  EXPECT_EQ(this->read(), 0);
  EXPECT_THAT(this->records_,
              ElementsAre(TypeParam::element(77), TypeParam::element(0), TypeParam::closing()));
  this->expectLog({this->total("1"), this->done(3)});
}

TYPED_TEST(Catalogue, AnswerWithoutATotalIsAnEmptyCatalogue) {
  for (const char* answer : {"null", "{}", R"({"totalCount":null,"definitions":[{}]})", "[]", "5",
                             R"("text")", R"({"definitions":[{}]})"}) {
    platform().reset();
    this->records_.clear();
    this->answers(answer);
    EXPECT_EQ(this->read(), 0) << answer;
    EXPECT_THAT(this->records_, ElementsAre(TypeParam::closing())) << answer;
    EXPECT_THAT(platform().alarms.queries(), SizeIs(1)) << answer;
    this->expectLog({this->done(1)});
  }
}

TYPED_TEST(Catalogue, ElementsOfAnEmptyCatalogueAreNotLookedAt) {
  this->answers(R"({"totalCount":0,"definitions":[{"alarmId":"5"}]})");
  EXPECT_EQ(this->read(), 0);
  EXPECT_THAT(this->records_, ElementsAre(TypeParam::closing()));
  this->expectLog({this->total("0"), this->done(1)});
}

TYPED_TEST(Catalogue, TotalIsCutToThirtyTwoBits) {
  const std::pair<const char*, const char*> kTotals[] = {
      {"4294967296", "0"}, {"4294967297", "1"}, {"1.9", "1"}, {"true", "1"}};
  for (const auto& [count, logged] : kTotals) {
    platform().reset();
    this->records_.clear();
    this->answers(R"({"totalCount":)" + std::string(count) + R"(,"definitions":[]})");
    EXPECT_EQ(this->read(), 0) << count;
    this->expectLog({this->total(logged), this->done(1)});
  }
}

// -1 is 4294967295 elements, of which the service tells none.
TYPED_TEST(Catalogue, NegativeTotalIsALargeOne) {
  platform().alarms.answersBy([](const AlarmQuery& query, Json::Value& answer) {
    answer["totalCount"] = -1;
    return json(query.body)["offset"].asInt64() < 15000;
  });
  EXPECT_EQ(this->read(), 1);
  EXPECT_THAT(platform().alarms.queries(), SizeIs(4));
  this->expectLog({this->total("-1"), TypeParam::kFailed});
}

TYPED_TEST(Catalogue, PagesOfAnotherFormAreLostSilently) {
  const char* const kForms[] = {
      R"({"totalCount":10001})", R"({"totalCount":10001,"definitions":null})",
      R"({"totalCount":10001,"definitions":"text"})", R"({"totalCount":10001,"definitions":[]})"};
  for (const char* first : kForms) {
    platform().reset();
    this->records_.clear();
    platform().alarms.answersBy([&first](const AlarmQuery& query, Json::Value& answer) {
      const std::int64_t offset = json(query.body)["offset"].asInt64();
      answer = offset == 0      ? json(first)
               : offset == 5000 ? json("[1,2]")
                                : json(R"({"definitions":[{}]})");
      return true;
    });
    EXPECT_EQ(this->read(), 0) << first;
    typename TypeParam::Record empty;
    EXPECT_THAT(this->records_, ElementsAre(empty, TypeParam::closing())) << first;
    this->expectLog({this->total("10001"), this->done(2)});
  }
}

TYPED_TEST(Catalogue, NoElementIsRejected) {
  this->elements(R"([{},null,5,"text",[],{"other":1}])");
  EXPECT_EQ(this->read(), 0);
  const typename TypeParam::Record empty;
  EXPECT_THAT(this->records_,
              ElementsAre(empty, empty, empty, empty, empty, empty, TypeParam::closing()));
}

TYPED_TEST(Catalogue, ElementsOfAnObjectCountToo) {
  this->elements(R"({"a":{"alarmId":"1"},"b":{"alarmId":"2"}})");
  EXPECT_EQ(this->read(), 0);
  ASSERT_THAT(this->records_, SizeIs(3));
  EXPECT_EQ(this->records_[0].alarmId, 1);
  EXPECT_EQ(this->records_[1].alarmId, 2);
}

TYPED_TEST(Catalogue, IdentifiersAreTheNumbersThatTheirTextsBeginWith) {
  const std::pair<const char*, int> kTexts[] = {
      {"12", 12},
      {"12abc", 12},
      {"abc", 0},
      {"", 0},
      {" 12", 12},
      {"-7", -7},
      {"+7", 7},
      {"0x10", 0},
      {"010", 10},
      {"1.9", 1},
      {"4294967297", 1},
      {"2147483648", -2147483647 - 1},
      {"99999999999999999999", -1},
      {"-99999999999999999999", 0},
  };
  for (const char* key : {"alarmId", "alarmGroupId"}) {
    for (const auto& [text, number] : kTexts) {
      this->records_.clear();
      this->elements(R"([{")" + std::string(key) + R"(":")" + text + R"("}])");
      EXPECT_EQ(this->read(), 0);
      typename TypeParam::Record expected;
      (std::string(key) == "alarmId" ? expected.alarmId : expected.alarmGroupId) = number;
      EXPECT_EQ(this->records_.at(0), expected) << key << ' ' << text;
    }
  }
}

TYPED_TEST(Catalogue, MemberOfAWrongTypeIsToldAndWhatCameBeforeStays) {
  for (const char* member :
       {R"("alarmId":12)", R"("alarmGroupId":12)", R"("alarmId":{})", R"("alarmGroupId":true)"}) {
    this->records_.clear();
    this->elements(R"([{"alarmId":"1"},{)" + std::string(member) + R"(},{"alarmId":"3"}])");
    EXPECT_THROW(this->read(), Json::LogicError) << member;
    ASSERT_THAT(this->records_, SizeIs(1)) << member;
    EXPECT_EQ(this->records_[0].alarmId, 1);
  }
  this->answers(R"({"totalCount":"5"})");
  EXPECT_THROW(this->read(), Json::LogicError);
}

TYPED_TEST(Catalogue, WhatTheQueryThrowsPasses) {
  platform().alarms.answersBy(
      [](const AlarmQuery&, Json::Value&) -> bool { throw std::runtime_error("refused"); });
  EXPECT_THROW(this->read(), std::runtime_error);
  EXPECT_THAT(this->records_, IsEmpty());
}

class DefinitionElement : public Catalogue<Definitions> {};

TEST_F(DefinitionElement, EveryMemberHasItsField) {
  elements(R"([{"alarmId":"1","alarmGroupId":"2","eventType":3,"severity":4,"alarmName":"five",)"
           R"("description":"six"}])");
  EXPECT_EQ(read(), 0);
  AlarmCfg expected;
  expected.alarmId = 1;
  expected.alarmGroupId = 2;
  expected.eventType = 3;
  expected.severity = 4;
  expected.alarmName = "five";
  expected.description = "six";
  EXPECT_THAT(records_, ElementsAre(expected, Definitions::closing()));
  EXPECT_STREQ(records_[0].alarmClass2Str(), "unknown");
}

TEST_F(DefinitionElement, AbsentAndNullMembersLeaveDefaults) {
  const std::pair<const char*, const char*> kMembers[] = {
      {"alarmId", R"("1")"}, {"alarmGroupId", R"("1")"}, {"eventType", "1"},
      {"severity", "1"},     {"alarmName", R"("x")"},    {"description", R"("x")"}};
  Json::Value whole;
  for (const auto& [key, value] : kMembers) whole[key] = json(value);
  for (const auto& member : kMembers) {
    Json::Value without = whole;
    without.removeMember(member.first);
    Json::Value null = whole;
    null[member.first] = Json::Value();
    records_.clear();
    elements("[" + without.toStyledString() + "," + null.toStyledString() + "]");
    read();
    ASSERT_THAT(records_, SizeIs(3)) << member.first;
    EXPECT_EQ(records_[0], records_[1]) << member.first;
    const std::string changed = member.first;
    EXPECT_EQ(records_[0].alarmId, changed == "alarmId" ? 0 : 1);
    EXPECT_EQ(records_[0].alarmGroupId, changed == "alarmGroupId" ? 0 : 1);
    EXPECT_EQ(records_[0].eventType, changed == "eventType" ? 0 : 1);
    EXPECT_EQ(records_[0].severity, changed == "severity" ? 0 : 1);
    EXPECT_EQ(records_[0].alarmName, changed == "alarmName" ? "" : "x");
    EXPECT_EQ(records_[0].description, changed == "description" ? "" : "x");
  }
}

TEST_F(DefinitionElement, NumbersAreCutToThirtyTwoBits) {
  const std::pair<const char*, int> kNumbers[] = {
      {"4294967297", 1},  {"2147483648", -2147483647 - 1}, {"-5", -5}, {"2.7", 2}, {"true", 1},
      {"-4294967299", -3}};
  for (const auto& [number, expected] : kNumbers) {
    records_.clear();
    elements(R"([{"eventType":)" + std::string(number) + R"(,"severity":)" + number + "}]");
    read();
    EXPECT_EQ(records_.at(0).eventType, expected) << number;
    EXPECT_EQ(records_.at(0).severity, expected) << number;
  }
  for (const char* number : {R"("5")", "[]", "{}", "1e30"}) {
    elements(R"([{"severity":)" + std::string(number) + "}]");
    EXPECT_THROW(read(), Json::LogicError) << number;
  }
}

TEST_F(DefinitionElement, TextsAreConvertedUpToTheirFirstZero) {
  platform().text.characterSetSwitch(1);
  platform().text.conversionGives([](const std::string& text) { return "<" + text + ">"; });
  elements(R"([{"alarmName":"a\u0000b","description":""}])");
  EXPECT_EQ(read(), 0);
  EXPECT_EQ(records_.at(0).alarmName, "<a>");
  EXPECT_EQ(records_.at(0).description, "<>");
  elements(R"([{"alarmName":5}])");
  EXPECT_THROW(read(), Json::LogicError);
}

class ReasonElement : public Catalogue<Reasons> {};

TEST_F(ReasonElement, EveryMemberHasItsField) {
  elements(R"([{"alarmGroupId":"1","alarmId":"2","reasonId":3,"causes":"four",)"
           R"("repairAction":"five"}])");
  EXPECT_EQ(read(), 0);
  AlarmReason expected;
  expected.alarmGroupId = 1;
  expected.alarmId = 2;
  expected.reasonId = 3;
  expected.causes = "four";
  expected.repairAction = "five";
  EXPECT_THAT(records_, ElementsAre(expected, Reasons::closing()));
}

TEST_F(ReasonElement, AbsentAndNullMembersLeaveDefaults) {
  elements(R"([{"alarmId":"2","causes":null,"reasonId":null},)"
           R"({"alarmGroupId":"1","repairAction":null}])");
  EXPECT_EQ(read(), 0);
  AlarmReason first;
  first.alarmId = 2;
  AlarmReason second;
  second.alarmGroupId = 1;
  EXPECT_THAT(records_, ElementsAre(first, second, Reasons::closing()));
}

TEST_F(ReasonElement, NumberIsCutAndTextsAreConverted) {
  platform().text.characterSetSwitch(2);
  platform().text.conversionGives([](const std::string& text) { return "<" + text + ">"; });
  elements(R"([{"reasonId":4294967298,"causes":"a","repairAction":"b\u0000c"}])");
  EXPECT_EQ(read(), 0);
  AlarmReason expected;
  expected.reasonId = 2;
  expected.causes = "<a>";
  expected.repairAction = "<b>";
  EXPECT_EQ(records_.at(0), expected);
}

}  // namespace
}  // namespace emf::test
