// What is peculiar to SQLite: values of any type in any column, and a database that is a file.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "inventory_fixture.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"
#include "sqlite_database.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Sqlite : public EngineTest {
 protected:
  std::vector<std::string> names(int expected = 0) {
    std::list<stDevProperty> found;
    EXPECT_EQ(engine().GetDevProperty({2}, found), expected);
    std::vector<std::string> result;
    for (const stDevProperty& device : found) result.push_back(device.devName);
    return result;
  }

  // An inventory with device 2 of this name, in a file of the test's directory.
  void makeInventory(const std::string& name, const std::string& device) {
    SqliteFile database(file(name));
    layOutInventory(database);
    database.run(deviceRow("2", device));
  }
};

TEST_F(Sqlite, ValuesHaveTheirOwnTypesAndNotTheColumns) {
  SqliteFile database(file("a.db"));
  database.run(
      "CREATE TABLE t (i INTEGER, s TEXT, r REAL, b BLOB); INSERT INTO t VALUES "
      "(1099511627776, 'a', 0.1, x'00ff'), ('abc', x'', 2, 1.5), (-1, 5, NULL, 'text')");
  configure(database.connection());
  CSqlSession session;
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session, "SELECT i, s, r, b FROM t ORDER BY rowid").IsOk());
  const auto row = [&rows] {
    EXPECT_TRUE(rows.FetchNextRow());
    return std::vector<CValue>{rows[0], rows[1], rows[2], rows[3]};
  };
  const auto integer = [](std::int64_t value) { return CValue(value); };
  const auto text = [](const char* value) { return CValue(std::string(value)); };
  EXPECT_TRUE((row() == std::vector<CValue>{integer(1099511627776), text("a"), CValue(0.1),
                                            CValue(refl::Bytes{0, 255})}));
  EXPECT_TRUE(
      (row() == std::vector<CValue>{text("abc"), CValue(refl::Bytes{}), CValue(2.0), CValue(1.5)}));
  EXPECT_TRUE((row() == std::vector<CValue>{integer(-1), text("5"), CValue(), text("text")}));
}

TEST_F(Sqlite, TextInANumberColumnFailsTheReadAndIsNotTakenAsZero) {
  SqliteFile database(file("a.db"));
  layOutInventory(database);
  database.run(deviceRow("2", "odd", "'router'"));
  configure(database.connection());
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre("[CEmfCommDBEngine::GetDevProperty] device 2, column "
                                         "main_type: a value of type text cannot be taken as an "
                                         "integer"));
}

TEST_F(Sqlite, RelativePathStartsAtTheConfigurationsDirectory) {
  makeInventory("a.db", "here");
  configure("sqlite:a.db");
  EXPECT_THAT(names(), ElementsAre("here"));
}

TEST_F(Sqlite, PathMayHoldBlanksAndSigns) {
  for (const std::string name :
       {"a b.db", "a  b = 'c'.db", " a.db", "a.db ", "ä 框%20?mode=x#.db"}) {
    makeInventory(name, "core-1");
    configure("sqlite:" + file(name));
    EXPECT_THAT(names(), ElementsAre("core-1"));
  }
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Sqlite, PathWithDoubleQuoteIsRefused) {
  configure("sqlite:/tmp/a\" readonly=false.db");
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("the path holds a double quote")));
}

TEST_F(Sqlite, MissingFileFailsTheReadAndIsNotMade) {
  configure("sqlite:none.db");
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(),
              ElementsAre("[CEmfCommDBEngine::GetDevProperty] cannot open the database file " +
                          file("none.db") + ": No such file or directory"));
  EXPECT_FALSE(std::filesystem::exists(file("none.db")));
}

TEST_F(Sqlite, FileThatIsNoDatabaseFailsTheRead) {
  std::ofstream(file("a.db")) << std::string(4096, 'x');
  configure("sqlite:a.db");
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("file is not a database")));
}

TEST_F(Sqlite, DirectoryFailsTheRead) {
  configure("sqlite:.");
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr(": it is no regular file")));
}

TEST_F(Sqlite, DatabaseWithoutTablesFailsTheReadWithTheTablesName) {
  SqliteFile(file("a.db")).run("CREATE TABLE other (n INTEGER)");
  configure("sqlite:a.db");
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("no such table: device")));
}

TEST_F(Sqlite, LockedDatabaseFailsTheReadWhenTheWaitIsOver) {
  makeInventory("a.db", "free again");
  SqliteFile writer(file("a.db"));
  writer.run("BEGIN EXCLUSIVE");
  configure("sqlite:a.db", 60);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(60));
  EXPECT_THAT(loggedTexts(), ElementsAre(HasSubstr("database is locked")));
  writer.run("COMMIT");
  EXPECT_THAT(names(), ElementsAre("free again"));
}

TEST_F(Sqlite, ReplacedFileIsOpenedAnewWithoutAWord) {
  makeInventory("a.db", "old");
  makeInventory("b.db", "new");
  configure("sqlite:a.db");
  EXPECT_THAT(names(), ElementsAre("old"));
  std::filesystem::rename(file("b.db"), file("a.db"));
  EXPECT_THAT(names(), ElementsAre("new"));
  EXPECT_THAT(loggedTexts(), IsEmpty());
}

TEST_F(Sqlite, RemovedFileFailsTheReadUntilItIsBack) {
  makeInventory("a.db", "old");
  configure("sqlite:a.db");
  EXPECT_THAT(names(), ElementsAre("old"));
  std::filesystem::rename(file("a.db"), file("away.db"));
  EXPECT_THAT(names(-1), IsEmpty());
  EXPECT_THAT(loggedTexts(),
              ElementsAre("[CEmfCommDBEngine::GetDevProperty] cannot open the database file " +
                          file("a.db") + ": No such file or directory"));
  std::filesystem::rename(file("away.db"), file("a.db"));
  EXPECT_THAT(names(), ElementsAre("old"));
}

