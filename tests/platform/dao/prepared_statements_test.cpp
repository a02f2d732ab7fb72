// Statements that are run again, which a connection keeps prepared: nobody can tell, but by time.
#include <gmock/gmock.h>

#include "inventory_fixture.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kNameOf[] = "SELECT name FROM device WHERE dev_id = :id";
constexpr char kAllNames[] = "SELECT name FROM device ORDER BY dev_id";

class PreparedStatements : public InventoryTest {
 protected:
  std::vector<std::string> firsts(const std::string& statement,
                                  const std::vector<CValue>& parameters = {}) {
    CCursorTable rows;
    EXPECT_EQ(rows.Open(session_, statement, parameters).GetMessage(), "");
    std::vector<std::string> result;
    while (rows.FetchNextRow()) result.push_back(rows[0].asText());
    EXPECT_EQ(rows.GetStatus().GetMessage(), "");
    return result;
  }

  CSqlSession session_;
};

TEST_F(PreparedStatements, EachRunHasItsOwnParameters) {
  EXPECT_THAT(firsts(kNameOf, {integer(2)}), ElementsAre("core-1"));
  EXPECT_THAT(firsts(kNameOf, {integer(7)}), IsEmpty());
  EXPECT_THAT(firsts(kNameOf, {CValue()}), IsEmpty());
  EXPECT_THAT(firsts(kNameOf, {integer(3)}), ElementsAre("Größe 框"));
  EXPECT_THAT(firsts(kNameOf, {integer(4294967295)}), ElementsAre("last"));
}

TEST_F(PreparedStatements, ParameterMayChangeItsType) {
  const std::string statement = "SELECT name FROM device WHERE node_id = :node";
  EXPECT_THAT(firsts(statement, {CValue(std::string("2"))}), ElementsAre("core-1"));
  EXPECT_THAT(firsts(statement, {CValue(std::string(300, 'x'))}), IsEmpty());
  EXPECT_THAT(firsts(statement, {CValue(std::string("3"))}), ElementsAre("Größe 框"));
}

TEST_F(PreparedStatements, CursorsOfOneTextGoTheirOwnWay) {
  CCursorTable first;
  CCursorTable second;
  ASSERT_TRUE(first.Open(session_, kAllNames).IsOk());
  ASSERT_TRUE(first.FetchNextRow());
  ASSERT_TRUE(second.Open(session_, kAllNames).IsOk());
  ASSERT_TRUE(first.FetchNextRow());
  ASSERT_TRUE(second.FetchNextRow());
  EXPECT_EQ(first[0].asText(), "Größe 框");
  EXPECT_EQ(second[0].asText(), "core-1");
}

TEST_F(PreparedStatements, HalfReadOneStartsAnewAndHoldsNothingMeanwhile) {
  {
    CCursorTable rows;
    ASSERT_TRUE(rows.Open(session_, kAllNames).IsOk());
    ASSERT_TRUE(rows.FetchNextRow());
  }
  database().run("UPDATE device SET name = 'renamed' WHERE dev_id = 2");
  EXPECT_THAT(firsts(kAllNames), ElementsAre("renamed", "Größe 框", "last"));
}

TEST_F(PreparedStatements, CursorThatIsOpenedAgainKeepsNothingOfTheOldRows) {
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session_, kNameOf, {integer(2)}).IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  ASSERT_TRUE(rows.Open(session_, kNameOf, {integer(7)}).IsOk());
  EXPECT_FALSE(rows.FetchNextRow());
  EXPECT_TRUE(rows[0].isEmpty());
}

TEST_F(PreparedStatements, TableMayChangeItsColumns) {
  database().run("CREATE TABLE t (a INTEGER); INSERT INTO t VALUES (1)");
  EXPECT_THAT(firsts("SELECT * FROM t"), ElementsAre("1"));
  database().run("DROP TABLE t; CREATE TABLE t (b TEXT, c INTEGER); INSERT INTO t VALUES ('x', 2)");
  CCursorTable rows;
  ASSERT_EQ(rows.Open(session_, "SELECT * FROM t").GetMessage(), "");
  EXPECT_EQ(rows.GetColumnCount(), 2U);
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_EQ(rows["b"].asText(), "x");
  EXPECT_EQ(rows["c"], integer(2));
}

TEST_F(PreparedStatements, TableThatWasMissingIsFoundAndOneThatGoesIsMissed) {
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session_, "SELECT a FROM t").GetErrCode(), kExecStatementFailed);
  database().run("CREATE TABLE t (a INTEGER); INSERT INTO t VALUES (1)");
  EXPECT_THAT(firsts("SELECT a FROM t"), ElementsAre("1"));
  database().run("DROP TABLE t");
  EXPECT_EQ(rows.Open(session_, "SELECT a FROM t").GetErrCode(), kExecStatementFailed);
  database().run("CREATE TABLE t (a INTEGER); INSERT INTO t VALUES (2)");
  EXPECT_THAT(firsts("SELECT a FROM t"), ElementsAre("2"));
}

TEST_F(PreparedStatements, RefusedParameterLeavesTheNextRunAlone) {
  EXPECT_THAT(firsts(kNameOf, {integer(2)}), ElementsAre("core-1"));
  CCursorTable rows;
  EXPECT_EQ(rows.Open(session_, kNameOf, {CValue(std::string(1, '\0'))}).GetErrCode(),
            kExecStatementFailed);
  EXPECT_THAT(firsts(kNameOf, {integer(3)}), ElementsAre("Größe 框"));
}

TEST_F(PreparedStatements, MoreTextsThanAreKeptAreRunAsWell) {
  for (int round = 0; round < 3; ++round) {
    for (int number = 0; number < 40; ++number) {
      const std::string text = std::to_string(number);
      EXPECT_THAT(firsts("SELECT " + text + " + dev_id AS n FROM device WHERE dev_id = 2"),
                  ElementsAre(std::to_string(number + 2)));
    }
  }
}

TEST_F(PreparedStatements, AnotherConfigurationStartsWithoutThem) {
  EXPECT_THAT(firsts(kNameOf, {integer(2)}), ElementsAre("core-1"));
  configure(database().connection(), 4000);
  EXPECT_THAT(firsts(kNameOf, {integer(2)}), ElementsAre("core-1"));
}

}  // namespace
}  // namespace dao::test
