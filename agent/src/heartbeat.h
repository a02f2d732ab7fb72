// The sign of life of a loop: it beats at each turn, and others see how long ago that was.
//
//   heartbeat.beat();                                     // in the loop
//   if (heartbeat.age() > kLongestTurn) report("stuck");  // elsewhere
//
// Thread-safety: thread-safe.
#pragma once

#include <atomic>
#include <chrono>

namespace ormaagent {

class Heartbeat {
 public:
  using Clock = std::chrono::steady_clock;

  // Before the first beat the loop counts as alive.
  void beat() noexcept { last_.store(Clock::now().time_since_epoch().count()); }
  Clock::duration age() const noexcept {
    const Clock::rep last = last_.load();
    return last == 0 ? Clock::duration::zero()
                     : Clock::now().time_since_epoch() - Clock::duration(last);
  }

 private:
  std::atomic<Clock::rep> last_{0};
};

}  // namespace ormaagent
