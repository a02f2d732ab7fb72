// Rows of an SQLite file: bytes, a file that goes away between rows, a read that fails there.
#include <gmock/gmock.h>

#include <filesystem>

#include "dbrowreader.h"
#include "inventory_fixture.h"
#include "orma/dao/exec_status.h"
#include "orma/refl/value.h"
#include "sqlite_database.h"

namespace dao::test {
namespace {

using refl::CValue;
using ::testing::HasSubstr;

class SqliteRows : public EngineTest {
 protected:
  SqliteRows() {
    SqliteFile database(file("a.db"));
    database.run("CREATE TABLE t (n INTEGER, b BLOB)");
    database.run("INSERT INTO t VALUES (1, x'00ff'), (2, x''), (3, NULL)");
    configure(database.connection());
  }
};

TEST_F(SqliteRows, HoldBytes) {
  DbRowReader reader(0, nullptr);
  ASSERT_TRUE(reader.open("SELECT b FROM t ORDER BY n", {}).IsOk());
  std::vector<CValue> values;
  while (reader.fetchRowByIndex(values, 1) == 0) {
  }
  EXPECT_TRUE((values ==
               std::vector<CValue>{CValue(refl::Bytes{0, 255}), CValue(refl::Bytes()), CValue()}));
}

TEST_F(SqliteRows, AreReadToTheirEndWhenTheFileGoesAwayBetweenThem) {
  DbRowReader reader(0, nullptr);
  ASSERT_TRUE(reader.open("SELECT n FROM t ORDER BY n", {}).IsOk());
  std::vector<CValue> values;
  ASSERT_EQ(reader.fetchRowByIndex(values, 1), 0);
  std::filesystem::remove(file("a.db"));
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 0);
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 0);
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 6);
  EXPECT_TRUE(reader.lastStatus().IsOk());
  EXPECT_EQ(reader.open("SELECT n FROM t", {}).GetErrCode(), kExecNotConnected);
}

TEST_F(SqliteRows, ThatCannotBeReadOnAreToldApartFromTheirEnd) {
  DbRowReader reader(0, nullptr);
  ASSERT_TRUE(reader
                  .open("SELECT abs(n) FROM (SELECT 1 AS n UNION ALL SELECT "
                        "-9223372036854775807 - 1)",
                        {})
                  .IsOk());
  std::vector<CValue> values;
  ASSERT_EQ(reader.fetchRowByIndex(values, 1), 0);
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 6);
  EXPECT_EQ(values.size(), 1U);
  EXPECT_EQ(reader.lastStatus().GetErrCode(), kExecStatementFailed);
  EXPECT_THAT(reader.lastStatus().GetMessage(), HasSubstr("integer overflow"));
}

TEST_F(SqliteRows, ServerTypeIsThatOfSqlite) {
  EXPECT_EQ(getDbServerType(), 1);
  EXPECT_FALSE(isDbServerType7());
}

}  // namespace
}  // namespace dao::test
