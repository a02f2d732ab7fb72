// How long the machine left this process without a processor, for tests that hold a deadline.
//
//   LostTime lost;
//   …
//   EXPECT_LE(took - lost.stop(), limit);
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class LostTime {
 public:
  using Milliseconds = std::chrono::duration<double, std::milli>;

  LostTime() : thread_([this] { count(); }) {}
  ~LostTime() { stop(); }
  LostTime(const LostTime&) = delete;
  LostTime& operator=(const LostTime&) = delete;

  // What was lost since it was made.
  Milliseconds stop() {
    {
      const std::lock_guard<std::mutex> lock(mutex_);
      stopped_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
    return lost_;
  }

 private:
  // A thread that asks to be woken this often is woken this late at most where nothing else runs.
  static constexpr std::chrono::milliseconds kPeriod{5};
  static constexpr std::chrono::milliseconds kUsualDelay{10};

  void count() {
    std::unique_lock<std::mutex> lock(mutex_);
    auto before = std::chrono::steady_clock::now();
    for (bool last = false; !last;) {
      last = changed_.wait_for(lock, kPeriod, [this] { return stopped_; });
      const auto now = std::chrono::steady_clock::now();
      const auto late = now - before - kPeriod;
      if (late > kUsualDelay) lost_ += late;
      before = now;
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  bool stopped_ = false;
  Milliseconds lost_{0};
  std::thread thread_;  // last: it uses the others
};
