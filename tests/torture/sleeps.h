// The background task's sleep, which takes no time here.
//
//   duringSleep([] { SubmapBufMgr::Instance()->Stop(); });
//
// Thread-safety: thread-safe; what is set holds for the threads that set it alone.
#pragma once

namespace emf::torture {

// What this thread does in place of each sleep; null: what a thread does that set nothing, which is
// to wait until sleeps are let go.
void duringSleep(void (*instead)());
void sleepInstead();

// From here on threads wait in their sleep, or leave it at once.
void holdSleeps();
void letSleepsGo();
// Returns when a thread waits in its sleep, or has since sleeps were held.
void awaitSleep();

}  // namespace emf::torture
