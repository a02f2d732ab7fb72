#include <stdexcept>
#include <type_traits>

#include "alarm_records.h"
#include "emfalminterface.h"
#include "platform_test.h"
#include "processexception.h"

namespace emf::test {
namespace {

using emf::doubles::AlarmQuery;
using emf::doubles::json;
using emf::doubles::platform;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::FieldsAre;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::SizeIs;

static_assert(std::is_same_v<decltype(EMFAlarmI::getRedefineAlarmInfo),
                             std::int64_t(std::vector<AlarmCfg>&)>);

constexpr char kWholeRow[] =
    R"({"alarmGroupId":"1","alarmId":"2","newSeverity":3,"OldLevel":4,"Name":"five"})";

AlarmCfg wholeRecord() {
  AlarmCfg record;
  record.alarmGroupId = 1;
  record.alarmId = 2;
  record.severity = 3;
  record.oldSeverity = 4;
  record.alarmName = "five";
  return record;
}

std::string missing(const std::string& field) {
  return "[getRedefineAlarmInfo] The field (" + field + ") with no value!";
}

class RedefinedAlarms : public emf::doubles::PlatformTest {
 protected:
  static void answers(const std::string& answer, bool succeeds = true) {
    platform().alarms.answersBy([answer, succeeds](const AlarmQuery&, Json::Value& out) {
      out = json(answer);
      return succeeds;
    });
  }
  // The rows as members named by their index.
  static void rows(const std::vector<std::string>& rows) {
    std::string answer = R"({"count":)" + std::to_string(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
      answer += ",\"" + std::to_string(row) + "\":" + rows[row];
    }
    answers(answer + "}");
  }
  std::int64_t read() { return EMFAlarmI::getRedefineAlarmInfo(records_); }
  static void expectLog(const std::vector<std::string>& texts) {
    EXPECT_EQ(platform().log.texts(), texts);
    for (const auto& line : platform().log.lines()) {
      EXPECT_EQ(line.log, "ii_domain_bundle/ii_domain_model/debug");
      EXPECT_EQ(line.file, "emfalminterface");
      EXPECT_EQ(line.function, "unknown");
      EXPECT_GT(line.line, 0);
      EXPECT_EQ(line.level, 1);
    }
    EXPECT_THAT(platform().trace.lines(), IsEmpty());
  }

  std::vector<AlarmCfg> records_;
};

TEST_F(RedefinedAlarms, AreAskedForOnce) {
  rows({kWholeRow});
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(wholeRecord()));
  EXPECT_THAT(
      platform().alarms.queries(),
      ElementsAre(FieldsAre("QueryRedefineAlarmDataList",
                            "{\n\t\"limit\" : 500,\n\t\"offset\" : 1\n}\n", Json::Value())));
  expectLog({});
}

TEST_F(RedefinedAlarms, NothingToReadIsOne) {
  records_ = {wholeRecord()};
  for (const char* answer : {"null", "{}", R"({"count":null})", R"({"count":0})", "[]", "5",
                             R"({"0":{"alarmId":"5"}})", R"({"count":0.5})"}) {
    answers(answer);
    EXPECT_EQ(read(), 1) << answer;
    EXPECT_THAT(records_, ElementsAre(wholeRecord())) << answer;
  }
  expectLog({});
}

TEST_F(RedefinedAlarms, RowsGoBehindThoseThatAreThereWithoutAClosingRecord) {
  records_ = {AlarmCfg()};
  rows({kWholeRow, kWholeRow});
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(AlarmCfg(), wholeRecord(), wholeRecord()));
}

TEST_F(RedefinedAlarms, ResultOfTheQueryIsNotLookedAt) {
  answers(R"({"count":1,"0":)" + std::string(kWholeRow) + "}", false);
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(wholeRecord()));
}

TEST_F(RedefinedAlarms, CountDecidesHowManyRowsAreRead) {
  std::vector<std::string> many;
  for (int row = 0; row < 1203; ++row) {
    many.push_back(R"({"alarmGroupId":"7","alarmId":")" + std::to_string(row) +
                   R"(","newSeverity":1,"OldLevel":2,"Name":""})");
  }
  rows(many);
  EXPECT_EQ(read(), 0);
  ASSERT_THAT(records_, SizeIs(1203));
  for (int row = 0; row < 1203; ++row) {
    EXPECT_EQ(records_[static_cast<std::size_t>(row)].alarmId, row);
  }
  EXPECT_THAT(platform().alarms.queries(), SizeIs(1));

  records_.clear();
  answers(R"({"count":1,"0":)" + std::string(kWholeRow) + R"(,"1":)" + kWholeRow + "}");
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(wholeRecord()));
}

TEST_F(RedefinedAlarms, NegativeCountHasNoRows) {
  answers(R"({"count":-1,"0":)" + std::string(kWholeRow) + "}");
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, IsEmpty());
}

