#include "failing_allocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> inUse{0};
thread_local long firstFailure = 0;
thread_local bool failsOn = false;
thread_local long tried = 0;
thread_local bool failed = false;

thread_local int shelters = 0;

bool isToFail() {
  if (shelters > 0) return false;
  ++tried;
  return firstFailure > 0 && (failsOn ? tried >= firstFailure : tried == firstFailure);
}

void* allocate(std::size_t size) {
  if (isToFail()) {
    failed = true;
    throw std::bad_alloc();
  }
  void* place = std::malloc(size != 0 ? size : 1);
  if (place == nullptr) throw std::bad_alloc();
  ++inUse;
  return place;
}

// Replaced, too: the address sanitizer's own would not go with the operators delete below.
void* allocateOrNull(std::size_t size) {
  try {
    return allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void release(void* place) {
  if (place == nullptr) return;
  --inUse;
  std::free(place);
}

}  // namespace

namespace emf::test {

long allocationsInUse() { return inUse; }

void failAllocation(long number, bool andAllBehind) {
  firstFailure = number;
  failsOn = andAllBehind;
  tried = 0;
  failed = false;
}

bool allocationFailed() { return failed; }

long allocationsTried() { return tried; }

Sheltered::Sheltered() { ++shelters; }
Sheltered::~Sheltered() { --shelters; }

}  // namespace emf::test

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocateOrNull(size);
}
void operator delete(void* place) noexcept { release(place); }
void operator delete[](void* place) noexcept { release(place); }
void operator delete(void* place, std::size_t) noexcept { release(place); }
void operator delete[](void* place, std::size_t) noexcept { release(place); }
