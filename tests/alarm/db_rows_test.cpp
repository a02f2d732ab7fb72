// The row reader of the built plug-in, on whichever database the program is built for.
#include <gmock/gmock.h>

#include "dbrowreader.h"
#include "inventory_fixture.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

CValue integer(std::int64_t value) { return CValue(value); }
CValue text(const std::string& value) { return CValue(value); }

class DbRows : public InventoryTest {
 protected:
  // A reader with a session of its own on a statement that must open.
  static void open(DbRowReader& reader, const std::string& statement,
                   const std::vector<CValue>& parameters = {}) {
    ASSERT_EQ(reader.open(statement, parameters).GetMessage(), "");
  }
  // One row by index, as far as there is one.
  static std::vector<CValue> row(DbRowReader& reader, unsigned int columns) {
    std::vector<CValue> values;
    reader.fetchRowByIndex(values, columns);
    return values;
  }
  std::vector<std::string> traces() const {
    std::vector<std::string> texts;
    for (const LoggedLine& line : loggedLines("info")) {
      EXPECT_EQ(line.file, "emfglobal");
      texts.push_back(line.text);
    }
    return texts;
  }
};

TEST_F(DbRows, AreReadOneAfterTheOtherUntilTheyEnd) {
  DbRowReader reader(0, nullptr);
  open(reader, "SELECT dev_id, name FROM device ORDER BY dev_id");
  EXPECT_THAT(reader.columnNames(), ElementsAre("dev_id", "name"));
  EXPECT_TRUE((row(reader, 2) == std::vector<CValue>{integer(2), text("core-1")}));
  std::vector<CValue> named;
  EXPECT_EQ(reader.fetchRowByNames(named, {"name", "dev_id"}), 0);
  EXPECT_TRUE((named == std::vector<CValue>{text("Größe 框"), integer(3)}));
  DbRowMap map = {{"k", {"name", "device", CValue()}}};
  EXPECT_EQ(reader.fetchRowByMap(map), 0);
  EXPECT_TRUE(map["k"].value == text("last"));
  EXPECT_EQ(reader.fetchRowByMap(map), 6);
  EXPECT_TRUE(map["k"].value == text("last"));
  EXPECT_EQ(reader.fetchRowByNames(named, {"name"}), 6);
  EXPECT_THAT(named, SizeIs(2));
  EXPECT_TRUE(reader.lastStatus().IsOk());
  EXPECT_THAT(traces(), IsEmpty());
}

TEST_F(DbRows, HaveEveryTypeByIndexAndByName) {
  // A type that both databases know for each; the bytes are those of two characters.
  database().run(
      "CREATE TABLE t (i BIGINT, r DOUBLE PRECISION, s VARCHAR(20), e VARCHAR(20), n INTEGER)");
  database().run("INSERT INTO t VALUES (9223372036854775807, 0.1, 'Größe 框', '', NULL)");
  const std::vector<CValue> expected = {integer(9223372036854775807), CValue(0.1), text("Größe 框"),
                                        text(""), CValue()};
  DbRowReader reader(0, nullptr);
  open(reader, "SELECT i, r, s, e, n FROM t");
  EXPECT_TRUE(row(reader, 5) == expected);
  open(reader, "SELECT i, r, s, e, n FROM t");
  std::vector<CValue> named;
  EXPECT_EQ(reader.fetchRowByNames(named, {"i", "r", "s", "e", "n"}), 0);
  EXPECT_TRUE(named == expected);
  // Nothing was found in the column of the NULL, as far as the reader can tell.
  EXPECT_THAT(traces(),
              ElementsAre("[ORMACORBA DBLog][SATrace]:error2, can not find colunm:n, return"));
}

TEST_F(DbRows, TakeTheirParametersInOrder) {
  DbRowReader reader(0, nullptr);
  open(reader, "SELECT name FROM device WHERE dev_id > :low AND dev_id < :high",
       {integer(2), integer(4)});
  EXPECT_TRUE(row(reader, 1) == std::vector<CValue>{text("Größe 框")});
  EXPECT_TRUE(row(reader, 1).empty());
}