TEST_F(RedefinedAlarms, MissingMemberIsLoggedAndTheRowDelivered) {
  struct Row {
    const char* key;
    const char* field;
    void (*clear)(AlarmCfg&);
  };
  const Row kRows[] = {
      {"alarmGroupId", "GroupID", [](AlarmCfg& record) { record.alarmGroupId = 0; }},
      {"alarmId", "AlarmID", [](AlarmCfg& record) { record.alarmId = 0; }},
      {"newSeverity", "NewLevel", [](AlarmCfg& record) { record.severity = 0; }},
      {"OldLevel", "OldLevel", [](AlarmCfg& record) { record.oldSeverity = 0; }},
      {"Name", "Name", [](AlarmCfg& record) { record.alarmName.clear(); }},
  };
  for (const Row& row : kRows) {
    platform().reset();
    records_.clear();
    Json::Value without = json(kWholeRow);
    without.removeMember(row.key);
    Json::Value null = json(kWholeRow);
    null[row.key] = Json::Value();
    rows({without.toStyledString(), null.toStyledString()});
    EXPECT_EQ(read(), 0) << row.key;
    AlarmCfg expected = wholeRecord();
    row.clear(expected);
    EXPECT_THAT(records_, ElementsAre(expected, expected)) << row.key;
    expectLog({missing(row.field), missing(row.field)});
  }
}

TEST_F(RedefinedAlarms, RowThatIsMissingOrNoObjectIsDeliveredEmpty) {
  answers(R"({"count":3,"0":null,"1":"text"})");
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(AlarmCfg(), AlarmCfg(), AlarmCfg()));
  std::vector<std::string> texts;
  for (int row = 0; row < 3; ++row) {
    for (const char* field : {"GroupID", "AlarmID", "NewLevel", "OldLevel", "Name"}) {
      texts.push_back(missing(field));
    }
  }
  expectLog(texts);
}

TEST_F(RedefinedAlarms, SeveritiesOneToFourStayAndOthersAreZero) {
  const std::pair<const char*, int> kSeverities[] = {{"0", 0},  {"1", 1},  {"2", 2}, {"3", 3},
                                                     {"4", 4},  {"5", 0},  {"6", 0}, {"7", 0},
                                                     {"-1", 0}, {"3.9", 3}};
  for (const auto& [severity, mapped] : kSeverities) {
    records_.clear();
    rows({R"({"newSeverity":)" + std::string(severity) + R"(,"OldLevel":1})",
          R"({"newSeverity":1,"OldLevel":)" + std::string(severity) + "}"});
    EXPECT_EQ(read(), 0);
    ASSERT_THAT(records_, SizeIs(2));
    EXPECT_EQ(records_[0].severity, mapped) << severity;
    EXPECT_EQ(records_[0].alarmLevel2TMF(), mapped) << severity;
    EXPECT_EQ(records_[1].oldSeverity, mapped) << severity;
  }
}

TEST_F(RedefinedAlarms, IdentifiersAreTheNumbersThatTheirTextsBeginWith) {
  const std::pair<const char*, int> kTexts[] = {
      {"12x", 12}, {"x", 0}, {"", 0}, {"-3", -3}, {"4294967297", 1}};
  for (const auto& [text, number] : kTexts) {
    records_.clear();
    rows({R"({"alarmGroupId":")" + std::string(text) + R"(","alarmId":")" + text + R"("})"});
    EXPECT_EQ(read(), 0);
    EXPECT_EQ(records_.at(0).alarmGroupId, number) << text;
    EXPECT_EQ(records_.at(0).alarmId, number) << text;
  }
}

TEST_F(RedefinedAlarms, NameIsNotConverted) {
  platform().text.characterSetSwitch(1);
  rows({R"({"Name":"\u4e2d\u0000x"})"});
  EXPECT_EQ(read(), 0);
  EXPECT_EQ(records_.at(0).alarmName, "\xE4\xB8\xAD");
  EXPECT_THAT(platform().text.conversions(), IsEmpty());
}

TEST_F(RedefinedAlarms, MemberOfAWrongTypeIsToldAndWhatCameBeforeStays) {
  for (const char* member : {R"("alarmId":1)", R"("alarmGroupId":1)", R"("newSeverity":"1")",
                             R"("OldLevel":[])", R"("Name":1)", R"("newSeverity":4294967296)"}) {
    records_.clear();
    rows({kWholeRow, "{" + std::string(member) + "}", kWholeRow});
    EXPECT_THROW(read(), Json::LogicError) << member;
    EXPECT_THAT(records_, ElementsAre(wholeRecord())) << member;
  }
  answers(R"({"count":"2"})");
  EXPECT_THROW(read(), Json::LogicError);
}

TEST_F(RedefinedAlarms, ProcessExceptionIsLoggedAndReadsAsSuccess) {
  records_ = {wholeRecord()};
  platform().alarms.answersBy([](const AlarmQuery&, Json::Value&) -> bool {
    ProcessException failure;
    failure.errCode = -17;
    throw failure;
  });
  EXPECT_EQ(read(), 0);
  EXPECT_THAT(records_, ElementsAre(wholeRecord()));
  expectLog(
      {"[EMFAlarmI::getRedefineAlarmInfo]: Call getRedefineAlarmInfo catch processException! "
       "errorCode = -17"});
  platform().log.reset();
  platform().alarms.answersBy([](const AlarmQuery&, Json::Value&) -> bool {
    InterfaceNotExistException failure;
    throw failure;
  });
  EXPECT_EQ(read(), 0);
  expectLog(
      {"[EMFAlarmI::getRedefineAlarmInfo]: Call getRedefineAlarmInfo catch processException! "
       "errorCode = 1092091908"});
}

TEST_F(RedefinedAlarms, OtherExceptionsPass) {
  platform().alarms.answersBy(
      [](const AlarmQuery&, Json::Value&) -> bool { throw std::runtime_error("refused"); });
  EXPECT_THROW(read(), std::runtime_error);
  expectLog({});
}

}  // namespace
}  // namespace emf::test
