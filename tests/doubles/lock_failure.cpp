#include "lock_failure.h"

#include <pthread.h>

#include <cerrno>
#include <utility>

namespace {

thread_local bool failing = false;
thread_local int grantedLeft = 0;
// Of its own: locks are taken when the hook is already destroyed, too.
thread_local bool hooked = false;
thread_local std::function<void()> comesFirst;

}  // namespace

extern "C" {
int __real__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex);
int __wrap__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex) {
  if (std::exchange(hooked, false)) comesFirst();
  if (failing && grantedLeft-- <= 0) {
    errno = EINVAL;
    return -1;
  }
  return __real__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(mutex);
}
}

namespace emf::doubles {

FailingLocks::FailingLocks(int granted) {
  failing = true;
  grantedLeft = granted;
}

FailingLocks::~FailingLocks() { failing = false; }

void beforeNextLock(std::function<void()> hook) {
  hooked = hook != nullptr;
  comesFirst = std::move(hook);
}

}  // namespace emf::doubles
