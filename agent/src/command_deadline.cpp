#include "command_deadline.h"

#include <poll.h>
#include <unistd.h>

#include <string>

#include "exit_status.h"
#include "graphviz.h"
#include "message.h"
#include "waiting_for.h"

namespace ormaagent {

namespace {

// Standard error may be what nobody reads.
bool takesMessages() {
  pollfd entry{STDERR_FILENO, POLLOUT, 0};
  return ::poll(&entry, 1, 0) > 0 && (entry.revents & POLLOUT) != 0;
}

}  // namespace

CommandDeadline::CommandDeadline() : watcher_([this] { watch(); }) {}

CommandDeadline::~CommandDeadline() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    over_ = true;
  }
  changed_.notify_one();
  watcher_.join();
}

void CommandDeadline::set(std::chrono::seconds limit) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    limit_ = limit;
    end_ = Clock::now() + limit;
  }
  changed_.notify_one();
}

void CommandDeadline::clear() {
  const std::lock_guard<std::mutex> lock(mutex_);
  end_.reset();
}

void CommandDeadline::watch() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!over_) {
    if (!end_) {
      changed_.wait(lock);
    } else if (const auto end = *end_; Clock::now() < end) {
      changed_.wait_until(lock, end);
    } else {
      expire();
    }
  }
}

// Other threads may hang or hold any lock, so nothing is tidied up.
void CommandDeadline::expire() const {
  if (takesMessages()) {
    tell("given up after " + std::to_string(limit_.count()) + " s (--timeout): it waited for " +
         currentWait());
  }
  endDrawing();
  ::_exit(kExitDeadline);
}

}  // namespace ormaagent
