// The time of day, as long as this lives; the program is linked with --wrap=time.
//
//   const TestClock clock(1704164645);
//
// Thread-safety: belongs to the test's thread.
#pragma once

#include <ctime>

namespace emf::test {

class TestClock {
 public:
  explicit TestClock(std::time_t now);
  TestClock(const TestClock&) = delete;
  TestClock& operator=(const TestClock&) = delete;
  ~TestClock();
};

}  // namespace emf::test
