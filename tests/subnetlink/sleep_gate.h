// The task's sleep, held by the test. For programs that are linked with --wrap=nanosleep.
//
//   sleepGate().close();
//   …                          // the task sleeps
//   sleepGate().awaitSleeps(1);
//   sleepGate().wake();        // one sleep ends
//   sleepGate().interrupt();   // one sleep ends before its time
//   sleepGate().open();        // sleeps end at once from here on
//
// Thread-safety: thread-safe.
#pragma once

#include <condition_variable>
#include <ctime>
#include <mutex>
#include <vector>

namespace emf::test {

class SleepGate {
 public:
  // Sleeps last until woken; none has begun.
  void close();
  void wake();
  void interrupt();
  void open();
  // Returns when that many sleeps have begun since close().
  void awaitSleeps(std::size_t count);
  // How long each sleep was to be, in seconds; every nanosecond part has been 0 or shows as -1.
  std::vector<long> lengths() const;

  // Whether it lasted its time.
  bool sleep(const timespec& length);

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool open_ = false;
  bool interrupted_ = false;
  std::size_t wakes_ = 0;
  std::vector<long> lengths_;
};

SleepGate& sleepGate();

}  // namespace emf::test
