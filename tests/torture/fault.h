// What is to go wrong in one call, and what did.
//
//   const Fault fault{Fault::Kind::kAllocation, 3};
//   fault.arm();
//   …                                  // the call alone
//   const Struck struck = disarm();
//
// Thread-safety: thread-safe; a fault concerns the thread that arms it.
#pragma once

#include "outage.h"

namespace emf::torture {

struct Fault {
  enum class Kind {
    kNone,
    kAllocation,       // the `number`-th one of the call
    kAllocationsFrom,  // that one and all behind it
    kOutwardCall,      // the `number`-th one, in its `way`-th way
  };
  Kind kind = Kind::kNone;
  long number = 0;
  int way = 0;

  void arm() const;
};

struct Struck {
  bool memory = false;
  doubles::OutwardCall call;
  long allocations = 0;  // that the call tried

  bool any() const { return memory || call.kind != nullptr; }
};

// Ends the fault of this thread. Of a thread that armed none it gives nothing.
Struck disarm();

}  // namespace emf::torture
