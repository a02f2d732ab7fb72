#include "sleep_gate.h"

#include <cerrno>
#include <utility>

namespace emf::test {

void SleepGate::close() {
  std::lock_guard lock(mutex_);
  open_ = false;
  interrupted_ = false;
  wakes_ = 0;
  lengths_.clear();
}

void SleepGate::wake() {
  std::lock_guard lock(mutex_);
  ++wakes_;
  changed_.notify_all();
}

void SleepGate::interrupt() {
  std::lock_guard lock(mutex_);
  interrupted_ = true;
  ++wakes_;
  changed_.notify_all();
}

void SleepGate::open() {
  std::lock_guard lock(mutex_);
  open_ = true;
  changed_.notify_all();
}

void SleepGate::awaitSleeps(std::size_t count) {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return lengths_.size() >= count; });
}

std::vector<long> SleepGate::lengths() const {
  std::lock_guard lock(mutex_);
  return lengths_;
}

bool SleepGate::sleep(const timespec& length) {
  std::unique_lock lock(mutex_);
  lengths_.push_back(length.tv_nsec == 0 ? static_cast<long>(length.tv_sec) : -1);
  const std::size_t own = lengths_.size();
  changed_.notify_all();
  changed_.wait(lock, [&] { return open_ || wakes_ >= own; });
  return !std::exchange(interrupted_, false);
}

SleepGate& sleepGate() {
  static SleepGate gate;
  return gate;
}

}  // namespace emf::test

extern "C" int __wrap_nanosleep(const timespec* length, timespec*) {
  if (emf::test::sleepGate().sleep(*length)) return 0;
  errno = EINTR;
  return -1;
}
