// Cursors, on whichever database the program is built for.
#include "orma/dao/cursor_table.h"

#include <gmock/gmock.h>

#include <memory>

#include "inventory_fixture.h"
#include "orma/dao/sql_session.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

CValue text(const std::string& value) { return CValue(value); }

class CursorTable : public InventoryTest {
 protected:
  std::vector<std::string> names(const std::string& statement,
                                 const std::vector<CValue>& parameters = {}) {
    CCursorTable rows;
    EXPECT_EQ(rows.Open(session_, statement, parameters).GetMessage(), "");
    std::vector<std::string> result;
    while (rows.FetchNextRow()) result.push_back(rows["name"].asText());
    EXPECT_EQ(rows.GetStatus().GetMessage(), "");
    return result;
  }

  CSqlSession session_;
};

TEST_F(CursorTable, GivesRowAfterRow) {
  EXPECT_THAT(names("SELECT name FROM device ORDER BY dev_id"),
              ElementsAre("core-1", "Größe 框", "last"));
  EXPECT_THAT(names("SELECT name FROM device WHERE dev_id = 7"), IsEmpty());
}

TEST_F(CursorTable, ParametersTakeThePlacesOfThePlaceholdersInOrder) {
  EXPECT_THAT(names("SELECT name FROM device WHERE dev_id = :id AND name = :name",
                    {integer(2), text("core-1")}),
              ElementsAre("core-1"));
  EXPECT_THAT(names("SELECT name FROM device WHERE name IN (:a, :b) ORDER BY name",
                    {text("last"), text("Größe 框")}),
              ElementsAre("Größe 框", "last"));
  EXPECT_THAT(names("SELECT name FROM device WHERE dev_id < CAST(:limit AS REAL)", {CValue(2.5)}),
              ElementsAre("core-1"));
}

TEST_F(CursorTable, EmptyParameterIsNull) {
  EXPECT_THAT(names("SELECT name FROM device WHERE dev_id = :id", {CValue()}), IsEmpty());
  EXPECT_THAT(names("SELECT name FROM device WHERE COALESCE(:id, 2) = dev_id", {CValue()}),
              ElementsAre("core-1"));
}

TEST_F(CursorTable, TextWithANulIsNoParameter) {
  CCursorTable rows;
  const CExecStatus status = rows.Open(session_, "SELECT :a", {text(std::string("a\0b", 3))});
  EXPECT_EQ(status.GetErrCode(), kExecStatementFailed);
  EXPECT_EQ(status.GetMessage(), "a text parameter holds a NUL character");
}

TEST_F(CursorTable, ColumnsAreReadByNameAndByNumber) {
  CCursorTable rows;
  ASSERT_TRUE(
      rows.Open(session_, "SELECT dev_id, name AS label FROM device WHERE dev_id = 2").IsOk());
  EXPECT_EQ(rows.GetColumnCount(), 2U);
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["dev_id"], integer(2));
  EXPECT_EQ(rows["label"], text("core-1"));
  EXPECT_EQ(rows[0], integer(2));
  EXPECT_EQ(rows[1], text("core-1"));
}

TEST_F(CursorTable, ColumnsHaveNamesFromTheStart) {
  CCursorTable rows;
  EXPECT_EQ(rows.GetColumnName(0), "");
  ASSERT_TRUE(rows.Open(session_, "SELECT dev_id, name AS label FROM device").IsOk());
  EXPECT_EQ(rows.GetColumnName(0), "dev_id");
  EXPECT_EQ(rows.GetColumnName(1), "label");
  EXPECT_EQ(rows.GetColumnName(2), "");
}

TEST_F(CursorTable, OfColumnsOfOneNameTheFirstIsReadByIt) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT 1 AS n, 2 AS n").IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["n"], integer(1));
  EXPECT_EQ(rows[1], integer(2));
}

TEST_F(CursorTable, ColumnThatThereIsNotIsEmpty) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT dev_id FROM device WHERE dev_id = 2").IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["name"], CValue());
  EXPECT_EQ(rows[1], CValue());
  EXPECT_EQ(rows[static_cast<unsigned long>(-1)], CValue());
  EXPECT_TRUE(rows.GetStatus().IsOk());
}

TEST_F(CursorTable, ThereAreNoValuesBeforeTheFirstRowAndBehindTheLast) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT dev_id FROM device WHERE dev_id = 2").IsOk());
  EXPECT_EQ(rows[0], CValue());
  ASSERT_TRUE(rows.FetchNextRow());
  for (int i = 0; i < 3; ++i) {
    EXPECT_FALSE(rows.FetchNextRow());
    EXPECT_EQ(rows[0], CValue());
  }
  EXPECT_TRUE(rows.GetStatus().IsOk());
}

TEST_F(CursorTable, IntegersOf64BitsAreWhole) {
  database().run(
      "CREATE TABLE number (n BIGINT); INSERT INTO number VALUES "
      "(9223372036854775807), (1099511627776), (-9223372036854775807)");
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT n FROM number ORDER BY n DESC").IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows[0], integer(9223372036854775807));
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows[0], integer(1099511627776));
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows[0], integer(-9223372036854775807));
}

TEST_F(CursorTable, NullIsEmptyAndAnEmptyTextIsNot) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT NULL AS a, '' AS b").IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["a"], CValue());
  EXPECT_EQ(rows["b"], text(""));
}

TEST_F(CursorTable, RefusedStatementTellsTheReasonAndOpensNothing) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, "SELECT dev_id FROM device").IsOk());
  const CExecStatus status = rows.Open(session_, "SELECT dev_id FROM devices");
  EXPECT_EQ(status.GetErrCode(), kExecStatementFailed);
  EXPECT_THAT(status.GetMessage(), HasSubstr("devices"));
  EXPECT_EQ(rows.GetStatus().GetErrCode(), kExecStatementFailed);
  EXPECT_FALSE(rows.FetchNextRow());
  EXPECT_EQ(rows.GetColumnCount(), 0U);
  EXPECT_THAT(names("SELECT name FROM device WHERE dev_id = 2"), ElementsAre("core-1"));
}

TEST_F(CursorTable, SessionsOnlyRead) {
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session_, "DELETE FROM device_location").GetErrCode(), kExecStatementFailed);
  EXPECT_THAT(names("SELECT part AS name FROM device_location ORDER BY seq"),
              ElementsAre("A", "B"));
}

TEST_F(CursorTable, CursorsOnOneSessionGoTheirOwnWay) {
  CCursorTable first;
  CCursorTable second;
  ASSERT_TRUE(first.Open(session_, "SELECT name FROM device ORDER BY dev_id").IsOk());
  ASSERT_TRUE(second.Open(session_, "SELECT name FROM device ORDER BY dev_id DESC").IsOk());
  ASSERT_TRUE(first.FetchNextRow() && second.FetchNextRow() && first.FetchNextRow());
  EXPECT_EQ(first["name"], text("Größe 框"));
  EXPECT_EQ(second["name"], text("last"));
}

TEST_F(CursorTable, OutlivesItsSession) {
  CCursorTable rows;
  {
    CSqlSession session("short");
    ASSERT_TRUE(rows.Open(session, "SELECT name FROM device ORDER BY dev_id").IsOk());
    ASSERT_TRUE(rows.FetchNextRow());
  }
  EXPECT_EQ(rows["name"], text("core-1"));
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["name"], text("Größe 框"));
}

}  // namespace
}  // namespace dao::test
