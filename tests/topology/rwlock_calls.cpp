#include "rwlock_calls.h"

#include <pthread.h>

#include <utility>

#include "platform.h"

namespace emf::test {

RwlockCalls& rwlockCalls() {
  thread_local RwlockCalls calls;
  return calls;
}

}  // namespace emf::test

namespace {

void note(const char* call) {
  emf::test::rwlockCalls().calls.push_back(call);
  emf::doubles::platform().journal.note(call);
}

}  // namespace

using emf::test::rwlockCalls;

extern "C" {
int __real_pthread_rwlock_rdlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_wrlock(pthread_rwlock_t* lock);
int __real_pthread_rwlock_unlock(pthread_rwlock_t* lock);

int __wrap_pthread_rwlock_rdlock(pthread_rwlock_t* lock) {
  if (const auto before = std::exchange(rwlockCalls().beforeRead, nullptr)) before();
  note("read");
  if (rwlockCalls().readFails != 0) return rwlockCalls().readFails;
  ++rwlockCalls().held;
  return __real_pthread_rwlock_rdlock(lock);
}

int __wrap_pthread_rwlock_wrlock(pthread_rwlock_t* lock) {
  note("write");
  if (rwlockCalls().writeFails != 0) return rwlockCalls().writeFails;
  ++rwlockCalls().held;
  return __real_pthread_rwlock_wrlock(lock);
}

int __wrap_pthread_rwlock_unlock(pthread_rwlock_t* lock) {
  note("unlock");
  --rwlockCalls().held;
  const int result = __real_pthread_rwlock_unlock(lock);
  return rwlockCalls().unlockFails != 0 ? rwlockCalls().unlockFails : result;
}
}
