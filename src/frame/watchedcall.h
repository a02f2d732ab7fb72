// Tells a host that watches (emfwatch.h) of one operation.
//
//   std::int64_t EMFTopoI::getDevice(long id, Device& out) {
//     emf::WatchedCall call("EMFTopoI::getDevice");
//     return call.result(read(id, out));
//   }
//
// Thread-safety: thread-compatible. Nothing is thrown.
#pragma once

#include <chrono>
#include <exception>

#include "emfwatch.h"

namespace emf {

class WatchedCall {
 public:
  // The text has to live as long as the process.
  explicit WatchedCall(const char* operation) noexcept : operation_(operation) {
    if (!isWatched()) return;
    exceptions_ = std::uncaught_exceptions();
    start_ = Clock::now();
  }
  WatchedCall(const WatchedCall&) = delete;
  WatchedCall& operator=(const WatchedCall&) = delete;
  // An exception that leaves the operation is a failure.
  ~WatchedCall() {
    if (!isWatched()) return;
    const std::chrono::nanoseconds length = Clock::now() - start_;
    const bool failed = failed_ || std::uncaught_exceptions() > exceptions_;
    emfOperationEnded(operation_, length.count(), failed ? 1 : 0);
  }

  void fail() noexcept { failed_ = true; }

  // Passes on a result of which 0 alone is success.
  template <class Result>
  Result result(Result value) noexcept {
    failed_ = value != 0;
    return value;
  }

 private:
  using Clock = std::chrono::steady_clock;

  static bool isWatched() noexcept { return emfOperationEnded != nullptr; }

  const char* const operation_;
  int exceptions_ = 0;  // under way when the operation began
  Clock::time_point start_;
  bool failed_ = false;
};

inline void tellCacheFilled(const char* cache, std::size_t entries) noexcept {
  if (emfCacheFilled != nullptr) emfCacheFilled(cache, entries);
}

}  // namespace emf
