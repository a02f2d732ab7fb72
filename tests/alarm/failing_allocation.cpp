#include "failing_allocation.h"

#include <cstdlib>
#include <new>

namespace {

long inUse = 0;
long untilFailure = 0;
bool failed = false;

void* allocate(std::size_t size) {
  if (untilFailure > 0 && --untilFailure == 0) {
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

void failAllocation(long number) {
  untilFailure = number;
  failed = false;
}

bool allocationFailed() { return failed; }

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
