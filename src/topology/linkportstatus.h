// The status number of a port, for the two ends of a link.
//
// Thread-safety: thread-safe. Blocks in one southbound call, made without a lock.
#pragma once

#include <cstdint>

#include "orma/ident/port_index.h"

// Matches ports of equal element, shelf, slot, sub slot and port number; an equality test, not an
// ordering.
class LinkPortIndexComparer {
 public:
  explicit LinkPortIndexComparer(const NS_DOMAIN::PortIndex* wanted) : wanted_(wanted) {}
  virtual ~LinkPortIndexComparer() = default;
  bool operator()(const NS_DOMAIN::PortIndex& candidate) const;

 private:
  const NS_DOMAIN::PortIndex* wanted_;  // borrowed
};

// -1 for a port without an element (not asked for) or with a negative state; 1, 8, 9 or 2 by its
// two states; 0 when the southbound interface does not report it or fails. A momentary reading:
// another thread's call may take this one's answer away, which then reads as 0.
std::int32_t findPortstatusByportidx(const NS_DOMAIN::PortIndex& port);
