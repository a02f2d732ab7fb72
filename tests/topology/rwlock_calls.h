// The readers-writer lock calls of the calling thread: recorded, also in the journal, and failing
// on demand. For programs that are linked with
// -Wl,--wrap=pthread_rwlock_rdlock,--wrap=pthread_rwlock_wrlock and
// --wrap=pthread_rwlock_unlock.
//
//   rwlockCalls().readFails = EAGAIN;
//   EXPECT_THAT(rwlockCalls().calls, ElementsAre("read"));  // what was not taken is not released
//
// Thread-safety: each thread has a record of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace emf::test {

struct RwlockCalls {
  // Codes that the calls give instead of working; 0: they work. A failed unlock has unlocked.
  int readFails = 0;
  int writeFails = 0;
  int unlockFails = 0;
  // Runs once, before the next read lock is taken.
  std::function<void()> beforeRead;

  std::vector<std::string> calls;  // "read", "write" and "unlock"
  int held = 0;
};

RwlockCalls& rwlockCalls();

}  // namespace emf::test
