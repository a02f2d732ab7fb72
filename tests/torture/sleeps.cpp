#include "sleeps.h"

#include <condition_variable>
#include <mutex>

namespace emf::torture {
namespace {

std::mutex mutex;
std::condition_variable changed;
bool areHeld = false;
bool hasBegun = false;
thread_local void (*ownInstead)() = nullptr;

}  // namespace

void duringSleep(void (*instead)()) { ownInstead = instead; }

void sleepInstead() {
  if (ownInstead != nullptr) return ownInstead();
  std::unique_lock lock(mutex);
  hasBegun = true;
  changed.notify_all();
  changed.wait(lock, [] { return !areHeld; });
}

void holdSleeps() {
  std::lock_guard lock(mutex);
  areHeld = true;
  hasBegun = false;
}

void letSleepsGo() {
  std::lock_guard lock(mutex);
  areHeld = false;
  changed.notify_all();
}

void awaitSleep() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [] { return hasBegun; });
}

}  // namespace emf::torture
