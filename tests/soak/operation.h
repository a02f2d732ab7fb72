// The operations of the plug-in, each with a check of its answer.
//
//   for (const Operation& operation : operations()) Verdict verdict = operation.run(context);
//
// Thread-safety: the operations are thread-safe on contexts of their own. Failure: a verdict, or
// std::runtime_error when the inventory cannot be read.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "alarm_history.h"
#include "answer.h"
#include "network.h"
#include "records.h"

namespace soak {

// The exchanges with outside services that have failed in this process.
std::uint64_t failedExchanges();

// What one thread asks with.
struct Context {
  Context(const Network& theNetwork, AlarmHistory& theAlarms, std::uint64_t seed)
      : network(theNetwork), alarms(theAlarms), random(seed) {}

  // Asks, looks at `rows` then, and judges.
  template <class Call, class RowsOf>
  Verdict check(const Call& call, const RowsOf& rows, const Expected& expected) {
    const std::uint64_t failed = failedExchanges();
    Answer answer = ask(call);
    answer.rows = rows();
    return judge(answer, expected, failedExchanges() != failed);
  }

  std::size_t below(std::size_t count) { return random() % count; }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  template <class Value>
  const Value& pick(const std::vector<Value>& values) {
    return values[below(values.size())];
  }

  const Network& network;
  AlarmHistory& alarms;
  std::mt19937_64 random;
  std::uint64_t alarmsReceived = 0;
  std::uint64_t statesTaken = 0;  // port states that another thread's answer had replaced
};

struct Operation {
  const char* name;
  int weight;  // how often it comes in a round
  Verdict (*run)(Context& context);
};

std::vector<Operation> operations();

// Its parts.
void addTopologyOperations(std::vector<Operation>& all);
void addMapOperations(std::vector<Operation>& all);
void addResourceOperations(std::vector<Operation>& all);
void addLabelOperations(std::vector<Operation>& all);
void addAlarmOperations(std::vector<Operation>& all);
void addDatabaseOperations(std::vector<Operation>& all);
void addOtherOperations(std::vector<Operation>& all);

}  // namespace soak
