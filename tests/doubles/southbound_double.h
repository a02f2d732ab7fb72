// The southbound interface set: answers by script, every call recorded. Port ids are made and read
// by the platform's own ResIDUtil, so a script answers for other coordinates by giving another id.
//
//   platform().southbound.links({"IPLINK=204:1"});
//   platform().southbound.linkInfosThen(failsWith(0x411800BA));   // the next call only
//   platform().southbound.portStates(state(1, 0));                // every call from now on
//   EXPECT_THAT(platform().southbound.portStatusCalls(), SizeIs(2));
//
// A "Then" script answers one call, in the order of their scripting; without one left, the
// standing script does; after a reset that gives nothing. A script may throw what it likes.
//
// Thread-safety: thread-safe recording. Scripts run without a lock, on the thread of the call.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "orma/southbound/southbound.h"

namespace emf::doubles {

using NS_DOMAIN_SOUTHAPISET::TEErrInfoReturn;
using NS_DOMAIN_SOUTHAPISET::TELinkInfo;
using NS_DOMAIN_SOUTHAPISET::TEPortOAMStatus;
using NS_DOMAIN_SOUTHAPISET::TEUniResID;
using UniResIds = std::vector<TEUniResID>;

struct LinkIdCall {
  std::vector<int> elements;
  std::vector<int> kinds;
  std::size_t outBefore;
};

struct LinkInfoCall {
  UniResIds ids;
  int mask;
  std::size_t outBefore;
};

struct PortStatusCall {
  UniResIds ids;
  std::int32_t errorNumberBefore;
  std::size_t errorsBefore;
  std::size_t outBefore;
};

// Scripts that fail, for every operation: with a ProcessException of that code, or with something
// that is none.
struct Failure {
  int code;
  bool isProcessException;
  template <typename... Arguments>
  void operator()(Arguments&&...) const {
    raise();
  }
  [[noreturn]] void raise() const;
};
inline Failure failsWith(int code) { return {code, true}; }
inline Failure failsOtherwise() { return {0, false}; }

// The code of a call that is made to fail on demand (outage.h).
constexpr int kOutageCode = 6105;

class SouthboundDouble {
 public:
  using LinkIdScript = std::function<void(UniResIds& out)>;
  using LinkInfoScript = std::function<void(const UniResIds& ids, std::vector<TELinkInfo>& out)>;
  using PortStatusScript = std::function<void(const UniResIds& ids, TEErrInfoReturn& errors,
                                              std::vector<TEPortOAMStatus>& out)>;

  // GetLinkID gives these ids from now on; their kind is the text before the "=".
  void links(const std::vector<std::string>& ids);
  void linkIds(LinkIdScript script);

  // GetLinkInfo, for every call from now on, or for one more of the next calls.
  void linkInfos(LinkInfoScript script);
  void linkInfosThen(LinkInfoScript script);

  // GetPortStatus, in the same way.
  void portStates(PortStatusScript script);
  void portStatesThen(PortStatusScript script);

  std::vector<LinkIdCall> linkIdCalls() const;
  std::vector<LinkInfoCall> linkInfoCalls() const;
  std::vector<PortStatusCall> portStatusCalls() const;
  // Nothing recorded, nothing scripted.
  void reset();

  void getLinkIds(LinkIdCall call, UniResIds& out);
  void getLinkInfos(LinkInfoCall call, std::vector<TELinkInfo>& out);
  void getPortStatus(PortStatusCall call, TEErrInfoReturn& errors,
                     std::vector<TEPortOAMStatus>& out);

 private:
  mutable std::mutex mutex_;
  LinkIdScript linkIdScript_;
  LinkInfoScript linkInfoScript_;
  PortStatusScript portStatusScript_;
  std::deque<LinkInfoScript> nextLinkInfos_;
  std::deque<PortStatusScript> nextPortStates_;
  std::vector<LinkIdCall> linkIdCalls_;
  std::vector<LinkInfoCall> linkInfoCalls_;
  std::vector<PortStatusCall> portStatusCalls_;
};

// A script of GetPortStatus: each port asked for has these two states.
SouthboundDouble::PortStatusScript state(std::int32_t first, std::int32_t second);
// The same, with the ids of the answers given: they are answered whatever is asked for.
SouthboundDouble::PortStatusScript answer(std::vector<TEPortOAMStatus> answers);

}  // namespace emf::doubles
