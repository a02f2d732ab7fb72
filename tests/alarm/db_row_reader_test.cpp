// The row reader over scripted cursors: every way in which a fetch can end.
#include "dbrowreader.h"

#include <memory>

#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "platform_test.h"
#include "stdout_capture.h"

namespace emf::doubles {
namespace {

using refl::CValue;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::IsEmpty;

constexpr char kTag[] = "[ORMACORBA DBLog][SATrace]:";

CValue integer(std::int64_t value) { return CValue(value); }
CValue text(const std::string& value) { return CValue(value); }

class RowReader : public PlatformTest {
 protected:
  // A reader on one row of two columns.
  RowReader() {
    platform().cursors.gives({"id", "name"}, {{integer(2), text("core-1")}});
    reader_.open("SELECT", {});
  }

  // The texts of database traces, without their tag.
  static std::vector<std::string> traces() {
    std::vector<std::string> texts;
    for (const std::string& line : platform().trace.texts()) {
      EXPECT_EQ(line.substr(0, sizeof kTag - 1), kTag);
      texts.push_back(line.substr(sizeof kTag - 1));
    }
    return texts;
  }
  static bool equal(const std::vector<CValue>& a, const std::vector<CValue>& b) { return a == b; }

  DbRowReader reader_{7, nullptr};
};

TEST_F(RowReader, NumbersItsResultsLikeThis) {
  EXPECT_EQ(DbRowReader::kRowRead, 0);
  EXPECT_EQ(DbRowReader::kUnusable, 1);
  EXPECT_EQ(DbRowReader::kNoMoreRows, 6);
}

TEST_F(RowReader, KeepsItsSetting) { EXPECT_EQ(reader_.setting(), 7U); }

TEST_F(RowReader, WithoutASessionMakesOneNamedDefaultAndEndsIt) {
  platform().cursors.reset();
  { DbRowReader reader(0, nullptr); }
  EXPECT_THAT(platform().cursors.calls(),
              ElementsAre("session default", "cursor", "session gone default", "cursor gone"));
}

TEST_F(RowReader, LeavesAGivenSessionAlive) {
  dao::CSqlSession session("given");
  platform().cursors.reset();
  { DbRowReader reader(0, &session); }
  EXPECT_THAT(platform().cursors.calls(), ElementsAre("cursor", "cursor gone"));
}

TEST_F(RowReader, OpensTheStatementWithItsParameters) {
  platform().cursors.reset();
  reader_.open("SELECT :a, :b", {integer(1), CValue()});
  EXPECT_THAT(platform().cursors.calls(), ElementsAre("open SELECT :a, :b"));
  ASSERT_EQ(platform().cursors.parameters().size(), 1U);
  EXPECT_TRUE(equal(platform().cursors.parameters()[0], {integer(1), CValue()}));
}

TEST_F(RowReader, TellsTheNamesOfTheColumns) {
  EXPECT_THAT(reader_.columnNames(), ElementsAre("id", "name"));
  reader_.close();
  EXPECT_THAT(reader_.columnNames(), IsEmpty());
}

TEST_F(RowReader, ReadsColumnsByIndex) {
  std::vector<CValue> row = {text("kept")};
  EXPECT_EQ(reader_.fetchRowByIndex(row, 2), 0);
  EXPECT_TRUE(equal(row, {text("kept"), integer(2), text("core-1")}));
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_F(RowReader, ReadsTheFirstColumnsAlone) {
  std::vector<CValue> row;
  EXPECT_EQ(reader_.fetchRowByIndex(row, 1), 0);
  EXPECT_TRUE(equal(row, {integer(2)}));
}

TEST_F(RowReader, NoColumnsAskedForAreNoneReadAndOneRow) {
  std::vector<CValue> row;
  EXPECT_EQ(reader_.fetchRowByIndex(row, 0), 0);
  EXPECT_EQ(reader_.fetchRowByIndex(row, 0), 6);
  EXPECT_THAT(row.size(), 0U);
}

TEST_F(RowReader, TooFewColumnsAreTracedAndTheRowIsPassedOver) {
  std::vector<CValue> row = {text("kept")};
  EXPECT_EQ(reader_.fetchRowByIndex(row, 3), 1);
  EXPECT_TRUE(equal(row, {text("kept")}));
  EXPECT_THAT(platform().trace.lines(),
              ElementsAre(FieldsAre(
                  "TaDebug", 1, "emfglobal", "unknown", _,
                  std::string(kTag) + "error3, real colunmns 2 less than required 3, return")));
  EXPECT_EQ(reader_.fetchRowByIndex(row, 2), 6);
}

TEST_F(RowReader, EmptyValueByIndexIsNotTraced) {
  platform().cursors.gives({"id"}, {{CValue()}});
  reader_.open("SELECT", {});
  std::vector<CValue> row;
  EXPECT_EQ(reader_.fetchRowByIndex(row, 1), 0);
  EXPECT_TRUE(equal(row, {CValue()}));
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_F(RowReader, ReadsColumnsByNames) {
  std::vector<CValue> row = {text("kept")};
  EXPECT_EQ(reader_.fetchRowByNames(row, {"name", "id", "name"}), 0);
  EXPECT_TRUE(equal(row, {text("kept"), text("core-1"), integer(2), text("core-1")}));
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_F(RowReader, UnknownNameIsTracedAndEmptyAndReadingGoesOn) {
  std::vector<CValue> row;
  EXPECT_EQ(reader_.fetchRowByNames(row, {"none", "id", "100%s"}), 0);
  EXPECT_TRUE(equal(row, {CValue(), integer(2), CValue()}));
  EXPECT_THAT(traces(), ElementsAre("error2, can not find colunm:none, return",
                                    "error2, can not find colunm:100%s, return"));
}

TEST_F(RowReader, NoNamesAreNoValues) {
  std::vector<CValue> row;
  EXPECT_EQ(reader_.fetchRowByNames(row, {}), 0);
  EXPECT_THAT(row.size(), 0U);
}

TEST_F(RowReader, ReadsColumnsIntoAMap) {
  DbRowMap row = {{"1", {"name", "device", text("old")}}, {"2", {"id", "device", CValue()}}};
  EXPECT_EQ(reader_.fetchRowByMap(row), 0);
  EXPECT_TRUE(row["1"].value == text("core-1"));
  EXPECT_TRUE(row["2"].value == integer(2));
  EXPECT_EQ(row["1"].columnName, "name");
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_F(RowReader, UnknownColumnOfAMapIsTracedInTheKeysOrderAndReplacesTheValue) {
  DbRowMap row = {{"c", {"second", "device", text("old")}},
                  {"b", {"id", "device", CValue()}},
                  {"a", {"first", "subnet", text("old")}}};
  EXPECT_EQ(reader_.fetchRowByMap(row), 0);
  EXPECT_TRUE(row["a"].value.isEmpty());
  EXPECT_TRUE(row["b"].value == integer(2));
  EXPECT_TRUE(row["c"].value.isEmpty());
  EXPECT_THAT(traces(), ElementsAre("error 1, can not find colunm:first, tablename:subnet",
                                    "error 1, can not find colunm:second, tablename:device"));
}

TEST_F(RowReader, NullCountsAsNotFound) {
  platform().cursors.gives({"id"}, {{CValue()}, {CValue()}});
  reader_.open("SELECT", {});
  DbRowMap row = {{"1", {"id", "device", text("old")}}};
  EXPECT_EQ(reader_.fetchRowByMap(row), 0);
  EXPECT_TRUE(row["1"].value.isEmpty());
  std::vector<CValue> values;
  EXPECT_EQ(reader_.fetchRowByNames(values, {"id"}), 0);
  EXPECT_THAT(traces(), ElementsAre("error 1, can not find colunm:id, tablename:device",
                                    "error2, can not find colunm:id, return"));
}

// The three ways to fetch, as the test reports them.
enum class Way { ByMap, ByIndex, ByNames };

std::string nameOf(Way way) {
  return way == Way::ByMap ? "ByMap" : way == Way::ByIndex ? "ByIndex" : "ByNames";
}

// Fetches into an output that must stay as it is.
int fetch(DbRowReader& reader, Way way) {
  std::vector<CValue> row = {text("kept")};
  DbRowMap map = {{"1", {"id", "device", text("kept")}}};
  const int result = way == Way::ByMap     ? reader.fetchRowByMap(map)
                     : way == Way::ByIndex ? reader.fetchRowByIndex(row, 1)
                                           : reader.fetchRowByNames(row, {"id"});
  EXPECT_TRUE(row.size() == 1 && row[0] == text("kept"));
  EXPECT_TRUE(map["1"].value == text("kept"));
  return result;
}

class EveryFetch : public RowReader, public testing::WithParamInterface<Way> {};

INSTANTIATE_TEST_SUITE_P(Ways, EveryFetch, testing::Values(Way::ByMap, Way::ByIndex, Way::ByNames),
                         [](const auto& row) { return nameOf(row.param); });

TEST_P(EveryFetch, BehindTheLastRowGives6AndTouchesNothing) {
  std::vector<CValue> row;
  ASSERT_EQ(reader_.fetchRowByIndex(row, 0), 0);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(fetch(reader_, GetParam()), 6);
  EXPECT_THAT(traces(), IsEmpty());
  EXPECT_TRUE(reader_.lastStatus().IsOk());
}

TEST_P(EveryFetch, BeforeAnythingIsOpenGives6) {
  DbRowReader reader(0, nullptr);
  EXPECT_EQ(fetch(reader, GetParam()), 6);
}

TEST_P(EveryFetch, RefusedStatementMakesTheReaderUnusableWithoutAWord) {
  platform().cursors.refuses({dao::kExecStatementFailed, "no such table: t"});
  EXPECT_EQ(reader_.open("SELECT", {}).GetErrCode(), dao::kExecStatementFailed);
  platform().cursors.reset();
  EXPECT_EQ(fetch(reader_, GetParam()), 1);
  EXPECT_EQ(reader_.lastStatus().GetMessage(), "no such table: t");
  EXPECT_THAT(platform().cursors.calls(), IsEmpty()) << "the cursor is not asked";
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_P(EveryFetch, StatementThatIsOpenedMakesItUsableAgain) {
  platform().cursors.refuses({dao::kExecNotConnected, "gone"});
  platform().cursors.gives({"id"}, {});
  reader_.open("SELECT", {});
  reader_.open("SELECT", {});
  EXPECT_EQ(fetch(reader_, GetParam()), 6);
}

TEST_P(EveryFetch, ClosedReaderIsUnusableAndOnlyTheFetchByIndexIsSilent) {
  reader_.close();
  reader_.close();
  EXPECT_EQ(fetch(reader_, GetParam()), 1);
  if (GetParam() == Way::ByIndex) {
    EXPECT_THAT(traces(), IsEmpty());
  } else {
    EXPECT_THAT(traces(), ElementsAre("m_pCursorTable is NULL, return"));
  }
  EXPECT_EQ(reader_.open("SELECT", {}).GetMessage(), "the row reader is closed");
}

TEST_P(EveryFetch, FailureToReadOnGives6AndIsTheStatus) {
  platform().cursors.breaksBehind({"id"}, {}, {dao::kExecStatementFailed, "disk I/O error"});
  reader_.open("SELECT", {});
  EXPECT_EQ(fetch(reader_, GetParam()), 6);
  EXPECT_EQ(reader_.lastStatus().GetMessage(), "disk I/O error");
}

class ServerType : public PlatformTest {};

TEST_F(ServerType, IsAskedOfATemporaryDefaultSession) {
  platform().cursors.serverType(1);
  EXPECT_EQ(getDbServerType(), 1);
  EXPECT_THAT(platform().cursors.calls(),
              ElementsAre("session default", "server type", "session gone default"));
}

TEST_F(ServerType, SevenIsToldFromTheOthers) {
  for (const int type : {0, 1, 6, 8}) {
    platform().cursors.serverType(type);
    EXPECT_FALSE(isDbServerType7()) << type;
  }
  platform().cursors.serverType(7);
  EXPECT_TRUE(isDbServerType7());
}

std::string printed(const dao::CExecStatus& status) {
  StdoutCapture output;
  printDbStatus(status);
  return output.text();
}

TEST(DbStatus, ErrorShowsItsCodeThreeTimes) {
  EXPECT_EQ(printed({dao::kExecStatementFailed, "100%s of it"}),
            "<DBTools.h++ error code>4\n<DB server error code>4\n<DB server severity level>4\n"
            "<DB Msg> 100%s of it\n");
}

TEST(DbStatus, SuccessShowsTheMessageAlone) {
  EXPECT_EQ(printed({}), "<DB Msg> \n");
  EXPECT_EQ(printed({dao::kExecOk, "all is well"}), "<DB Msg> all is well\n");
}

TEST(DbStatus, ErrorMayHaveNoMessage) {
  EXPECT_EQ(printed({dao::kExecNotConnected, ""}),
            "<DBTools.h++ error code>2\n<DB server error code>2\n<DB server severity level>2\n"
            "<DB Msg> \n");
}

}  // namespace
}  // namespace emf::doubles
