// Operator new that fails when told to, and counts what is in use; for a program that links
// failing_allocation.cpp.
//
//   const long before = allocationsInUse();
//   failAllocation(3);  // the third from now on
//
// Thread-safety: belongs to the test's thread.
#pragma once

namespace emf::test {

// The allocations made and not freed.
long allocationsInUse();
// Makes the `number`-th allocation from now on fail, once; 0: none.
void failAllocation(long number);
// Whether one was made to fail since the last call of failAllocation.
bool allocationFailed();

}  // namespace emf::test
