// A line on a terminal that tells how long the work before an answer has been going on.
//
//   {
//     const WaitingLine line("Reading the alarms");  // "Reading the alarms: 3 s", each second
//     EMFAlarmI::getAllAlarms(records);
//   }                                              // the line is gone
//
// Nothing is drawn in the first second, nor where there is no terminal.
//
// Thread-safety: thread-compatible; a thread of its own draws. Nothing fails: without a thread
// there is no line.
#pragma once

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace ormaagent {

class WaitingLine {
 public:
  explicit WaitingLine(std::string title, int descriptor = STDERR_FILENO,
                       std::chrono::milliseconds interval = std::chrono::seconds(1));
  WaitingLine(const WaitingLine&) = delete;
  WaitingLine& operator=(const WaitingLine&) = delete;
  ~WaitingLine();

 private:
  void run();
  void draw(std::chrono::seconds elapsed);
  void put(const std::string& text) const;

  const std::string title_;
  const int descriptor_;
  const std::chrono::milliseconds interval_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::mutex mutex_;
  std::condition_variable ended_;
  bool over_ = false;   // guarded by mutex_
  bool drawn_ = false;  // of the thread, and of the destructor after it
  std::thread thread_;
};

}  // namespace ormaagent
