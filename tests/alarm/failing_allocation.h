// Operator new that fails when told to, and counts what is in use; for a program that links
// failing_allocation.cpp.
//
//   const long before = allocationsInUse();
//   failAllocation(3);  // the third from now on
//
// Thread-safety: thread-safe. What is in use counts for all threads, failures concern the calling
// thread alone.
#pragma once

namespace emf::test {

// The allocations made and not freed.
long allocationsInUse();
// Makes the `number`-th allocation from now on fail, once, or with every one behind it; 0: none.
void failAllocation(long number, bool andAllBehind = false);
// Whether one was made to fail since the last call of failAllocation, and how many were tried.
bool allocationFailed();
long allocationsTried();

// While it lives, no allocation of this thread fails or is counted as tried: for a library that
// does not survive that.
class Sheltered {
 public:
  Sheltered();
  Sheltered(const Sheltered&) = delete;
  Sheltered& operator=(const Sheltered&) = delete;
  ~Sheltered();
};

}  // namespace emf::test
