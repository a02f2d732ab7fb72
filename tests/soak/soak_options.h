// What a soak is made of. Short ones go through a number of rounds, long ones on for a time.
//
// Thread-safety: thread-compatible.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace soak {

struct SoakOptions {
  int threads = 8;
  std::uint64_t seed = 1;
  int callsTogether = 10;    // of an operation, at most, by all threads at a time, at the beginning
  std::uint64_t rounds = 0;  // of each thread through all operations; 0: on for `length`
  std::chrono::seconds length{0};  // without `rounds`
  std::chrono::seconds warmUp{300};
  std::chrono::seconds betweenSamples{5};
  int elements = 10'000;
  int equipped = 200;
  int definitions = 12'000;  // of alarms, at least
  int alarmsASecond = 1'000;
  int alarmsKept = 20'000;
  int alarmsOfAFrame = 1'000;
  bool endlessStalls = true;  // also faults that only a deadline ends
  // Complete and right answers of each operation, at least.
  std::uint64_t rightAnswers = 10;
  std::string samplesFile;  // empty: none is written
};

}  // namespace soak
