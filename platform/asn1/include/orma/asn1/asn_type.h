// The root of the ASN.1 value classes, as far as a log needs it.
//
// Thread-safety: thread-compatible.
#pragma once

#include <ostream>

class __attribute__((visibility("default"))) AsnType {
 public:
  virtual ~AsnType() = default;
  // The value as text, for a trace.
  virtual void Print(std::ostream& out) const = 0;
};