TEST_F(DbRows, UnknownColumnsAreTracedAndEmpty) {
  DbRowReader reader(0, nullptr);
  open(reader, "SELECT dev_id FROM device ORDER BY dev_id");
  std::vector<CValue> named;
  EXPECT_EQ(reader.fetchRowByNames(named, {"name", "dev_id"}), 0);
  EXPECT_TRUE((named == std::vector<CValue>{CValue(), integer(2)}));
  DbRowMap map = {{"k", {"name", "device", text("old")}}};
  EXPECT_EQ(reader.fetchRowByMap(map), 0);
  EXPECT_TRUE(map["k"].value.isEmpty());
  EXPECT_THAT(traces(),
              ElementsAre("[ORMACORBA DBLog][SATrace]:error2, can not find colunm:name, return",
                          "[ORMACORBA DBLog][SATrace]:error 1, can not find colunm:name, "
                          "tablename:device"));
}

TEST_F(DbRows, OfTooFewColumnsAreNotRead) {
  DbRowReader reader(0, nullptr);
  open(reader, "SELECT dev_id FROM device ORDER BY dev_id");
  std::vector<CValue> values;
  EXPECT_EQ(reader.fetchRowByIndex(values, 2), 1);
  EXPECT_THAT(values, IsEmpty());
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 0);
  EXPECT_TRUE(values == std::vector<CValue>{integer(3)});
  EXPECT_THAT(traces(), ElementsAre("[ORMACORBA DBLog][SATrace]:error3, real colunmns 1 less than "
                                    "required 2, return"));
}

TEST_F(DbRows, MayShareAGivenSessionWhichOutlivesTheReader) {
  CSqlSession session("given");
  {
    DbRowReader first(0, &session);
    DbRowReader second(0, &session);
    open(first, "SELECT name FROM device ORDER BY dev_id");
    open(second, "SELECT name FROM device ORDER BY dev_id DESC");
    EXPECT_TRUE(row(first, 1) == std::vector<CValue>{text("core-1")});
    EXPECT_TRUE(row(second, 1) == std::vector<CValue>{text("last")});
    EXPECT_TRUE(row(first, 1) == std::vector<CValue>{text("Größe 框")});
  }
  DbRowReader third(0, &session);
  open(third, "SELECT name FROM device WHERE dev_id = 2");
  EXPECT_TRUE(row(third, 1) == std::vector<CValue>{text("core-1")});
}

TEST_F(DbRows, OfARefusedStatementAreNone) {
  DbRowReader reader(0, nullptr);
  EXPECT_EQ(reader.open("SELECT name FROM nowhere", {}).GetErrCode(), kExecStatementFailed);
  EXPECT_THAT(reader.lastStatus().GetMessage(), HasSubstr("nowhere"));
  std::vector<CValue> values;
  EXPECT_EQ(reader.fetchRowByIndex(values, 0), 1);
  open(reader, "SELECT name FROM device WHERE dev_id = 2");
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 0);
}

TEST_F(DbRows, AreOnlyRead) {
  DbRowReader reader(0, nullptr);
  EXPECT_EQ(reader.open("DELETE FROM device_location", {}).GetErrCode(), kExecStatementFailed);
  EXPECT_EQ(reader.open("DELETE FROM device_location RETURNING part", {}).GetErrCode(),
            kExecStatementFailed);
}

TEST_F(DbRows, WithoutADatabaseAreNoneAndTheReasonIsTold) {
  configure("");
  DbRowReader reader(0, nullptr);
  EXPECT_EQ(reader.open("SELECT 1", {}).GetErrCode(), kExecNotConfigured);
  std::vector<CValue> values;
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 1);
  EXPECT_EQ(getDbServerType(), 0);
  EXPECT_FALSE(isDbServerType7());
}

}  // namespace
}  // namespace dao::test
