// What cursors report of their statements.
#include "../metrics/exchange_counts.h"

#include <gtest/gtest.h>

#include "inventory_fixture.h"
#include "orma/dao/cursor_table.h"
#include "orma/dao/sql_session.h"

namespace dao::test {
namespace {

class DatabaseCounts : public InventoryTest {
 protected:
  // The counts of one statement that is read to its end.
  static std::string countsOf(const std::string& statement) {
    const ExchangeCounts counts(orma::metrics::OutsideService::kDatabase);
    {
      CSqlSession session;
      CCursorTable rows;
      rows.Open(session, statement);
      while (rows.FetchNextRow()) {
      }
    }
    return counts.since();
  }
};

TEST_F(DatabaseCounts, AStatementThatRunsIsAnswered) {
  EXPECT_EQ(countsOf("SELECT 1"), "1 answered, 0 refused, 0 unreached");
}

TEST_F(DatabaseCounts, AStatementThatFailsIsRefused) {
  EXPECT_EQ(countsOf("SELECT nothing FROM nowhere"), "0 answered, 1 refused, 0 unreached");
}

TEST_F(DatabaseCounts, AReadThatFailsAtALaterRowIsRefused) {
  EXPECT_EQ(countsOf("SELECT 1 UNION ALL SELECT abs(-9223372036854775807 - 1)"),
            "0 answered, 1 refused, 0 unreached");
}

TEST_F(DatabaseCounts, ADatabaseThatIsNotThereIsNotReached) {
  configure("sqlite:no-such.db");
  EXPECT_EQ(countsOf("SELECT 1"), "0 answered, 0 refused, 1 unreached");
}

TEST_F(DatabaseCounts, WithoutADatabaseNothingCounts) {
  configure("");
  EXPECT_EQ(countsOf("SELECT 1"), "0 answered, 0 refused, 0 unreached");
}

}  // namespace
}  // namespace dao::test
