// 'db query' as a whole program: rows in every format, refusals and their statuses.
#include <gmock/gmock.h>

#include "documents.h"
#include "world.h"

namespace systemtest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

class DatabaseQuery : public World {
 protected:
  DatabaseQuery() { serve(); }

  Outcome query(std::vector<std::string> words) {
    words.insert(words.begin(), {"db", "query"});
    return agent(words);
  }
};

class DatabaseQueryFormats : public DatabaseQuery,
                             public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Formats, DatabaseQueryFormats, testing::Values("table", "json", "csv"),
                         [](const auto& row) { return row.param; });

TEST_P(DatabaseQueryFormats, RowsAreThoseOfTheDatabase) {
  Rows expected = Inventory(database_).rows(
      "SELECT dev_id, name FROM device WHERE dev_id > 10 AND dev_id < 14 ORDER BY dev_id");
  ASSERT_EQ(expected.size(), 3U);
  expected.insert(expected.begin(), {"dev_id", "name"});
  const Outcome outcome =
      query({"SELECT dev_id, name FROM device WHERE dev_id > :low AND dev_id < :high ORDER BY "
             "dev_id",
             "--param", "integer:10", "--param", "14", "--format", GetParam()});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(rowsOf(GetParam(), outcome.out), expected);
}

TEST_F(DatabaseQuery, JsonKeepsTheTypes) {
  const Outcome outcome =
      query({"SELECT 7 AS whole, 0.5 AS real, 'a' AS text, x'00ff' AS bytes, NULL AS none",
             "--format", "json"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(
      outcome.out,
      "{\"result\": 0, \"records\": [\n"
      "  {\"whole\": 7, \"real\": 0.5, \"text\": \"a\", \"bytes\": \"00ff\", \"none\": null}\n"
      "]}\n");
}

TEST_F(DatabaseQuery, WriteIsRefusedByTheDatabaseAndWritesNothing) {
  const auto before = Inventory(database_).rows("SELECT count(*) FROM device");
  const Outcome outcome = query({"DELETE FROM device"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(outcome.err,
              AllOf(HasSubstr("db query DELETE FROM device: "), HasSubstr("readonly")));
  EXPECT_EQ(Inventory(database_).rows("SELECT count(*) FROM device"), before);
}

TEST_F(DatabaseQuery, RefusedStatementSaysWhy) {
  const Outcome outcome = query({"SELECT name FROM nowhere"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("no such table: nowhere"));
}

TEST_F(DatabaseQuery, RowsBeforeAFailureAreShown) {
  const Outcome outcome =
      query({"SELECT abs(n) AS n FROM (SELECT 1 AS n UNION ALL SELECT -9223372036854775807 - 1)",
             "--format", "csv"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "n\r\n1\r\n");
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("integer overflow"), HasSubstr("reading ended early")));
}

TEST_F(DatabaseQuery, WithoutADatabaseIsAMatterOfTheConfiguration) {
  configure([](Json::Value& document) { document.removeMember("database"); });
  const Outcome outcome = query({"SELECT 1"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("database.connection is not set"));
}

TEST_F(DatabaseQuery, ParameterOfNoTypeIsWrongUsage) {
  const Outcome outcome = query({"SELECT :a", "--param", "integer:many"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("bytes:HEX"));
}

}  // namespace
}  // namespace systemtest
