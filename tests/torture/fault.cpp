#include "fault.h"

#include "failing_allocation.h"

namespace emf::torture {

void Fault::arm() const {
  doubles::failOutwardCall(kind == Kind::kOutwardCall ? number : 0, way);
  const bool memory = kind == Kind::kAllocation || kind == Kind::kAllocationsFrom;
  test::failAllocation(memory ? number : 0, kind == Kind::kAllocationsFrom);
}

Struck disarm() {
  const Struck struck{test::allocationFailed(), doubles::failedOutwardCall(),
                      test::allocationsTried()};
  test::failAllocation(0);
  doubles::failOutwardCall(0, 0);
  return struck;
}

}  // namespace emf::torture
