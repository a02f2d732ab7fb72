// Rows of a PostgreSQL server: its types, and a connection that is ended between rows.
#include <gmock/gmock.h>

#include "dbrowreader.h"
#include "inventory_fixture.h"
#include "orma/dao/exec_status.h"
#include "orma/dao/sql_session.h"
#include "orma/refl/value.h"
#include "postgresql_database.h"

namespace dao::test {
namespace {

using refl::CValue;

class PostgresqlRows : public InventoryTest {
 protected:
  // Ends every connection but the test's own.
  void endConnections() {
    PostgresqlClient(PrivatePostgres::instance(reason_)->conninfo("postgres"))
        .run(
            "SELECT count(pg_terminate_backend(pid, 10000)) FROM pg_stat_activity "
            "WHERE backend_type = 'client backend' AND pid <> pg_backend_pid()");
  }

 private:
  std::string reason_;
};

TEST_F(PostgresqlRows, HaveTheTypesOfTheirColumns) {
  DbRowReader reader(0, nullptr);
  ASSERT_EQ(reader
                .open("SELECT 7::int2, 0.5::float4, true, '\\x00ff'::bytea, ''::bytea, "
                      "'2024-02-29'::date, NULL::int4",
                      {})
                .GetMessage(),
            "");
  std::vector<CValue> values;
  ASSERT_EQ(reader.fetchRowByIndex(values, 7), 0);
  EXPECT_TRUE(
      (values == std::vector<CValue>{CValue(std::int64_t{7}), CValue(0.5), CValue(std::int64_t{1}),
                                     CValue(refl::Bytes{0, 255}), CValue(refl::Bytes()),
                                     CValue(std::string("2024-02-29")), CValue()}));
}

// The server's whole answer is here when the first row is read.
TEST_F(PostgresqlRows, AreReadToTheirEndWhenTheConnectionIsEndedBetweenThem) {
  CSqlSession session("given");
  DbRowReader reader(0, &session);
  ASSERT_TRUE(reader.open("SELECT n FROM generate_series(1, 50000) AS n", {}).IsOk());
  std::vector<CValue> values;
  ASSERT_EQ(reader.fetchRowByIndex(values, 1), 0);
  endConnections();
  while (reader.fetchRowByIndex(values, 1) == 0) {
  }
  ASSERT_EQ(values.size(), 50000U);
  for (std::size_t i = 0; i < values.size(); ++i) {
    ASSERT_TRUE(values[i] == CValue(static_cast<std::int64_t>(i) + 1)) << i;
  }
  EXPECT_TRUE(reader.lastStatus().IsOk());
  ASSERT_EQ(reader.open("SELECT name FROM device WHERE dev_id = 2", {}).GetMessage(), "")
      << "a new connection is made";
  EXPECT_EQ(reader.fetchRowByIndex(values, 1), 0);
}

TEST_F(PostgresqlRows, ServerTypeIs7) {
  EXPECT_EQ(getDbServerType(), 7);
  EXPECT_TRUE(isDbServerType7());
}

}  // namespace
}  // namespace dao::test
