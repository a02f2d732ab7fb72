#include "outage.h"

#include <new>

namespace emf::doubles {
namespace {

thread_local long untilFailure = 0;
thread_local int wayToFail = 0;
thread_local OutwardCall failed;

}  // namespace

void failOutwardCall(long number, int way) {
  untilFailure = number;
  wayToFail = way;
  failed = {};
}

OutwardCall failedOutwardCall() { return failed; }

int outage(const char* kind, int ways) {
  if (untilFailure == 0 || --untilFailure != 0) return kGoesWell;
  failed = {kind, ways};
  return wayToFail;
}

std::optional<bool> exchangeOutage(const char* kind, Json::Value& answer) {
  const int way = outage(kind, kExchangeWays);
  if (way == kGoesWell) return std::nullopt;
  answer = Json::Value();
  if (way == 0) return false;
  if (way == 1) answer = Json::Value(Json::objectValue);
  if (way == 2) answer = Json::Value(Json::arrayValue);
  if (way == 3) throw std::bad_alloc();
  return true;
}

}  // namespace emf::doubles
