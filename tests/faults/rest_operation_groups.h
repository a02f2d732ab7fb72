// The parts of the table of operations, one for each file.
//
// Thread-safety: thread-safe.
#pragma once

#include "rest_operations.h"

namespace emf::faults {

// What members of a wrong JSON type raise.
inline constexpr char kLogicError[] = "Json::LogicError";

// The record that is in an output before the call.
template <typename Record>
std::string earlier() {
  return text(Record());
}

void addDeviceOperations(std::vector<RestOperation>& all);
void addTopologyOperations(std::vector<RestOperation>& all);
void addAlarmOperations(std::vector<RestOperation>& all);
void addLabelOperations(std::vector<RestOperation>& all);
void addResourceOperations(std::vector<RestOperation>& all);

}  // namespace emf::faults
