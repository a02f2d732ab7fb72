// Outward calls that fail on demand: every call of the doubles that can fail asks here, and so do
// wrapped functions of the system.
//
//   failOutwardCall(3, 0);  // the third call of this thread from now on, in the first of its ways
//   EMFTopoI::getAllSubMaps("S1", out);
//   EXPECT_STREQ(failedOutwardCall().kind, "REST request");
//
// Thread-safety: thread-safe; each thread counts its own calls.
#pragma once

#include <json/value.h>

#include <optional>

namespace emf::doubles {

struct OutwardCall {
  const char* kind = nullptr;
  int ways = 0;  // in which a call of that kind can fail
};

// Makes the `number`-th call from now on fail, in its `way`-th way from 0; number 0: none.
void failOutwardCall(long number, int way);
// What was made to fail since the last call of failOutwardCall; without a kind: nothing.
OutwardCall failedOutwardCall();

// --- For what plays the outside

constexpr int kGoesWell = -1;

// The way in which this call fails, or kGoesWell.
int outage(const char* kind, int ways);

// The same for an exchange that is answered in JSON: its result, with the answer that comes with
// it, or nothing when it goes well. Its ways: refused, an empty object, an array, std::bad_alloc.
std::optional<bool> exchangeOutage(const char* kind, Json::Value& answer);
constexpr int kExchangeWays = 4;

}  // namespace emf::doubles
