// A point of the monotonic clock by which something must be done. Several waits share one, so that
// a peer that gives a byte now and then cannot stretch it.
//
// Thread-safety: immutable.
#pragma once

#include <algorithm>
#include <chrono>
#include <limits>

namespace orma::channel {

class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds time)
      : end_(std::chrono::steady_clock::now() + time) {}

  // What is left, rounded up, never negative.
  std::chrono::milliseconds left() const {
    const auto rest = end_ - std::chrono::steady_clock::now();
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(rest),
                    std::chrono::milliseconds(0));
  }
  // The same for poll().
  int leftForPoll() const {
    const auto most = std::chrono::milliseconds(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(left(), most).count());
  }

 private:
  std::chrono::steady_clock::time_point end_;
};

}  // namespace orma::channel
