#include "lock_failure.h"

#include <pthread.h>

#include <cerrno>

namespace {

thread_local bool failing = false;
thread_local int grantedLeft = 0;

}  // namespace

extern "C" {
int __real__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex);
int __wrap__ZN6ACE_OS10mutex_lockEP15pthread_mutex_t(pthread_mutex_t* mutex) {
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

}  // namespace emf::doubles
