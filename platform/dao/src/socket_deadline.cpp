#include "socket_deadline.h"

#include <sys/socket.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace dao {

// All deadlines, in a list that needs no memory of its own. Sockets are shut down under the lock,
// so that none is closed, and its number given to another one, before it was taken off the list.
class SocketDeadlines {
 public:
  // Never destroyed: its thread runs until the process ends, for which the library stays loaded
  // (see the linker option).
  static SocketDeadlines& instance() {
    static auto* deadlines = new SocketDeadlines;
    return *deadlines;
  }

  void add(SocketDeadline& deadline) {
    const std::lock_guard<std::mutex> lock(mutex_);
    deadline.next_ = first_;
    if (first_ != nullptr) first_->previous_ = &deadline;
    first_ = &deadline;
    if (deadline.end_ < wakeUp_) changed_.notify_one();
  }

  void remove(SocketDeadline& deadline) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (deadline.next_ != nullptr) deadline.next_->previous_ = deadline.previous_;
    (deadline.previous_ != nullptr ? deadline.previous_->next_ : first_) = deadline.next_;
  }

 private:
  using Clock = SocketDeadline::Clock;

  SocketDeadlines() {
    std::thread([this] { keep(); }).detach();
  }

  // Few threads wait at a time.
  Clock::time_point nextEnd() const {
    auto next = Clock::time_point::max();
    for (auto* entry = first_; entry != nullptr; entry = entry->next_) {
      next = std::min(next, entry->end_);
    }
    return next;
  }

  void keep() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
      wakeUp_ = nextEnd();
      if (wakeUp_ == Clock::time_point::max()) {
        changed_.wait(lock);
      } else {
        changed_.wait_until(lock, wakeUp_);
      }
      shutDownExpired();
    }
  }

  void shutDownExpired() {
    const auto now = Clock::now();
    for (auto* entry = first_; entry != nullptr; entry = entry->next_) {
      if (entry->end_ > now) continue;
      ::shutdown(entry->socket_, SHUT_RDWR);
      entry->end_ = Clock::time_point::max();
    }
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  SocketDeadline* first_ = nullptr;  // guarded by mutex_, as is the rest of the list
  // When the thread looks again, guarded by mutex_. It is not woken for deadlines behind that.
  Clock::time_point wakeUp_ = Clock::time_point::max();
};

SocketDeadline::SocketDeadline(int socket, std::chrono::milliseconds limit)
    : socket_(socket), end_(Clock::now() + limit) {
  SocketDeadlines::instance().add(*this);
}

SocketDeadline::~SocketDeadline() { SocketDeadlines::instance().remove(*this); }

}  // namespace dao
