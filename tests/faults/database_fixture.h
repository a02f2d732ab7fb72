// A cell of the database: operations over an inventory that is whole, then not, then whole again.
//
// Thread-safety: thread-compatible.
#pragma once

#include <functional>

#include "database_operations.h"
#include "fault_world.h"

namespace emf::faults {

class DatabaseMatrix : public FaultWorld {
 protected:
  static constexpr int kLongMs = 60000;
  static constexpr int kShortMs = 50;

  enum class Expected {
    Failed,   // what is stated for a database that could not be asked
    Whole,    // the fault does not show
    Bounded,  // the database's own library may or may not see it: a stated result, and no more
  };

  ~DatabaseMatrix() override;

  void reach(const std::string& connection, int busyMs = kLongMs, int statementMs = kLongMs) const;
  void expectWhole();
  // One operation, during a fault. How long it took.
  std::chrono::milliseconds strike(const DatabaseOperation& operation, Expected expected);
  // What the process holds when no operation has anything open; none can read until `reach`.
  Holdings settled();

 private:
  void expectFailure(const DatabaseOperation& operation, const Outcome& outcome);
};

}  // namespace emf::faults
