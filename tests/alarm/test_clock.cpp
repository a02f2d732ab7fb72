#include "test_clock.h"

#include <optional>

namespace {

std::optional<std::time_t> fixedTime;

}  // namespace

namespace emf::test {

TestClock::TestClock(std::time_t now) { fixedTime = now; }
TestClock::~TestClock() { fixedTime.reset(); }

}  // namespace emf::test

extern "C" std::time_t __real_time(std::time_t* out);
extern "C" std::time_t __wrap_time(std::time_t* out);
extern "C" std::time_t __wrap_time(std::time_t* out) {
  if (!fixedTime) return __real_time(out);
  if (out != nullptr) *out = *fixedTime;
  return *fixedTime;
}