TEST_F(Sqlite, ChangesByOthersAreSeen) {
  makeInventory("a.db", "old");
  configure("sqlite:a.db");
  EXPECT_THAT(names(), ElementsAre("old"));
  SqliteFile(file("a.db")).run("UPDATE device SET name = 'new'");
  EXPECT_THAT(names(), ElementsAre("new"));
}

TEST_F(Sqlite, ParameterThatIsNotGivenIsNullAndNotThatOfTheRunBefore) {
  makeInventory("a.db", "core-1");
  configure("sqlite:" + file("a.db"));
  CSqlSession session;
  CCursorTable rows;
  const std::string statement = "SELECT :a AS a, :b AS b";
  ASSERT_TRUE(
      rows.Open(session, statement, {CValue(std::string("first")), CValue(std::string(500, 'x'))})
          .IsOk());
  for (const std::vector<CValue>& parameters :
       {std::vector<CValue>{CValue(std::string("second"))}, std::vector<CValue>{}}) {
    ASSERT_TRUE(rows.Open(session, statement, parameters).IsOk());
    ASSERT_TRUE(rows.FetchNextRow());
    EXPECT_EQ(rows["a"], parameters.empty() ? CValue() : parameters[0]);
    EXPECT_EQ(rows["b"], CValue());
  }
}

TEST_F(Sqlite, BytesAreParametersOfAnyLength) {
  SqliteFile database(file("a.db"));
  database.run("CREATE TABLE t (n INTEGER, v BLOB); INSERT INTO t VALUES (1, x'00ff'), (2, x'')");
  configure(database.connection());
  CSqlSession session;
  CCursorTable rows;
  const std::string statement = "SELECT n, :again AS again FROM t WHERE v = :v";
  const std::vector<refl::Bytes> values = {{0, 255}, {}};
  for (std::size_t i = 0; i < values.size(); ++i) {
    const CValue bytes(values[i]);
    ASSERT_EQ(rows.Open(session, statement, {bytes, bytes}).GetMessage(), "");
    ASSERT_TRUE(rows.FetchNextRow());
    EXPECT_EQ(rows["n"].asInteger(), static_cast<std::int64_t>(i) + 1);
    EXPECT_EQ(rows["again"], bytes);
    EXPECT_FALSE(rows.FetchNextRow());
  }
}

// What an open mode alone would let pass.
TEST_F(Sqlite, NeitherCopiesNorTemporaryTablesAreWritten) {
  makeInventory("a.db", "one");
  configure("sqlite:a.db");
  CSqlSession session;
  for (const std::string& statement :
       {std::string("CREATE TEMP TABLE t (n INTEGER)"), "VACUUM INTO '" + file("copy.db") + "'",
        std::string("DELETE FROM device"), std::string("PRAGMA user_version = 7")}) {
    CCursorTable rows;
    EXPECT_EQ(rows.Open(session, statement).GetErrCode(), kExecStatementFailed) << statement;
    EXPECT_THAT(rows.GetStatus().GetMessage(), HasSubstr("readonly")) << statement;
  }
  EXPECT_FALSE(std::filesystem::exists(file("copy.db")) &&
               std::filesystem::file_size(file("copy.db")) > 0);
}

TEST_F(Sqlite, FailureInTheMiddleOfTheRowsIsToldApartFromTheirEnd) {
  makeInventory("a.db", "one");
  configure("sqlite:a.db");
  CSqlSession session;
  CCursorTable rows;
  // SQLite computes a row when it is asked for: the second one overflows.
  ASSERT_TRUE(rows.Open(session,
                        "SELECT abs(n) FROM (SELECT 1 AS n UNION ALL SELECT "
                        "-9223372036854775807 - 1)")
                  .IsOk());
  ASSERT_TRUE(rows.FetchNextRow());
  EXPECT_FALSE(rows.FetchNextRow());
  EXPECT_EQ(rows.GetStatus().GetErrCode(), kExecStatementFailed);
  EXPECT_THAT(rows.GetStatus().GetMessage(), HasSubstr("integer overflow"));
  EXPECT_FALSE(rows.FetchNextRow());
}

TEST_F(Sqlite, StatementThatTakesTooLongIsEndedAndTheNextOneRuns) {
  SqliteFile database(file("a.db"));
  configure(database.connection(), 5000, 50);
  CSqlSession session;
  CCursorTable rows;
  const CExecStatus status = rows.Open(session,
                                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                                       "FROM n) SELECT count(*) FROM n");
  EXPECT_EQ(status.GetErrCode(), kExecStatementFailed);
  EXPECT_EQ(status.GetMessage(),
            "the statement took longer than 50 ms (database.statementTimeoutMs)");
  EXPECT_TRUE(rows.Open(session, "SELECT 1").IsOk());
}

TEST_F(Sqlite, ALaterRowThatTakesTooLongIsEnded) {
  SqliteFile database(file("a.db"));
  configure(database.connection(), 5000, 50);
  CSqlSession session;
  CCursorTable rows;
  ASSERT_TRUE(rows.Open(session,
                        "SELECT 1 UNION ALL SELECT * FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION "
                        "ALL SELECT i + 1 FROM n) SELECT count(*) FROM n)")
                  .IsOk());
  EXPECT_TRUE(rows.FetchNextRow());
  EXPECT_FALSE(rows.FetchNextRow());
  EXPECT_EQ(rows.GetStatus().GetMessage(),
            "the statement took longer than 50 ms (database.statementTimeoutMs)");
}

}  // namespace
}  // namespace dao::test
