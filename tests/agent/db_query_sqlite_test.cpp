// Statements on an SQLite file: its types, what it refuses, a read that ends early.
#include <gmock/gmock.h>

#include <filesystem>

#include "host_failure.h"
#include "inventory_fixture.h"
#include "operations.h"
#include "sqlite_database.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using Records = std::vector<std::vector<Value>>;

class DbQuerySqlite : public dao::test::InventoryTest {
 protected:
  static Answer query(const std::string& statement, std::vector<std::string> parameters = {}) {
    return dbQuery(Arguments({statement}, {}, {{"--param", std::move(parameters)}}));
  }
};

TEST_F(DbQuerySqlite, ParametersKeepTheirTypes) {
  EXPECT_EQ(query("SELECT :a, :b, :c, :d, :e, typeof(:f)",
                  {"integer:-5", "real:0.5", "7", "bytes:00ff", "null:", "bytes:"})
                .records,
            (Records{{std::int64_t{-5}, 0.5, "7", "00ff", std::monostate(), "blob"}}));
}

TEST_F(DbQuerySqlite, ReadThatEndsEarlyGivesTheRowsBeforeAndFails) {
  testing::internal::CaptureStderr();
  const Answer answer =
      query("SELECT abs(n) AS n FROM (SELECT 1 AS n UNION ALL SELECT -9223372036854775807 - 1)");
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("integer overflow"));
  EXPECT_EQ(answer.result, 4);
  EXPECT_EQ(answer.records, (Records{{std::int64_t{1}}}));
}

TEST_F(DbQuerySqlite, NothingIsWrittenElsewhereEither) {
  const std::string other = file("other.db");
  dao::test::SqliteFile(other).run("CREATE TABLE t (n INTEGER)");
  for (const std::string& statement :
       {"VACUUM INTO '" + file("copy.db") + "'", std::string("CREATE TEMP TABLE t (n INTEGER)"),
        std::string("PRAGMA user_version = 7")}) {
    EXPECT_THROW(query(statement), HostFailure) << statement;
  }
  EXPECT_THAT(query("ATTACH '" + other + "' AS other").records, IsEmpty());
  EXPECT_THROW(query("INSERT INTO other.t VALUES (1)"), HostFailure) << "each has its own session";
}

TEST_F(DbQuerySqlite, StatementWithoutColumnsHasNoFields) {
  EXPECT_THAT(query("PRAGMA query_only = ON").fields, IsEmpty());
}

}  // namespace
}  // namespace ormaagent
