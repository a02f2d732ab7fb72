// Calling an operation with one fault after the other: the first allocation fails, then the
// second, and so on to the last; and the same with the outward calls, in every way in which each
// can fail. After each call the result is judged, what it allocated must be freed again, and the
// next calls, on another thread and on this one, must give the whole right answer.
//
//   Torment(operation).allocations(Fault::Kind::kAllocation);
//
// Expectations that fail tell operation and fault. A call that hangs ends the process with a
// message.
//
// Thread-safety: thread-compatible; one at a time in a process.
#pragma once

#include <set>
#include <string>

#include "operation.h"

namespace emf::torture {

// How many faults were injected.
struct Injected {
  long allocations = 0;
  long outwardCalls = 0;
};
Injected& injected();

// Whether EMF_TORTURE=whole asks for every allocation; otherwise some of each operation's are
// tried.
bool isWhole();

// What is wrong with the outcome of a call that the fault struck; empty: nothing.
std::string complaint(const Operation& operation, const Fault& fault, const Outcome& outcome);

// Puts the singletons and the platform back to where a process starts.
void cleanUp();

class Torment {
 public:
  explicit Torment(const Operation& operation) : operation_(operation) {}

  // In this process, whose caches are filled.
  void allocations(Fault::Kind kind) const;
  void outwardCalls() const;
  // Each call in a process that has made none before.
  void coldAllocations(Fault::Kind kind) const;
  void coldOutwardCalls() const;

 private:
  Struck attempt(const Fault& fault) const;
  Struck warmAttempt(const Fault& fault) const;
  Struck coldAttempt(const Fault& fault) const;
  void fillCaches() const;
  template <class Attempt>
  void everyAllocation(Fault::Kind kind, long most, Attempt attempt) const;
  template <class Attempt>
  std::set<std::string> everyOutwardCall(Attempt attempt) const;
  void expectKinds(const std::set<std::string>& kinds, const std::string& onlyFirst) const;
  void expectWhole(const char* where) const;

  const Operation& operation_;
};

}  // namespace emf::torture
