// Samples of what the process and the simulator hold, and whether that grew.
//
//   Growth growth(options);
//   growth.sample(simulator);  // again and again, while nothing is under way
//   bool grew = !growth.report(stdout);
//
// Thread-safety: thread-compatible. Failure: std::filesystem::filesystem_error when the simulator
// is gone.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "holdings.h"
#include "soak_options.h"

namespace soak {

class Growth {
 public:
  explicit Growth(const SoakOptions& options) : options_(options), samples_() {
    samples_.reserve(kMostSamples);
  }

  void sample(pid_t simulator);
  // Prints the figures and what they are compared with; whether all is well. A soak that is too
  // short to be judged says so, and is well.
  bool report(std::FILE* out) const;
  // Writes every sample as a line of comma-separated values.
  void write(const std::string& file) const;

 private:
  static constexpr std::size_t kMostSamples = 100'000;  // reserved, so that it is no growth itself

  struct Sample {
    std::chrono::duration<double> time;
    std::size_t heap;
    std::size_t database;   // of that, what SQLite has
    std::size_t untrimmed;  // resident before what is free was given back
    Holdings process;
    Holdings simulator;
  };
  struct Windows {
    std::chrono::duration<double> length{};  // of each of the two that are compared
    std::vector<Sample> warmUp;              // to the end of the first of them
    std::vector<Sample> first;               // right behind the warm-up
    std::vector<Sample> last;                // at the end
  };

  Windows windows() const;
  template <class Value>
  bool reportMedian(std::FILE* out, const char* name, const Windows& windows, Value value) const;
  template <class Value>
  bool reportMost(std::FILE* out, const char* name, const Windows& windows, Value value) const;

  const SoakOptions options_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::vector<Sample> samples_;
};

}  // namespace soak
