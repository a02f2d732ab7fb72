#include "stop_signals.h"

#include <pthread.h>

#include <cerrno>
#include <ctime>

namespace ormasim {

StopSignals::StopSignals() {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGINT);
  sigaddset(&signals_, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
}

void StopSignals::await() const {
  int received = 0;
  sigwait(&signals_, &received);
}

// Broken off by another signal it counts as no rest: the caller comes again.
bool StopSignals::cameWithin(std::chrono::milliseconds time) const {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  const std::chrono::nanoseconds rest = time - seconds;
  const timespec limit{static_cast<std::time_t>(seconds.count()), rest.count()};
  return sigtimedwait(&signals_, nullptr, &limit) > 0;
}

}  // namespace ormasim
