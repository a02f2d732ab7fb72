// Every exported operation that asks the database, itself or by way of the southbound set, over one
// small inventory.
//
// Thread-safety: immutable.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "outcome.h"
#include "test_database.h"

namespace emf::faults {

struct DatabaseOperation {
  std::string name;
  std::function<Outcome()> call;
  Outcome whole;
  Outcome failed;           // the database could not be asked
  std::string failureLine;  // in the log then, beside the reason
};

const std::vector<DatabaseOperation>& databaseOperations();

// The tables and rows that the operations are about, in an empty database.
void fillInventory(dao::test::TestDatabase& database);

}  // namespace emf::faults
