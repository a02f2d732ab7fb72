// The deadline of a whole command. When it passes, the process ends with kExitDeadline, having told
// what it waited for; nothing that hangs can keep it.
//
//   CommandDeadline deadline;
//   deadline.set(std::chrono::seconds(600));
//   …
//   deadline.clear();
//
// Thread-safety: thread-safe; one at a time in a process. A thread that cannot be had is a
// std::system_error of the constructor.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace ormaagent {

class CommandDeadline {
 public:
  CommandDeadline();
  CommandDeadline(const CommandDeadline&) = delete;
  CommandDeadline& operator=(const CommandDeadline&) = delete;
  ~CommandDeadline();

  // From now on, in place of what was set before.
  void set(std::chrono::seconds limit);
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  void watch();
  [[noreturn]] void expire() const;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::chrono::seconds limit_{0};         // guarded by mutex_
  std::optional<Clock::time_point> end_;  // guarded by mutex_
  bool over_ = false;                     // guarded by mutex_
  std::thread watcher_;
};

}  // namespace ormaagent
