// Wakes sleeping threads of the process, so that a service that is asked to stop need not sleep to
// the end of its interval.
//
//   {
//     SleepInterrupter interrupter;
//     manager.Stop();  // a thread in nanosleep sees EINTR within kPeriod and looks at its stop
//     flag
//   }
//
// While one lives, each thread that is asleep in nanosleep or clock_nanosleep is sent a signal that
// does nothing, again and again: a thread that goes back to sleep is woken again. Only sleeping
// threads take it, and those in a wait that the kernel has restarted and that may be a sleep; the
// thread that made the interrupter, which waits for the stop, takes none.
//
// Thread-safety: thread-compatible; at most one lives at a time. The signal is SIGUSR1, whose
// disposition is the interrupter's from the first one on. Nothing fails: where no thread is to be
// had, sleepers sleep on.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace ormaagent {

class SleepInterrupter {
 public:
  static constexpr std::chrono::milliseconds kPeriod{100};

  SleepInterrupter();
  SleepInterrupter(const SleepInterrupter&) = delete;
  SleepInterrupter& operator=(const SleepInterrupter&) = delete;
  ~SleepInterrupter();

 private:
  void run();
  void interruptSleepers() const;

  const pid_t owner_;
  std::mutex mutex_;
  std::condition_variable ending_;
  bool ended_ = false;  // guarded by mutex_
  std::thread thread_;
};

}  // namespace ormaagent
