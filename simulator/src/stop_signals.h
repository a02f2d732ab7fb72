// SIGTERM and SIGINT, as something that a program waits for.
//
//   const StopSignals signals;  // before any thread is made
//   while (!signals.cameWithin(std::chrono::milliseconds(100))) work();
//
// From here on they do nothing by themselves, in this thread and in those that it makes.
//
// Thread-safety: thread-compatible. Nothing fails.
#pragma once

#include <chrono>
#include <csignal>

namespace ormasim {

class StopSignals {
 public:
  StopSignals();

  // Waits for one.
  void await() const;
  // Waits for one, for so long at most; whether it came.
  bool cameWithin(std::chrono::milliseconds time) const;

 private:
  sigset_t signals_;
};

}  // namespace ormasim
