// Statements on a PostgreSQL server: its types, and writes that are hidden in a block.
#include <gmock/gmock.h>

#include "host_failure.h"
#include "inventory_fixture.h"
#include "operations.h"

namespace ormaagent {
namespace {

using testing::HasSubstr;
using Records = std::vector<std::vector<Value>>;

class DbQueryPostgresql : public dao::test::InventoryTest {
 protected:
  static Answer query(const std::string& statement, std::vector<std::string> parameters = {}) {
    return dbQuery(Arguments({statement}, {}, {{"--param", std::move(parameters)}}));
  }
  static std::int64_t locations() {
    return std::get<std::int64_t>(
        query("SELECT count(*) FROM device_location").records.at(0).at(0));
  }
};

TEST_F(DbQueryPostgresql, ValuesHaveTheTypesOfTheirColumns) {
  EXPECT_EQ(
      query("SELECT :a::int8, :b::float8, :c::text, :d::bytea, :e::text, true, 1.50::numeric",
            {"integer:-5", "real:0.5", "7", "bytes:00ff", "null:"})
          .records,
      (Records{{std::int64_t{-5}, 0.5, "7", "00ff", std::monostate(), std::int64_t{1}, "1.50"}}));
}

TEST_F(DbQueryPostgresql, BlockCannotLeaveTheReadOnlyTransaction) {
  for (const char* statement :
       {"DO $$ BEGIN DELETE FROM device_location; END $$",
        "DO $$ BEGIN SET LOCAL transaction_read_only = off; DELETE FROM device_location; END $$",
        "DO $$ BEGIN SET default_transaction_read_only = off; COMMIT; DELETE FROM "
        "device_location; END $$"}) {
    EXPECT_THROW(query(statement), HostFailure) << statement;
  }
  EXPECT_EQ(locations(), 2);
}

TEST_F(DbQueryPostgresql, OneStatementIsRunAndNotTwo) {
  EXPECT_THROW(query("COMMIT; DELETE FROM device_location"), HostFailure);
  EXPECT_EQ(locations(), 2);
}

}  // namespace
}  // namespace ormaagent
