// Makes ACE's mutex lock calls of this thread fail, or lets another come first. For programs that
// are linked with -Wl,--wrap=_ZN6ACE_OS10mutex_lockEP15pthread_mutex_t.
//
//   FailingLocks failing;     // every lock call from here to the end of the scope
//   FailingLocks failing(1);  // all but the first
//   beforeNextLock([] { SubmapBufMgr::Instance(); });
//
// Thread-safety: thread-safe; a scope concerns its own thread alone.
#pragma once

#include <functional>

namespace emf::doubles {

class FailingLocks {
 public:
  explicit FailingLocks(int granted = 0);
  FailingLocks(const FailingLocks&) = delete;
  FailingLocks& operator=(const FailingLocks&) = delete;
  ~FailingLocks();
};

// Runs once, when this thread is about to take a lock: what another thread does in that moment.
void beforeNextLock(std::function<void()> hook);

}  // namespace emf::doubles
