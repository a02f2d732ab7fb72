// Every exported operation that asks the REST service, with the right answers to its requests and
// what it makes of them, whole or not.
//
//   for (const RestOperation& operation : restOperations()) {
//     EXPECT_EQ(operation.call(), operation.expected());
//   }
//
// Thread-safety: immutable.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "outcome.h"

namespace emf::faults {

// What is wrong with one answer, to who reads it.
enum class Loss {
  None,
  Failed,    // there was no answer
  NoObject,  // JSON, but no object
  Null,      // the JSON null
  NoList,    // an object whose list is none
};

// One exchange of an operation, in the order in which it asks.
struct Exchange {
  std::string answer;
  std::vector<std::string> records;  // what the operation makes of it
  // An answer that is lost costs its own records only, in whose place stand these.
  bool alone = false;
  std::vector<std::string> lost = {};
  std::string failureLine = {};  // in the log when there is no answer, beside the client's own
};

struct RestResults {
  std::string success;
  std::string failed;
  std::string noObject;
  std::string noList;  // empty: such a list reads as an empty one
};

struct RestOperation {
  std::string name;
  std::string list;  // the member of the answers that holds their list
  RestResults results;
  std::vector<Exchange> exchanges;
  std::function<Outcome()> call;

  // The output before the call; replaced by what was read, or else stays in front of it.
  std::vector<std::string> before = {};
  bool replaces = false;
  bool allOrNone = false;
  // An answer that is no object is passed over, and the first one's total decides on the others.
  bool counted = false;
  std::vector<std::string> front = {};    // stands first when all went well
  std::vector<std::string> closing = {};  // stands last then
  // What members of a wrong JSON type may throw.
  std::vector<std::string> throws = {};
  bool keepsOrder = true;  // pages are told apart by their order alone
  // Reads the device listing, one page ahead and by the deadlines of its beginning.
  bool isListing = false;

  // What the call gives when the exchange with that number, and perhaps all behind it, is lost.
  Outcome expected(Loss loss = Loss::None, std::size_t at = 0, bool onwards = false) const;
  // The same when these records were read and the operation ended with that result.
  Outcome ended(const std::string& result, const std::vector<std::string>& read,
                bool complete) const;
};

const std::vector<RestOperation>& restOperations();

}  // namespace emf::faults
