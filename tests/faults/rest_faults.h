// The ways in which one exchange with the REST service goes wrong, or only seems to.
//
// Thread-safety: immutable.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "peer.h"
#include "rest_operations.h"

namespace emf::faults {

struct RestFault {
  enum class How {
    Answers,  // the peer does what the scripts say
    Refuses,  // from that exchange on
    IsDeaf,   // no connection is ever made
  };
  // What the peer does once it has read the request. Each is a case of its own.
  using Scripts = std::function<std::vector<std::function<void(const Wire&)>>(const RestOperation&,
                                                                              const Exchange&)>;

  std::string name;
  Loss loss;
  How how;
  Scripts scripts;
  bool atDeadline = false;  // the exchange ends when its time is over, and not before
};
void PrintTo(const RestFault& fault, std::ostream* out);

// Small enough for the tests to go beyond, large enough for every right answer.
constexpr int kMaxAnswerBytes = 4096;
constexpr int kMaxNesting = 20;

const std::vector<RestFault>& restFaults();

}  // namespace emf::faults
