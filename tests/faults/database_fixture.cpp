#include "database_fixture.h"

#include <gmock/gmock.h>

#include "orma/dao/emf_comm_db_engine.h"

namespace emf::faults {

DatabaseMatrix::~DatabaseMatrix() { CEmfCommDBEngine::Destroy(); }

void DatabaseMatrix::reach(const std::string& connection, int busyMs, int statementMs) const {
  Json::Value root;
  root["database"]["connection"] = connection;
  root["database"]["busyTimeoutMs"] = busyMs;
  root["database"]["statementTimeoutMs"] = statementMs;
  configure(root);
}

void DatabaseMatrix::expectWhole() {
  for (const DatabaseOperation& operation : databaseOperations()) {
    EXPECT_EQ(operation.call(), operation.whole) << operation.name;
  }
}

void DatabaseMatrix::expectFailure(const DatabaseOperation& operation, const Outcome& outcome) {
  EXPECT_EQ(outcome, operation.failed);
  EXPECT_THAT(logged(), testing::HasSubstr(operation.failureLine));
}

std::chrono::milliseconds DatabaseMatrix::strike(const DatabaseOperation& operation,
                                                 Expected expected) {
  SCOPED_TRACE(operation.name);
  logged();
  Outcome outcome;
  const auto took = timeOf([&] { outcome = operation.call(); });
  if (expected == Expected::Whole) {
    EXPECT_EQ(outcome, operation.whole);
  }
  if (expected == Expected::Failed) expectFailure(operation, outcome);
  if (expected == Expected::Bounded) {
    // No exception leaves these operations, and none of them takes anything away.
    EXPECT_THAT(outcome.result, testing::MatchesRegex("-?[0-9]+|read|failed"));
    EXPECT_GE(outcome.records.size(), operation.failed.records.size());
  }
  return took;
}

// Another database that cannot be had makes every session let go of the one that it has open.
Holdings DatabaseMatrix::settled() {
  reach("sqlite:" + file("none.db"));
  for (const DatabaseOperation& operation : databaseOperations()) {
    EXPECT_EQ(operation.call(), operation.failed) << operation.name;
  }
  return Holdings::now();
}

}  // namespace emf::faults
