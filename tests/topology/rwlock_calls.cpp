#include "rwlock_calls.h"

#include <pthread.h>

#include <utility>

namespace emf::test {

RwlockCalls& rwlockCalls() {
  thread_local RwlockCalls calls;
  return calls;
}

}  // namespace emf::test

using emf::test::rwlockCalls;

extern "C" {
int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_unlock(pthread_rwlock_t* lock);

int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  if (const auto before = std::exchange(rwlockCalls().beforeRead, nullptr)) before();
  rwlockCalls().calls.push_back("read");
  if (rwlockCalls().readFails != 0) return rwlockCalls().readFails;
  ++rwlockCalls().held;
  return __real_pthread_rwlock_rdlock(lock);
}

int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  rwlockCalls().calls.push_back("write");
  if (rwlockCalls().writeFails != 0) return rwlockCalls().writeFails;
  ++rwlockCalls().held;
  return __real_pthread_rwlock_wrlock(lock);
}

int __wrap_pthread_rwlock_unlock(pthread_rwlock_t* lock) {
  rwlockCalls().calls.push_back("unlock");
  --rwlockCalls().held;
  const int result = __real_pthread_rwlock_unlock(lock);
  return rwlockCalls().unlockFails != 0 ? rwlockCalls().unlockFails : result;
}
}
