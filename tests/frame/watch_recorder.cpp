#include "watch_recorder.h"

#include <gtest/gtest.h>

#include "emfwatch.h"

namespace emf::test {

std::vector<std::string>& watchTold() {
  static std::vector<std::string> lines;
  return lines;
}

}  // namespace emf::test

extern "C" EMF_API void emfOperationEnded(const char* operation, std::int64_t nanoseconds,
                                          int failed) noexcept {
  EXPECT_GE(nanoseconds, 0);
  emf::test::watchTold().push_back(std::string(operation) + (failed != 0 ? " failed" : ""));
}

extern "C" EMF_API void emfCacheFilled(const char* cache, std::size_t entries) noexcept {
  emf::test::watchTold().push_back(std::string(cache) + " " + std::to_string(entries));
}
