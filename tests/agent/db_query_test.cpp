// Statements of the caller's own, on whichever database the program is built for.
#include <gmock/gmock.h>

#include "host_failure.h"
#include "inventory_fixture.h"
#include "operations.h"

namespace ormaagent {
namespace {

using dao::test::InventoryTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Records = std::vector<std::vector<Value>>;

class DbQuery : public InventoryTest {
 protected:
  static Answer query(const std::string& statement, std::vector<std::string> parameters = {}) {
    return dbQuery(Arguments({statement}, {}, {{"--param", std::move(parameters)}}));
  }
  // The status and the reason of a statement that is not run.
  static std::string refusal(const std::string& statement,
                             std::vector<std::string> parameters = {}) {
    try {
      query(statement, std::move(parameters));
    } catch (const HostFailure& failure) {
      return std::to_string(failure.exitStatus()) + " " + failure.what();
    }
    return "";
  }
};

TEST_F(DbQuery, GivesTheRowsWithTheColumnsNames) {
  const Answer answer = query("SELECT dev_id, name AS label FROM device ORDER BY dev_id");
  EXPECT_EQ(answer.result, 0);
  EXPECT_THAT(answer.fields, ElementsAre("dev_id", "label"));
  EXPECT_EQ(answer.records, (Records{{std::int64_t{2}, "core-1"},
                                     {std::int64_t{3}, "Größe 框"},
                                     {std::int64_t{4294967295}, "last"}}));
}

TEST_F(DbQuery, WithoutRowsStillHasItsFields) {
  const Answer answer = query("SELECT dev_id FROM device WHERE dev_id = 7");
  EXPECT_THAT(answer.fields, ElementsAre("dev_id"));
  EXPECT_THAT(answer.records, IsEmpty());
}

TEST_F(DbQuery, ParametersTakeThePlacesInOrder) {
  const std::string statement = "SELECT name FROM device WHERE dev_id = :id AND name = :name";
  EXPECT_EQ(query(statement, {"integer:2", "core-1"}).records, (Records{{"core-1"}}));
  EXPECT_EQ(query(statement, {"2", "core-1"}).records, (Records{{"core-1"}}));
  EXPECT_THAT(query(statement, {"integer:2", "null:"}).records, IsEmpty());
}

TEST_F(DbQuery, NullIsNoValueAndAnEmptyTextIsOne) {
  EXPECT_EQ(query("SELECT NULL AS a, '' AS b").records, (Records{{std::monostate(), ""}}));
}

TEST_F(DbQuery, FieldsOfOneNameAreToldApart) {
  EXPECT_THAT(query("SELECT 1 AS n, 2 AS n_2, 3 AS n, 4 AS n").fields,
              ElementsAre("n", "n_2", "n_3", "n_4"));
}

TEST_F(DbQuery, RefusedStatementTellsTheReason) {
  EXPECT_THAT(refusal("SELECT name FROM nowhere"),
              testing::AllOf(testing::StartsWith("1 "), HasSubstr("nowhere")));
}

TEST_F(DbQuery, WritesAreRefusedByTheDatabase) {
  for (const char* statement :
       {"DELETE FROM device_location", "UPDATE device SET name = 'x' WHERE dev_id = 2",
        "INSERT INTO device_location (dev_id, seq, part) VALUES (3, 0, 'C')",
        "CREATE TABLE t (n INTEGER)", "DROP TABLE device_location",
        "WITH x AS (SELECT 2 AS id) DELETE FROM device_location WHERE dev_id IN (SELECT id FROM "
        "x)"}) {
    EXPECT_THAT(refusal(statement), testing::AllOf(testing::StartsWith("1 "),
                                                   testing::ContainsRegex("readonly|read-only")))
        << statement;
  }
  EXPECT_EQ(query("SELECT count(*) AS n FROM device_location").records,
            (Records{{std::int64_t{2}}}));
}

TEST_F(DbQuery, WithoutADatabaseIsAMatterOfTheConfiguration) {
  configure("");
  EXPECT_THAT(refusal("SELECT 1"),
              testing::StartsWith("2 the configuration key database.connection is not set"));
}

}  // namespace
}  // namespace ormaagent
